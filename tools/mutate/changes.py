"""Finds the small changes that can be made to each line of a C++ file."""

import dataclasses
import re

from clang.cindex import CursorKind as Kind, Index, TypeKind

SWAPPED = {
    '<': ['<=', '>='], '<=': ['<', '>'], '>': ['>=', '<='], '>=': ['>', '<'], '==': ['!='], '!=': ['=='],
    '&&': ['||'], '||': ['&&'], '+': ['-'], '-': ['+'], '*': ['/'], '/': ['*'], '%': ['*'], '<<': ['>>'],
    '>>': ['<<'], '&': ['|'], '|': ['&'], '^': ['&'],
    '+=': ['-='], '-=': ['+='], '*=': ['/='], '/=': ['*='], '|=': ['&='], '&=': ['|='], '<<=': ['>>='], '>>=': ['<<='],
}
FUNCTIONS = {Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONSTRUCTOR, Kind.DESTRUCTOR, Kind.CONVERSION_FUNCTION,
             Kind.FUNCTION_TEMPLATE}
LOOPS = {Kind.FOR_STMT, Kind.WHILE_STMT, Kind.DO_STMT, Kind.CXX_FOR_RANGE_STMT}
INTEGERS = {TypeKind.CHAR_S, TypeKind.CHAR_U, TypeKind.SCHAR, TypeKind.UCHAR, TypeKind.SHORT, TypeKind.USHORT,
            TypeKind.INT, TypeKind.UINT, TypeKind.LONG, TypeKind.ULONG, TypeKind.LONGLONG, TypeKind.ULONGLONG}
FLOATS = {TypeKind.FLOAT, TypeKind.DOUBLE, TypeKind.LONGDOUBLE}


@dataclasses.dataclass(frozen=True)
class Change:
    """What to put in the place of the bytes from start to end."""
    line: int
    start: int
    end: int
    name: str  # such as "< becomes <="
    text: str  # in a source with this change alone
    woven: str  # in a source with many; "{changed}" stands for whether this one is in force
    # The compiler may already use the value: such a change cannot be chosen when the program runs.
    alone: bool
    uses: tuple  # names through which other code comes to what is changed alone


