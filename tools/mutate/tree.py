"""The copy of the tree that is changed and built; the user's own is only read."""

import concurrent.futures
import hashlib
import json
import os
import pickle
import re
import shlex
import shutil
import subprocess

import changes

FOLDERS = ('source/', 'toolbox/', 'host/')
# What offers nothing to change, and what only names.
NO_CODE = re.compile(r'\s*($|//|/\*|\*|#|static_assert|using |namespace |template|[{}()\[\];,]*$|(public|private|protected):|default:$)')


class Tree:
    def __init__(self, root):
        self.root = root
        self.work = os.path.join(root, 'build/mutate')
        self.copy = os.path.join(self.work, 'tree')
        self.built = os.path.join(self.work, 'built')
        self.known = {}
        self.targets = ['all']

    def files(self):
        listed = subprocess.run(['git', 'ls-files', '-co', '--exclude-standard'], cwd=self.root, capture_output=True,
                                text=True, check=True).stdout.split('\n')
        return sorted(name for name in listed if name and os.path.isfile(os.path.join(self.root, name)))

    def code_files(self):
        return [name for name in self.files() if name.startswith(FOLDERS) and name.endswith(('.cpp', '.h'))]

    def text(self, name):
        with open(os.path.join(self.root, name), 'rb') as file:
            return file.read()

    def refresh(self, woven):
        """Makes the copy like the user's tree, with the woven sources in it; what is the same keeps its time."""
        files = self.files()
        for folder, _, names in os.walk(self.copy):
            for name in names:
                path = os.path.join(folder, name)
                if os.path.relpath(path, self.copy) not in files:
                    os.remove(path)
        for name in files:
            self.write(name, woven.get(name, self.text(name)))
            shutil.copymode(os.path.join(self.root, name), os.path.join(self.copy, name))

    def write(self, name, content):
        path = os.path.join(self.copy, name)
        if os.path.exists(path):
            with open(path, 'rb') as file:
                if file.read() == content:
                    return
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, 'wb') as file:
            file.write(content)

    def configure(self):
        if not os.path.exists(os.path.join(self.built, 'build.ninja')):
            self.refresh({})
            subprocess.run(['cmake', '-S', self.copy, '-B', self.built, '--preset', 'mutate'], check=True,
                           stdout=subprocess.DEVNULL)

    def build(self):
        """What the compiler wrote where it failed, or None."""
        run = subprocess.run(['cmake', '--build', self.built, '--target', *self.targets, '--', '-k', '0'], capture_output=True, text=True)
        return None if run.returncode == 0 else run.stdout + run.stderr

    def arguments(self, name):
        """How the compiler is called for a file, without what only a build needs; a header goes with a neighbour."""
        if 'commands' not in self.known:
            with open(os.path.join(self.built, 'compile_commands.json')) as file:
                self.known['commands'] = {os.path.relpath(one['file'], self.copy): one['command'] for one in json.load(file)}
        commands = self.known['commands']
        if name not in commands:
            name = max(commands, key=lambda other: len(os.path.commonprefix([other, name])))
        command, kept = shlex.split(commands[name]), ['-x', 'c++', '-w']
        for word in command:
            if word.startswith(('-I', '-D', '-std')):
                kept.append(word.replace(self.copy + '/', self.root + '/').replace('=' + self.copy, '=' + self.root))
            elif word.startswith('/') and command[command.index(word) - 1] == '-isystem':
                kept += ['-isystem', word]
        return kept

    def changes(self, name):
        return self.remembered(changes.changes_of, name)

    def functions(self, name):
        return self.remembered(changes.functions_of, name)

    def parse(self, names, jobs):
        """Parses files at the same time that will be asked about."""
        with concurrent.futures.ProcessPoolExecutor(jobs) as pool:
            list(pool.map(self.changes_found, sorted(names)))

    def changes_found(self, name):
        return bool(self.changes(name))

    def remembered(self, finder, name):
        """What a finder says of a file: parsing takes a second, so it is kept as long as the file is the same."""
        digest = hashlib.sha256(finder.__name__.encode() + name.encode() + self.text(name)).hexdigest()
        path = os.path.join(self.work, 'found', digest)
        if digest not in self.known and os.path.exists(path):
            with open(path, 'rb') as file:
                self.known[digest] = pickle.load(file)
        if digest not in self.known:
            self.known[digest] = finder(os.path.join(self.root, name), self.arguments(name))
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, 'wb') as file:
                pickle.dump(self.known[digest], file)
        return self.known[digest]


def code_lines(tree):
    """All lines of code, as (file, number)."""
    lines = []
    for name in tree.code_files():
        for number, line in enumerate(tree.text(name).decode().split('\n'), 1):
            if not NO_CODE.match(line):
                lines.append((name, number))
    return lines
