"""What has been picked and found out so far, so that a run can be stopped and continued."""

import json
import os


class Journal:
    def __init__(self, path):
        self.path = path
        self.seed = None
        self.picked = []  # records of one change each; a record's place is its number
        self.tests = {}  # "program test": [seconds, numbers reached], or None where it fails unchanged
        if os.path.exists(path):
            with open(path) as file:
                kept = json.load(file)
            self.seed, self.picked, self.tests = kept['seed'], kept['picked'], kept['tests']

    def save(self):
        beside = self.path + '.new'
        with open(beside, 'w') as file:
            json.dump({'seed': self.seed, 'picked': self.picked, 'tests': self.tests}, file, indent=0)
        os.replace(beside, self.path)


def read_judged(path):
    """Changes that a person found to make no difference: (file, text of the line, change) and the reason."""
    judged = {}
    with open(path) as file:
        for block in file.read().split('\n\n'):
            entry = dict(line.split(': ', 1) for line in block.strip().split('\n') if ': ' in line and line[0] != '#')
            if entry:
                judged[entry['file'], entry['line'], entry['change']] = entry['why']
    return judged


def key(record):
    return record['file'], record['text'], record['change']
