"""Finds the places where the plug-in's source can be changed, and what each is changed to.

A change is one replacement of text in one file. The syntax tree (libclang) says where operators, statements, conditions
and arguments are; the tokens say where literals are.
"""

import dataclasses
import hashlib
import re

from clang import cindex
from clang.cindex import CursorKind, TokenKind


@dataclasses.dataclass(frozen=True)
class Point:
    """One change: in `file` (a path in the tree), `length` bytes from `offset` become `new`."""

    file: str
    offset: int
    length: int
    operator: str
    old: str
    new: str
    line: int
    first: int  # the lines of the statement around it, for coverage
    last: int
    code: str  # the whole line, without the space around it
    nth: int  # which one of the same changes of the same line's text in the file

    @property
    def identity(self):
        """Stays the same while the line does, wherever it moves."""
        key = "\0".join([self.file, self.operator, self.code, self.old, self.new, str(self.nth)])
        return hashlib.sha256(key.encode()).hexdigest()[:12]

    def apply(self, source):
        return source[: self.offset] + self.new.encode() + source[self.offset + self.length :]


COMPARISONS = {
    "<": ["<=", ">="],
    "<=": ["<", ">"],
    ">": [">=", "<="],
    ">=": [">", "<"],
    "==": ["!="],
    "!=": ["=="],
}
OPERATORS = {
    "&&": ["||"],
    "||": ["&&"],
    "+": ["-"],
    "-": ["+"],
    "*": ["/"],
    "/": ["*"],
    "%": ["*"],
    "&": ["|"],
    "|": ["&"],
    "<<": [">>"],
    ">>": ["<<"],
    "+=": ["-="],
    "-=": ["+="],
    "*=": ["/="],
    "/=": ["*="],
    "|=": ["&="],
    "&=": ["|="],
    "++": ["--"],
    "--": ["++"],
}
KIND_OF_OPERATOR = {**dict.fromkeys(COMPARISONS, "comparison"), **dict.fromkeys(OPERATORS, "arithmetic")}
KIND_OF_OPERATOR |= {"&&": "logic", "||": "logic"}

# Their arguments may stand in any order.
COMMUTATIVE = {"min", "max"}

INTEGER = re.compile(r"^(0[xX][0-9a-fA-F']+|[0-9][0-9']*)([uUlLzZ]*)$")
FRACTION = re.compile(r"^([0-9]+\.[0-9]*(?:[eE][+-]?[0-9]+)?)([fFlL]?)$")


