"""Puts many changes into the sources at once, each behind a question whether it is in force."""

import re

IN_FORCE = 'woven::changed({number})'
NOTE = ' woven::changed({number});'


def overlap(one, other):
    return one.start < other.end and other.start < one.end


def woven_sources(tree, picked, alone=None):
    """The changed files' bytes, by name. Picked has (number, name, change), no two of which overlap; alone is the
    number of one that cannot be turned off, and is made for good."""
    insertions = {}
    for number, name, change in picked:
        if change.alone:
            if number == alone:
                insertions.setdefault(name, []).append((change.start, change.end, change.text))
            for place, offset in note_places(tree, name, change):
                insertions.setdefault(place, []).append((offset, offset, NOTE.format(number=number)))
        else:
            woven = change.woven.replace('{changed}', IN_FORCE.format(number=number))
            insertions.setdefault(name, []).append((change.start, change.end, woven))
    return {name: replaced(tree.text(name), parts) for name, parts in insertions.items()}


def replaced(text, parts):
    for start, end, put in sorted(parts, reverse=True):
        text = text[:start] + put.encode() + text[end:]
    return text


def note_places(tree, name, change):
    """Where to note that a test came to what uses a change: in the function around it, or in all that name it."""
    bodies, _ = tree.functions(name)
    around = [body for body in bodies if body[1][0] <= change.start < body[1][1]]
    if around and not change.uses:
        return [(name, around[0][2] + 1)]
    names, places = set(change.uses), []
    while True:
        word = re.compile(rb'\b(' + b'|'.join(re.escape(one.encode()) for one in sorted(names)) + rb')\b')
        places, more = places_naming(tree, word)
        if more <= names:
            return places
        names |= more


def places_naming(tree, word):
    places, names = [], set()
    for name in tree.code_files():
        text = tree.text(name)
        if not word.search(text):
            continue
        bodies, others = tree.functions(name)
        for spelling, (start, end), brace in bodies:
            if not word.search(text, start, end):
                continue
            if re.search(rb'\bconst(expr|eval)\b', text[start:brace]):
                names.add(spelling)
            else:
                places.append((name, brace + 1))
        names |= {spelling for spelling, (start, end) in others if word.search(text, start, end)}
    return places, names
