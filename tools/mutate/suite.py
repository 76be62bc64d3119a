"""Runs tests of the changed programs, each within limits of time."""

import os
import re
import resource
import signal
import subprocess
import tempfile
import time

# In the order in which they are asked, for a file in each folder: its own first, then from the cheapest.
PROGRAMS = ['toolbox', 'source', 'tools', 'host', 'desktop_machine', 'printed', 'screens', 'pictures', 'desktop']
OWN = {'source/': 'source', 'toolbox/desktop/': 'desktop_machine', 'toolbox/': 'toolbox', 'host/': 'host'}
# A display server for each test: only what is seen at the window is asked there.
AT_THE_WINDOW = ('toolbox/desktop', 'host/app/')
# These run again with unlocked blocks moved at each allocation.
MOVING = {'toolbox', 'source', 'tools', 'host', 'desktop_machine', 'pictures'}


class Suite:
    def __init__(self, built):
        self.built = built

    def path(self, program):
        folder = self.built if program == 'desktop' else os.path.join(self.built, 'tests')
        return os.path.join(folder, program + '_tests')

    def tests(self):
        """All tests, as (program, name)."""
        found = []
        for program in PROGRAMS:
            if not os.path.exists(self.path(program)):
                continue
            listed = subprocess.run([self.path(program), '--gtest_list_tests'], capture_output=True, text=True)
            group = ''
            for line in listed.stdout.split('\n'):
                if line.startswith('  '):
                    found.append((program, group + line.split('#')[0].strip()))
                elif line and not line.startswith('Running'):
                    group = line.split('#')[0].strip()
        return [test for test in found if 'DISABLED_' not in test[1]]

    def run(self, program, names, seconds, change=None, reached=None, moving=False):
        """Runs tests until one fails: None if all pass, or what happened. Seconds are what they usually take."""
        environment = dict(os.environ, GTEST_FAIL_FAST='1', GTEST_COLOR='no', HOME='/tmp')
        for name, value in (('RIDERS_CHANGE', change), ('RIDERS_CHANGES_REACHED', reached),
                            ('RIDERS_MOVE_BLOCKS', 1 if moving else None), ('TMPDIR', None)):
            environment.pop(name, None)
            if value is not None:
                environment[name] = str(value)
        command = [self.path(program), '--gtest_filter=' + ':'.join(names)]
        with tempfile.TemporaryDirectory(dir=self.built, ignore_cleanup_errors=True) as folder, \
             tempfile.TemporaryFile() as output:
            os.chmod(folder, 0o1777)
            process = subprocess.Popen(self.walled(folder) + command, env=environment, stdin=subprocess.DEVNULL,
                                       stdout=output, stderr=subprocess.STDOUT,
                                       preexec_fn=lambda: limit(10 + 10 * seconds))
            try:
                process.wait(90 + 30 * seconds)
                late = False
            except subprocess.TimeoutExpired:
                late = True
                process.kill()
                process.wait()
            output.seek(0)
            return what_happened(process.returncode, late, output.read().decode(errors='replace'))

    def walled(self, folder):
        """A changed program may remove or end what is not its own: it sees its own processes, and writes here only."""
        capabilities = ['--cap-add', 'ALL'] if os.geteuid() == 0 else []
        return ['bwrap', '--die-with-parent', '--unshare-pid', '--ro-bind', '/', '/', '--dev-bind', '/dev', '/dev',
                '--proc', '/proc', '--tmpfs', '/dev/shm', '--bind', self.built, self.built, '--bind', folder, '/tmp',
                '--chdir', '/tmp', *capabilities]


def limit(seconds):
    resource.setrlimit(resource.RLIMIT_CPU, (int(seconds), int(seconds) + 5))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    # A change that asks for memory, or writes, without end must not take the machine's.
    resource.setrlimit(resource.RLIMIT_DATA, (6 << 30, 6 << 30))
    resource.setrlimit(resource.RLIMIT_FSIZE, (8 << 30, 8 << 30))


def what_happened(code, late, output):
    if code == 0 and not late:
        return None
    started = re.findall(r'^\[ RUN      \] (\S+)', output, re.M)
    failed = re.findall(r'^\[  FAILED  \] ([^\s,]+\.[^\s,]+)', output, re.M)
    test = failed[0] if failed else started[-1] if started else 'no test'
    if late or code in (-signal.SIGXCPU, 128 + signal.SIGXCPU):
        return test, 'does not end'
    return test, 'fails' if failed else f'ends with {code}'


class Reached:
    """Which changes each test comes to, and how long it takes: measured once, with no change in force."""

    def __init__(self, suite, changes):
        self.suite, self.changes = suite, changes

    def measure(self, test):
        """(seconds, numbers reached), or None where the test fails without any change."""
        program, name = test
        with tempfile.NamedTemporaryFile(dir=self.suite.built) as file:
            file.truncate(self.changes)
            start = time.monotonic()
            if self.suite.run(program, [name], 30, reached=file.name):
                return None
            seconds = time.monotonic() - start
            file.seek(0)
            return seconds, [number for number, byte in enumerate(file.read()) if byte]