class Finder:
    """Collects the points of one file from the tree of a source that includes it."""

    def __init__(self, unit, path, file):
        self.file = file
        self.path = path
        with open(path, "rb") as stream:
            self.source = stream.read()
        self.lines = self.source.decode().split("\n")
        self.starts = [0]
        for text in self.source.split(b"\n"):
            self.starts.append(self.starts[-1] + len(text) + 1)
        self.found = {}
        # Lines of the statement around each offset, from the outside in.
        self.ranges = []
        self.skipped = []  # byte ranges that hold nothing to change
        for cursor in unit.cursor.get_children():
            if self.is_here(cursor):
                self.visit(cursor, None)
        self.visit_tokens(unit)

    # Places.

    def is_here(self, cursor):
        return cursor.location.file is not None and cursor.location.file.name == self.path

    def text(self, extent):
        return self.source[extent.start.offset : extent.end.offset].decode()

    def add(self, operator, start, end, new):
        old = self.source[start:end].decode()
        if old == new or any(first <= start < last for first, last in self.skipped):
            return
        self.found.setdefault((start, end, new), operator)

    def remember(self, extent):
        self.ranges.append((extent.start.offset, extent.end.offset, extent.start.line, extent.end.line))

    # The tree.

    def visit(self, cursor, parent):
        kind = cursor.kind
        if kind == CursorKind.STATIC_ASSERT:
            self.skipped.append((cursor.extent.start.offset, cursor.extent.end.offset))
            return
        children = list(cursor.get_children())
        if kind in (CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR) and len(children) == 2:
            self.change_operator(cursor, children[0].extent.end.offset, children[1].extent.start.offset)
        elif kind == CursorKind.UNARY_OPERATOR:
            self.change_unary(cursor)
        elif kind == CursorKind.CALL_EXPR:
            self.change_call(cursor)
        elif kind == CursorKind.COMPOUND_STMT:
            for child in children:
                self.change_statement(child)
        elif kind in (CursorKind.IF_STMT, CursorKind.WHILE_STMT, CursorKind.FOR_STMT, CursorKind.CXX_FOR_RANGE_STMT):
            self.change_control(cursor, children)
        elif kind in (CursorKind.CASE_STMT, CursorKind.DEFAULT_STMT) and children:
            self.change_statement(children[-1])
        elif kind == CursorKind.CONDITIONAL_OPERATOR and children:
            self.negate(children[0])
        for child in children:
            if child.location.file is None or self.is_here(child):
                self.visit(child, cursor)

    def change_operator(self, cursor, start, end):
        between = self.source[start:end].decode()
        sign = between.strip()
        if sign not in KIND_OF_OPERATOR:
            return
        at = start + between.index(sign)
        for new in COMPARISONS.get(sign, []) + OPERATORS.get(sign, []):
            self.add(KIND_OF_OPERATOR[sign], at, at + len(sign), new)

    def change_unary(self, cursor):
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        text = self.source[start:end].decode()
        for sign in ("++", "--"):
            if text.startswith(sign):
                self.add("arithmetic", start, start + 2, OPERATORS[sign][0])
                return
            if text.endswith(sign):
                self.add("arithmetic", end - 2, end, OPERATORS[sign][0])
                return
        if text.startswith("!"):
            self.add("negation", start, start + 1, "")
        elif text.startswith("-"):
            self.add("arithmetic", start, start + 1, "")

    def change_call(self, cursor):
        arguments = [each for each in cursor.get_arguments() if each is not None and self.has_text(each)]
        if cursor.spelling.startswith("operator") and len(arguments) == 2:
            self.change_operator(cursor, arguments[0].extent.end.offset, arguments[1].extent.start.offset)
            return
        if cursor.spelling in COMMUTATIVE:
            return
        for left, right in zip(arguments, arguments[1:]):
            if left.type.get_canonical().spelling != right.type.get_canonical().spelling:
                continue
            start, end = left.extent.start.offset, right.extent.end.offset
            if left.extent.end.offset > right.extent.start.offset:
                continue
            between = self.source[left.extent.end.offset : right.extent.start.offset].decode()
            self.add("arguments", start, end, self.text(right.extent) + between + self.text(left.extent))

    def has_text(self, cursor):
        return self.is_here(cursor) and cursor.extent.end.offset > cursor.extent.start.offset

    def change_statement(self, cursor):
        if not self.is_here(cursor):
            return
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        kind = cursor.kind
        if kind == CursorKind.RETURN_STMT:
            self.remember(cursor.extent)
            value = next(iter(cursor.get_children()), None)
            if value is None:
                self.add("statement", start, end, "")
                return
            if self.text(value.extent) != "{}":
                self.add("result", start, end, "return {}")
            if value.type.get_canonical().spelling in ("bool", "const bool"):
                self.negate(value)
        elif kind in (CursorKind.BREAK_STMT, CursorKind.CONTINUE_STMT):
            self.add("statement", start, end, "")
        elif kind.is_expression():
            self.remember(cursor.extent)
            self.add("statement", start, end, "")
        elif kind == CursorKind.DECL_STMT:
            self.remember(cursor.extent)

    def change_control(self, cursor, children):
        for child in children:
            if child.kind == CursorKind.COMPOUND_STMT:
                continue
            if not child.kind.is_statement() or child.kind == CursorKind.DECL_STMT:
                self.remember(child.extent)
        bodies = children[1:] if cursor.kind == CursorKind.IF_STMT else children[-1:]
        for body in bodies:
            if body.kind not in (CursorKind.COMPOUND_STMT, CursorKind.IF_STMT, CursorKind.VAR_DECL):
                # (What follows a condition that declares something is the condition itself once more.)
                if body is children[-1] or body.kind.is_statement() or self.is_body(cursor, body):
                    self.change_statement(body)
        if cursor.kind in (CursorKind.IF_STMT, CursorKind.WHILE_STMT) and children:
            condition = children[0]
            if condition.kind == CursorKind.VAR_DECL:
                extent = condition.extent
                self.add("negation", extent.start.offset, extent.end.offset,
                         f"{self.text(extent)}; !{condition.spelling}")
            elif condition.kind.is_expression():
                self.negate(condition)

    def is_body(self, cursor, body):
        """Whether an expression below a control statement stands behind its closing bracket."""
        before = self.source[cursor.extent.start.offset : body.extent.start.offset].decode().rstrip()
        return before.endswith(")") or before.endswith("else")

    def negate(self, cursor):
        """Changes a condition to its opposite, where no other change does the same."""
        inner = cursor
        while inner.kind in (CursorKind.UNEXPOSED_EXPR, CursorKind.PAREN_EXPR):
            children = list(inner.get_children())
            if len(children) != 1:
                break
            inner = children[0]
        text = self.text(cursor.extent)
        if inner.kind == CursorKind.UNARY_OPERATOR and text.startswith("!"):
            return
        if inner.kind == CursorKind.CXX_BOOL_LITERAL_EXPR or text in ("true", "false"):
            return
        if inner.kind == CursorKind.BINARY_OPERATOR:
            left, right = list(inner.get_children())[:2]
            sign = self.source[left.extent.end.offset : right.extent.start.offset].decode().strip()
            if sign in COMPARISONS:
                return
        self.add("negation", cursor.extent.start.offset, cursor.extent.end.offset, f"!({text})")

    # The tokens.

    def visit_tokens(self, unit):
        end = cindex.SourceLocation.from_offset(unit, unit.get_file(self.path), len(self.source))
        start = cindex.SourceLocation.from_offset(unit, unit.get_file(self.path), 0)
        for token in unit.get_tokens(extent=cindex.SourceRange.from_locations(start, end)):
            first, last = token.extent.start.offset, token.extent.end.offset
            line = self.lines[token.location.line - 1]
            if line.lstrip().startswith("#"):
                continue
            if token.spelling in ("true", "false"):
                self.add("constant", first, last, "false" if token.spelling == "true" else "true")
            elif token.kind == TokenKind.LITERAL:
                for new in changed_literal(token.spelling):
                    self.add("text" if token.spelling.startswith('"') else "constant", first, last, new)

    def points(self):
        counted = {}
        for (start, end, new), operator in sorted(self.found.items()):
            line = self.source.count(b"\n", 0, start) + 1
            code = self.lines[line - 1].strip()
            old = self.source[start:end].decode()
            key = (operator, code, old, new)
            counted[key] = counted.get(key, -1) + 1
            first, last = self.lines_around(start, end, line)
            yield Point(self.file, start, end - start, operator, old, new, line, first, last, code, counted[key])

    def lines_around(self, start, end, line):
        around = [each for each in self.ranges if each[0] <= start and end <= each[1]]
        if not around:
            return line, self.source.count(b"\n", 0, end) + 1
        _, _, first, last = min(around, key=lambda each: each[1] - each[0])
        return first, last


def changed_literal(text):
    """What a literal is changed to."""
    if match := INTEGER.match(text):
        value = int(match[1].replace("'", ""), 0)
        return [str(value + 1) + match[2]] + ([str(value - 1) + match[2]] if value > 0 else [])
    if match := FRACTION.match(text):
        return [repr(float(match[1]) + 1) + match[2]]
    if text.startswith('"'):
        body = text[1:-1]
        at = body.index(":") if ":" in body and " " not in body and "/" not in body else len(body)
        return ['"' + body[:at] + "x" + body[at:] + '"']
    return []


def parse(path, arguments):
    """The tree of one source. Raises ValueError where it has errors: half a tree would hide points."""
    unit = cindex.Index.create().parse(str(path), args=arguments)
    errors = [str(each) for each in unit.diagnostics if each.severity >= cindex.Diagnostic.Error]
    if errors:
        raise ValueError(f"{path} cannot be read as C++: {errors[0]}")
    return unit


def points_of(unit, path, file):
    return list(Finder(unit, str(path), file).points())