class _Finder:
    def __init__(self, path, unit, source):
        self.path, self.unit, self.source = path, unit, source
        self.found = []

    def text(self, start, end):
        return self.source[start:end].decode()

    def add(self, cursor_line, start, end, name, text, woven, context):
        alone, uses = context
        self.found.append(Change(cursor_line, start, end, name, text, woven, alone, uses))

    def add_expression(self, line, start, end, name, changed, context, original=None):
        original = original or self.text(start, end)
        self.add(line, start, end, name, f'({changed})', '({changed} ? (' + changed + ') : (' + original + '))', context)

    def walk(self, cursor, context, parent=None, position=0):
        for place, child in enumerate(cursor.get_children()):
            location = child.location
            if child.kind == Kind.TRANSLATION_UNIT or not location.file or location.file.name != self.path:
                continue
            self.visit(child, self.inner(child, context, cursor), cursor, place)

    def inner(self, cursor, context, parent):
        """Whether what is in this cursor is the compiler's business alone, and by which names it is used."""
        kind = cursor.kind
        if kind in FUNCTIONS:
            head = self.text(cursor.extent.start.offset, cursor.extent.end.offset).split('{')[0]
            return (True, (cursor.spelling,)) if re.search(r'\bconst(expr|eval)\b', head) else (False, ())
        if kind in (Kind.VAR_DECL, Kind.ENUM_CONSTANT_DECL, Kind.ENUM_DECL):
            outside = parent.kind in (Kind.NAMESPACE, Kind.TRANSLATION_UNIT, Kind.CLASS_DECL, Kind.STRUCT_DECL)
            declared = parent if parent.kind == Kind.DECL_STMT else cursor
            head = self.text(declared.extent.start.offset, cursor.location.offset)
            if kind != Kind.VAR_DECL or outside or re.search(r'\b(constexpr|static|constinit)\b', head):
                return True, context[1] + (cursor.spelling,)
        if kind == Kind.FIELD_DECL:
            return True, (cursor.semantic_parent.spelling,)
        if kind == Kind.LAMBDA_EXPR:
            return False, ()
        return context

    def visit(self, cursor, context, parent, place):
        kind = cursor.kind
        if kind in (Kind.STATIC_ASSERT, Kind.USING_DIRECTIVE, Kind.TYPEDEF_DECL, Kind.TYPE_ALIAS_DECL):
            return
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        line = cursor.extent.start.line
        children = [child for child in cursor.get_children()]
        if self.is_statement(cursor, parent, place):
            self.leave_out(line, start, end, context)
        if kind in (Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR):
            self.swap(children[:1] + children[-1:], start, end, context)
        elif kind == Kind.CALL_EXPR and len(children) == 3:
            operands = sorted(children, key=lambda child: (child.extent.start.offset, child.extent.end.offset))
            if operands[0].extent.start.offset == start and operands[2].extent.end.offset == end:
                self.swap([operands[0], operands[2]], start, end, context)
        elif kind == Kind.UNARY_OPERATOR:
            self.unary(cursor, line, start, end, context)
        elif kind in (Kind.IF_STMT, Kind.WHILE_STMT, Kind.DO_STMT, Kind.CONDITIONAL_OPERATOR):
            self.negate(kind, children, context)
        elif kind == Kind.RETURN_STMT:
            self.other_value(cursor, children, line, start, end, context)
        elif kind in (Kind.BREAK_STMT, Kind.CONTINUE_STMT):
            self.other_jump(kind, line, start, end, context)
        elif kind in (Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL, Kind.CXX_BOOL_LITERAL_EXPR):
            self.constant(line, start, end, context)
        if kind == Kind.CASE_STMT:
            self.visit(children[0], (True, ()), cursor, 0)
            for number, child in enumerate(children[1:]):
                self.visit(child, context, cursor, number + 1)
        else:
            self.walk(cursor, context)

    @staticmethod
    def is_statement(cursor, parent, place):
        if not cursor.kind.is_expression():
            return False
        if parent.kind == Kind.COMPOUND_STMT:
            return True
        last = len(list(parent.get_children())) - 1
        if parent.kind == Kind.IF_STMT:
            first = next(parent.get_children()).kind
            return place > (1 if first in (Kind.VAR_DECL, Kind.DECL_STMT) else 0)
        return parent.kind in LOOPS | {Kind.CASE_STMT, Kind.DEFAULT_STMT} and place == last and parent.kind != Kind.DO_STMT

    def leave_out(self, line, start, end, context):
        original = self.text(start, end)
        as_void = original if original.startswith('throw') else f'void({original})'
        self.add(line, start, end, 'left out', 'void()', '({changed} ? void() : ' + as_void + ')', context)

    def swap(self, operands, start, end, context):
        left, right = operands[0].extent.end.offset, operands[1].extent.start.offset
        gap = self.text(left, right)
        operator = re.sub(r'//.*', '', gap).strip(' \n()')
        for other in SWAPPED.get(operator, []):
            changed = self.text(start, left) + gap.replace(operator, other, 1) + self.text(right, end)
            line = self.source.count(b'\n', 0, left + gap.index(operator)) + 1
            self.add_expression(line, start, end, f'{operator} becomes {other}', changed, context)

    def unary(self, cursor, line, start, end, context):
        original = self.text(start, end)
        if original.startswith(('!', '-')) and not original.startswith('--'):
            changed = original[1:] if original[0] == '-' else f'!!({original[1:]})'
            self.add_expression(line, start, end, f'without {original[0]}', changed, context)
        for one, other in (('++', '--'), ('--', '++')):
            if original.startswith(one):
                self.add_expression(line, start, end, f'{one} becomes {other}', other + original[2:], context)
            elif original.endswith(one):
                self.add_expression(line, start, end, f'{one} becomes {other}', original[:-2] + other, context)

    def negate(self, kind, children, context):
        if kind == Kind.DO_STMT:
            children = children[::-1]
        condition = children[0]
        if condition.kind == Kind.DECL_STMT and kind == Kind.IF_STMT:
            condition = children[1]
        if not condition.kind.is_expression():
            return
        start, end = condition.extent.start.offset, condition.extent.end.offset
        original = self.text(start, end)
        self.add_expression(condition.extent.start.line, start, end, 'condition negated', f'!({original})', context,
                            f'bool({original})')

    def other_value(self, cursor, children, line, start, end, context):
        if not children:
            self.add(line, start, end, 'return left out', 'void()', 'if ({changed}) {} else return', context)
            return
        value = children[0]
        begin, end = value.extent.start.offset, value.extent.end.offset
        original = self.text(begin, end)
        kind = value.type.get_canonical().kind
        if value.kind == Kind.INIT_LIST_EXPR or original.startswith('{') or original == 'nullptr':
            return
        if kind == TypeKind.BOOL or value.type.spelling == 'Boolean':
            name, changed = 'returns the opposite', f'!({original})'
        elif kind in INTEGERS | FLOATS:
            name, changed = 'returns one more', f'({original}) + 1'
        elif kind == TypeKind.ENUM:
            name = 'returns one more'
            changed = f'static_cast<std::decay_t<decltype({original})>>(static_cast<int>({original}) + 1)'
        elif original.startswith('"'):
            name, changed = 'returns an empty text', '""'
        else:
            name, changed = 'returns an empty value', f'std::decay_t<decltype({original})>{{}}'
        self.add_expression(line, begin, end, name, changed, context)

    def other_jump(self, kind, line, start, end, context):
        one, other = ('break', 'continue') if kind == Kind.BREAK_STMT else ('continue', 'break')
        self.add(line, start, end, f'{one} becomes {other}', other, f'if ({{changed}}) {other}; else {one}', context)

    def constant(self, line, start, end, context):
        original = self.text(start, end)
        if original in ('true', 'false'):
            other = 'false' if original == 'true' else 'true'
            self.add_expression(line, start, end, f'{original} becomes {other}', other, context)
        elif re.match(r'[0-9.]', original):
            for sign in '+-':
                self.add_expression(line, start, end, f'{original} becomes {original} {sign} 1', f'{original} {sign} 1', context)


