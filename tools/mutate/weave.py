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
    """Where to note that a test came to what uses a change: in the function around it, or in all of the file that
    name it. What is in a header may be used everywhere: nowhere."""
    bodies, others = tree.functions(name)
    around = [brace + 1 for _, (start, end), brace in bodies if start <= change.start < end]
    if around and not change.uses:
        return [(name, around[0])]
    if name.endswith('.h'):
        return []
    text, names, places = tree.text(name), set(change.uses), []
    while True:
        word = re.compile(rb'\b(' + b'|'.join(re.escape(one.encode()) for one in sorted(names)) + rb')\b')
        using = [body for body in bodies if word.search(text, *body[1])]
        compiled = [body for body in using if re.search(rb'\bconst(expr|eval)\b', text[body[1][0]:body[2]])]
        places = [(name, body[2] + 1) for body in using if body not in compiled]
        more = {spelling for spelling, _, _ in compiled}
        more |= {spelling for spelling, extent in others if word.search(text, *extent)}
        if more <= names:
            return places
        names |= more
