"""Breaks random lines of the program, one at a time, and says which breaks no test notices; see --help."""

import argparse
import concurrent.futures
import os
import random
import re
import sys
import threading

import suite
from journal import Journal, key, read_judged
from tree import Tree, code_lines
from weave import overlap, woven_sources


def family(change):
    return 'constant' if change.name[0].isdigit() else change.name


def choose(changes, seed, taken):
    """One of a line's changes that overlaps none of those taken; each kind is as likely as the others."""
    kinds = {}
    for change in changes:
        if not any(overlap(change, other) for other in taken):
            kinds.setdefault(family(change), []).append(change)
    if not kinds:
        return None
    dice = random.Random(seed)
    return dice.choice(kinds[dice.choice(sorted(kinds))])


class Run:
    def __init__(self, root, jobs):
        self.tree = Tree(root)
        self.suite = suite.Suite(self.tree.built)
        os.makedirs(self.tree.work, exist_ok=True)
        self.journal = Journal(os.path.join(self.tree.work, 'journal.json'))
        self.jobs = jobs
        self.lock = threading.Lock()
        self.changes = []  # the change of each record, found again in the sources as they are now

    def say(self, text):
        print(text, flush=True)

    # Picking

    def find_again(self):
        """The picked changes in the present sources; what is not there any more has no change."""
        for record in self.journal.picked:
            found = None
            if 'thrown away' not in record:
                lines = self.tree.text(record['file']).decode().split('\n') if record['file'] in self.tree.files() else []
                same = [number for number, line in enumerate(lines, 1) if line.strip() == record['text']]
                if same:
                    record['line'] = min(same, key=lambda number: abs(number - record['line']))
                    fitting = [change for change in self.tree.changes(record['file']).get(record['line'], [])
                               if change.name == record['change']]
                    found = fitting[min(record['place'], len(fitting) - 1)] if fitting else None
                if not found:
                    record['thrown away'] = 'is not in the sources any more'
            self.changes.append(found)

    def pick(self, count):
        lines = code_lines(self.tree)
        random.Random(self.journal.seed).shuffle(lines)
        if self.kept() < count:
            self.tree.parse({name for name, _ in lines[:count + count // 8]}, self.jobs)
        seen = {(record['file'], record['line']) for record in self.journal.picked}
        for name, number in lines:
            if self.kept() >= count:
                return
            if (name, number) in seen:
                continue
            taken = [change for record, change in zip(self.journal.picked, self.changes)
                     if change and record['file'] == name]
            on_line = self.tree.changes(name).get(number, [])
            change = choose(on_line, f'{self.journal.seed} {name} {number}', taken)
            if not change:
                continue
            place = [other for other in on_line if other.name == change.name].index(change)
            text = self.tree.text(name).decode().split('\n')[number - 1].strip()
            self.journal.picked.append({'file': name, 'line': number, 'text': text, 'change': change.name, 'place': place})
            self.changes.append(change)

    def kept(self):
        return sum(change is not None for change in self.changes)

    def throw_away(self, number, why):
        self.journal.picked[number]['thrown away'] = why
        self.changes[number] = None

    # Building

    def standing(self):
        return [(number, record['file'], change)
                for number, (record, change) in enumerate(zip(self.journal.picked, self.changes)) if change]

    def build(self, count):
        """Picks and builds until what is picked compiles."""
        while True:
            self.pick(count)
            self.tree.refresh(woven_sources(self.tree, self.standing()))
            self.journal.save()
            errors = self.tree.build()
            if errors is None:
                return
            if not self.throw_away_wrong(errors):
                sys.exit('The changed tree cannot be built:\n' + errors[-5000:])

    def throw_away_wrong(self, errors):
        """Throws away the changes on lines that the compiler complains of, or else all in the files that it names."""
        places = set(re.findall(re.escape(self.tree.copy) + r'/(\S+?):(\d+):\d+: (?:fatal error|error|note)', errors))
        woven = [(number, name, change) for number, name, change in self.standing() if not change.alone]
        wrong = [number for number, name, change in woven
                 if any(file == name and self.is_on(int(line), name, change) for file, line in places)]
        wrong = wrong or [number for number, name, change in woven if any(file == name for file, line in places)]
        for number in wrong:
            self.throw_away(number, 'does not compile')
        return bool(wrong)

    def is_on(self, line, name, change):
        return change.line <= line <= change.line + self.tree.text(name)[change.start:change.end].count(b'\n')

    # Measuring

    def measure(self):
        """Which changes each test reaches; only what is not yet known."""
        numbers = len(self.journal.picked)
        known = self.journal.tests if self.journal.tests.get('measured') == numbers else {}
        tests = self.suite.tests()
        self.journal.tests = {'measured': numbers, **{' '.join(test): known[' '.join(test)] for test in tests
                                                       if ' '.join(test) in known}}
        missing = [test for test in tests if ' '.join(test) not in self.journal.tests]
        self.say(f'{len(tests)} tests, {len(missing)} of them to be measured')
        reached = suite.Reached(self.suite, numbers)
        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            for done, (test, found) in enumerate(zip(missing, pool.map(reached.measure, missing)), 1):
                self.journal.tests[' '.join(test)] = found
                if not found:
                    self.say(f'{" ".join(test)} fails without any change, and is not asked')
                if done % 100 == 0:
                    self.journal.save()
        self.journal.save()

    def tests_of(self, number):
        """The tests that reach a change, as (seconds, program, name): those of its own folder first, then the quick."""
        name, change = self.journal.picked[number]['file'], self.changes[number]
        own = next((program for folder, program in suite.OWN.items() if name.startswith(folder)), None)
        # What no test can be seen to reach, because it is used wherever a header is read.
        everywhere = {number} if change.alone and change.uses and name.endswith('.h') else set()
        tests = []
        for test, found in self.journal.tests.items():
            program, _, case = test.partition(' ')
            if test == 'measured' or not found or program == 'desktop' and not name.startswith(suite.AT_THE_WINDOW):
                continue
            if number in found[1] or number in everywhere:
                tests.append((found[0], program, case))
        return sorted(tests, key=lambda test: (test[1] != own, test[0]))

    # Asking the tests

    def ask(self, number):
        """Runs the tests that come to a change, the cheapest first, until one notices it."""
        record, alone = self.journal.picked[number], self.changes[number].alone
        tests = self.tests_of(number)
        result = None
        for moving in (False, True):
            result = result or self.ask_all(number, [test for test in tests if not moving or test[1] in suite.MOVING], alone, moving)
        with self.lock:
            record['asked'] = len(tests)
            record['noticed'] = result or False
            where = f'{record["file"]}:{record["line"]}: {record["change"]}'
            self.say(f'{where}: {result or f"SURVIVES {len(tests)} tests"}')
            self.journal.save()

    def ask_all(self, number, tests, alone, moving):
        together = 0.7
        while tests:
            batch, seconds = [], 0
            while tests and (not batch or seconds < together) and len(batch) < 500:
                batch.append(tests.pop(0))
                seconds += batch[-1][0]
            together *= 4
            for program in dict.fromkeys(test[1] for test in batch):
                cases = {test[2]: test[0] for test in batch if test[1] == program}
                result = self.ask_program(number, program, cases, alone, moving)
                if result:
                    return result
        return None

    def ask_program(self, number, program, cases, alone, moving):
        while cases:
            change = None if alone else number
            failure = self.suite.run(program, list(cases), sum(cases.values()), change, moving=moving)
            if not failure:
                return None
            test, how = failure
            # A test that is red without the change, too, or not red again, has noticed nothing.
            again = self.suite.run(program, [test], cases.get(test, 5), moving=moving)
            if bool(again) == bool(alone):
                return f'{program} {test} {how}'
            self.say(f'{program} {test} is not sure of itself')
            if test not in cases:
                return None
            del cases[test]
        return None

    def ask_alone(self, number):
        """What the compiler uses itself is built for each change."""
        record = self.journal.picked[number]
        self.tree.refresh(woven_sources(self.tree, self.standing(), alone=number))
        if self.tree.build() is None:
            self.ask(number)
        else:
            self.throw_away(number, 'does not compile')
            self.journal.save()

    def ask_everything(self, again):
        waiting = [number for number, record in enumerate(self.journal.picked)
                   if self.changes[number] and (record.get('noticed') is None or again and not record['noticed'])]
        self.say(f'{len(waiting)} changes to ask about')
        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            list(pool.map(self.ask, [number for number in waiting if not self.changes[number].alone]))
        for number in waiting:
            if self.changes[number].alone:
                self.ask_alone(number)

    # The report

    def report(self):
        judged = read_judged(os.path.join(os.path.dirname(__file__), 'judged.txt'))
        asked = [record for record in self.journal.picked if 'noticed' in record and 'thrown away' not in record]
        noticed = [record for record in asked if record['noticed']]
        alike = [record for record in asked if not record['noticed'] and key(record) in judged]
        left = [record for record in asked if not record['noticed'] and key(record) not in judged]
        for record in left:
            self.say(f'Survives: {record["file"]}:{record["line"]}: {record["change"]}: {record["text"]}')
        of = len(asked) - len(alike)
        self.say(f'Seed {self.journal.seed}: {len(asked)} lines changed, {len(alike)} of them judged to make no difference; '
                 f'noticed {len(noticed)} of {of}' + (f', {100 * len(noticed) / of:.1f} %' if of else ''))
        return not left


def main():
    parser = argparse.ArgumentParser(prog='./mutate', description='Breaks random lines, and says which breaks no test notices. '
                                     'A run that was stopped is continued; the journal is build/mutate/journal.json.')
    parser.add_argument('count', nargs='?', type=int, default=300, metavar='COUNT', help='how many lines (300)')
    parser.add_argument('seed', nargs='?', type=int, metavar='SEED', help='another seed begins anew')
    parser.add_argument('--again', action='store_true', help='ask about the survivors again, after new tests')
    parser.add_argument('--report', action='store_true', help='only say what is known')
    parser.add_argument('--jobs', type=int, default=os.cpu_count(), help='how many test programs run at once')
    options = parser.parse_args()

    run = Run(os.getcwd(), options.jobs)
    if options.seed is not None and options.seed != run.journal.seed or run.journal.seed is None:
        run.journal.seed = random.randrange(1 << 31) if options.seed is None else options.seed
        run.journal.picked, run.journal.tests = [], {}
    if not options.report:
        run.say(f'Seed {run.journal.seed}')
        run.tree.configure()
        run.find_again()
        run.build(options.count)
        run.measure()
        run.ask_everything(options.again)
    return 0 if run.report() else 1


if __name__ == '__main__':
    sys.exit(main())