def parse(path, arguments):
    return Index.create().parse(path, arguments)


def changes_of(path, arguments):
    """All changes in a file, by line, in the order of the text. The arguments are the compiler's."""
    unit = parse(path, arguments)
    with open(path, 'rb') as file:
        source = file.read()
    finder = _Finder(path, unit, source)
    finder.walk(unit.cursor, (False, ()))
    by_line = {}
    for change in finder.found:
        same = by_line.setdefault(change.line, [])
        if change not in same:
            same.append(change)
    return by_line


def functions_of(path, arguments):
    """Where the bodies of functions begin and end: offsets of '{' and '}'; and other declarations with names."""
    unit = parse(path, arguments)
    bodies, others = [], []

    def look(cursor):
        for child in cursor.get_children():
            if not child.location.file or child.location.file.name != path:
                continue
            if child.kind in (Kind.NAMESPACE, Kind.CLASS_DECL, Kind.STRUCT_DECL):
                look(child)
            body = [part for part in child.get_children() if part.kind == Kind.COMPOUND_STMT]
            extent = (child.extent.start.offset, child.extent.end.offset)
            if child.kind in FUNCTIONS and body:
                bodies.append((child.spelling, extent, body[0].extent.start.offset))
            elif child.kind in (Kind.VAR_DECL, Kind.ENUM_CONSTANT_DECL, Kind.STRUCT_DECL):
                others.append((child.spelling, extent))
    look(unit.cursor)
    return bodies, others
