"""Finds the places of a source that can be changed, and their alternatives, with libclang."""

import re
from dataclasses import dataclass, field

from clang.cindex import CursorKind as Kind, Index, TypeKind

# Multiplications and divisions by two, which are exact in any precision.
EXACT = re.compile(r"\b2(?:\.0)? \* | [*/] 2(?:\.0)?\b| \* 0\.5\b")
COMPARISONS = {"<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"),
               "==": ("!=",), "!=": ("==",)}
ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "<<": ">>", ">>": "<<",
              "&": "|", "|": "&", "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "%=": "*=",
              "<<=": ">>=", ">>=": "<<=", "&=": "|=", "|=": "&="}
CONJUNCTIONS = {"&&": "||", "||": "&&"}
ROUNDING = {"round", "floor", "ceil", "trunc", "lround", "llround", "rint", "abs", "fabs"}
FLOATING = {TypeKind.FLOAT, TypeKind.DOUBLE, TypeKind.LONGDOUBLE}
LOOPS = {Kind.WHILE_STMT, Kind.DO_STMT}
# A macro with its arguments, recognized by its name. libclang's own record of macros takes seconds
# per source.
MACRO = re.compile(rb"\b(?:[A-Z][A-Z0-9_]{3,}|assert|offsetof)\b(?:\((?:[^()]|\([^()]*\))*\))?")
INTEGER = re.compile(r"(0[xX][\da-fA-F']+|0[bB][01']+|[\d']+)[uUlLzZ]*")


@dataclass
class Change:
    """One possible change of a place."""

    place: "Place"
    code: str  # replaces the code of the place
    change: str  # description such as "a < b -> a <= b"
    number: int = 0  # value that switches the change on; unique in the project
    key: tuple = ()  # file, text of the line, and change: stable when lines move


@dataclass
class Place:
    """A range of a source that contains an expression, and the possible changes of the range."""

    start: int
    end: int
    cast: str = ""  # applied to every alternative, so that their types agree
    insertion: str = ""  # code that the alternatives replace if the range is empty
    switchable: bool = True  # at run time; otherwise each change is compiled separately
    changes: list[Change] = field(default_factory=list)


@dataclass
class Constant:
    """A constexpr variable. Its initializer is switchable after replacing constexpr by const."""

    start: int
    end: int
    keyword: int
    replacement: str
    fixed: bool = False  # the value is needed at compile time


class Source:
    """A source file with its changeable places and its constants."""

    def __init__(self, root, path, flags):
        self.path = path
        self.bytes = (root / path).read_bytes()
        self.places = {}
        self.constants = []
        self.root = str(root)
        unit = Index.create().parse(str(root / path), flags)
        errors = [each for each in unit.diagnostics if each.severity >= 3]
        if errors:
            raise SystemExit(f"mutate: {path} cannot be parsed: {errors[0]}")
        self.macros = [found.span() for found in MACRO.finditer(self.bytes)]
        for cursor in unit.cursor.get_children():
            if self.has(cursor):
                self.visit(cursor, None)

    def has(self, cursor):
        file = cursor.extent.start.file
        return file is not None and file.name == f"{self.root}/{self.path}"

    def text(self, start, end):
        return self.bytes[start:end].decode()

    def code(self, cursor):
        return self.text(*span(cursor))

    def line(self, offset):
        return self.bytes.count(b"\n", 0, offset) + 1

    def changes(self):
        return [change for place in self.places.values() for change in place.changes]

    # Recording

    def add(self, start, end, code, becomes, was=None, cast="", insertion=""):
        """Records a change of the range, unless it is part of a macro or already recorded."""
        if any(low <= start and end <= high for low, high in self.macros) and cast != "(void)":
            return
        original = insertion or self.text(start, end)
        if code == original or not balanced(original) or not balanced(code):
            return
        place = self.places.setdefault((start, end), Place(start, end, insertion=insertion))
        if cast == "(void)" or not place.cast:
            place.cast = cast or place.cast
        if all(each.code != code for each in place.changes):
            summary = f"{was or original} -> {becomes or code}"
            place.changes.append(Change(place, code, " ".join(summary.split())))

    def replace(self, cursor, code, becomes=None, was=None, cast=""):
        self.add(*span(cursor), code, becomes, was, cast)

    # Walking

    def visit(self, cursor, parent, in_condition=False, in_double=False, in_label=False):
        kind = cursor.kind
        if kind == Kind.STATIC_ASSERT or not self.has(cursor):
            return
        children = list(cursor.get_children())
        if kind == Kind.VAR_DECL:
            self.constant(cursor, parent)
        elif kind == Kind.IF_STMT:
            self.if_statement(cursor, children)
        elif kind in LOOPS or kind == Kind.FOR_STMT:
            self.loop(cursor, children)
        elif kind == Kind.CONDITIONAL_OPERATOR and len(children) == 3:
            self.conditional(cursor, *children)
        elif kind == Kind.RETURN_STMT and children and is_void(children[0]):
            self.remove(children[0])
        elif kind == Kind.CALL_EXPR:
            self.call(cursor, parent)
        elif kind == Kind.UNARY_OPERATOR and children:
            self.unary(cursor, children[0])
        elif kind == Kind.DECL_REF_EXPR and not in_label:
            self.enumerator(cursor)
        else:
            self.literal(cursor)
        is_double = self.binary(cursor, children, in_double) or in_double and kind in (
            Kind.PAREN_EXPR, Kind.UNEXPOSED_EXPR)
        for child in children:
            if child.kind.is_expression() and self.is_statement(cursor, child, children):
                self.remove(child)
            self.visit(child, cursor, in_double=is_double,
                       in_label=kind == Kind.CASE_STMT and child == children[0])

    def is_statement(self, parent, child, children):
        """Returns whether the expression is a statement."""
        if parent.kind in (Kind.COMPOUND_STMT, Kind.DEFAULT_STMT):
            return True
        if parent.kind in (Kind.IF_STMT, Kind.WHILE_STMT, Kind.FOR_STMT):
            return span(child)[0] > self.header(parent)[1]
        if parent.kind in (Kind.CASE_STMT, Kind.CXX_FOR_RANGE_STMT):
            return child == children[-1]
        return False

    def header(self, cursor):
        """Returns the range between the parentheses after the keyword of a statement."""
        start, end = span(cursor)
        first = self.bytes.index(b"(", start, end)
        depth = 0
        for at in range(first, end):
            depth += {0x28: 1, 0x29: -1}.get(self.bytes[at], 0)
            if depth == 0:
                return first + 1, at
        raise ValueError(f"{self.path}: unbalanced parentheses")

    # Statements

    def constant(self, cursor, parent):
        start, end = span(cursor)
        keyword = self.bytes.find(b"constexpr", start, cursor.location.offset)
        if keyword < 0:
            return
        scope = parent.kind if parent is not None else None
        replacement = "const"
        if scope in (Kind.CLASS_DECL, Kind.STRUCT_DECL, Kind.CLASS_TEMPLATE):
            replacement = "inline const"
        elif scope == Kind.DECL_STMT and b"static" not in self.bytes[start:keyword]:
            replacement = "static const"  # initializes a table only once
        self.constants.append(Constant(start, end, keyword, replacement))

    def remove(self, cursor):
        if re.search(r"\breserve$", cursor.spelling):
            return  # it affects only the speed
        self.replace(cursor, "0", "(removed)", cast="(void)")

    def condition(self, cursor, was, results, insertion=None):
        """Replaces a condition by true, by false and by its negation. `results` contains the
        description of each of these changes, or None to omit the change."""
        code = insertion or self.code(cursor)
        start, end = (span(cursor)[1],) * 2 if insertion else span(cursor)
        bare = stripped(cursor)
        opposite_is_known = not insertion and (
            code.startswith("!") and bare.kind == Kind.UNARY_OPERATOR
            or self.operator(bare, list(bare.get_children())) in COMPARISONS)
        for replacement, becomes in zip(("true", "false", f"!({code})"), results):
            if becomes is not None and not (replacement[0] == "!" and opposite_is_known):
                self.add(start, end, replacement, becomes, was, "!!", insertion or "")

    def if_statement(self, cursor, children):
        start, end = self.header(cursor)
        if b"constexpr" in self.bytes[span(cursor)[0]:start]:
            return
        inside = [each for each in children if start <= span(each)[0] < end]
        declared = next((each for each in inside if each.kind == Kind.VAR_DECL), None)
        if not inside:
            return
        condition = declared or inside[-1]
        code = self.code(condition)
        results = [f"if ({each})" for each in ("true", "false", f"!({code})")]
        self.condition(condition, f"if ({code})", results, declared and declared.spelling)

    def loop(self, cursor, children):
        if cursor.kind == Kind.FOR_STMT:
            start, end = self.header(cursor)
            first = top_level_semicolon(self.bytes, start, end)
            second = top_level_semicolon(self.bytes, first + 1, end)
            found = [each for each in children if first < span(each)[0] < second]
        else:
            found = [children[-1] if cursor.kind == Kind.DO_STMT else children[0]]
        for condition in found:
            if condition.kind.is_expression():
                code = self.code(condition)
                self.condition(condition, f"while ({code})", (None, "while (false)", None))

    # Expressions

    def conditional(self, cursor, condition, first, second):
        a, b = self.code(first), self.code(second)
        self.condition(condition, self.code(cursor),
                       (a, b, f"!({self.code(condition)}) ? {a} : {b}"))

    def operator(self, cursor, children):
        """Returns the text between the outer operands of an expression, which is the operator of a
        binary expression."""
        if len(children) < 2 or not cursor.kind.is_expression():
            return ""
        return self.text(span(children[0])[1], span(children[-1])[0]).strip()

    def binary(self, cursor, children, in_double):
        """Changes a binary operation. Returns whether it is arithmetic on doubles."""
        operator = self.operator(cursor, children)
        if not operator:
            return False
        a, b = self.code(children[0]), self.code(children[-1])
        if operator in COMPARISONS:
            for other in COMPARISONS[operator]:
                self.replace(cursor, f"{a} {other} {b}")
        if operator in CONJUNCTIONS:
            self.replace(cursor, f"{a} {CONJUNCTIONS[operator]} {b}")
            self.replace(cursor, f"!!({a})", a)
            self.replace(cursor, f"!!({b})", b)
        if cursor.kind not in (Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR):
            return False
        if operator in ARITHMETIC:
            self.replace(cursor, f"{a} {ARITHMETIC[operator]} {b}")
        if cursor.type.get_canonical().kind != TypeKind.DOUBLE or operator not in "+-*/":
            return False
        self.reorder(cursor, stripped(children[0]), operator, b)
        code = self.code(cursor)
        if not in_double and re.search(r" [*/] ", EXACT.sub("", code)):
            self.replace(cursor, f"static_cast<double>(static_cast<float>({code}))",
                         f"float({code})")
        return True

    def reorder(self, cursor, left, operator, c):
        """Swaps a multiplication and a division, which may change the last bit of the result."""
        operands = list(left.get_children())
        inner = self.operator(left, operands)
        if {inner, operator} == {"*", "/"} and left.type.get_canonical().kind == TypeKind.DOUBLE:
            a, b = self.code(operands[0]), self.code(operands[-1])
            self.replace(cursor, f"{a} {operator} {c} {inner} {b}")

    def unary(self, cursor, operand):
        code = self.code(cursor)
        inner = self.code(operand)
        if code.startswith("!") and not code.startswith("!="):  # C++20: "!=" is a negated "=="
            self.replace(cursor, f"!!({inner})", inner)
        elif code.startswith("-") and not code.startswith("--"):
            self.replace(cursor, f"({inner})", inner)
        elif "++" in (code[:2], code[-2:]) or "--" in (code[:2], code[-2:]):
            self.replace(cursor, code.translate(str.maketrans("+-", "-+")))

    def call(self, cursor, parent):
        start, end = span(cursor)
        arguments = [each for each in cursor.get_arguments()
                     if each is not None and self.has(each) and inside(span(each), (start, end))]
        if not arguments or cursor.spelling.startswith("operator"):
            return
        code = self.code(cursor)
        other = re.sub(r"^((?:std::)?(?:ranges::)?)(min|max)(?=\W)",
                       lambda found: found[1] + {"min": "max", "max": "min"}[found[2]], code)
        self.replace(cursor, other)
        is_clamp = cursor.spelling == "clamp" and len(arguments) == 3
        if is_clamp or cursor.spelling in ROUNDING and len(arguments) == 1:
            argument = self.code(arguments[0])
            kind = cursor.type.get_canonical().spelling.removeprefix("const ").rstrip(" &")
            self.replace(cursor, f"static_cast<{kind}>({argument})", argument)
        if cursor.spelling in ("min", "max"):
            return  # the order of their arguments does not matter
        swapped = arguments[is_clamp:]  # in std::clamp, the order of the first two does not matter
        for first, second in zip(swapped, swapped[1:]):
            if type_name(first) == type_name(second) and "(" not in type_name(first):
                (low, middle), (middle_end, high) = span(first), span(second)
                if middle <= middle_end:
                    self.replace(cursor, self.text(start, low) + self.code(second)
                                 + self.text(middle, middle_end) + self.code(first)
                                 + self.text(high, end))
        is_initializer = parent is not None and parent.location.offset == start and (
            parent.kind == Kind.VAR_DECL)
        if (is_initializer or code.startswith("{")) and (start, end) in self.places:
            self.places[start, end].switchable = False  # not an expression

    def enumerator(self, cursor):
        """Replaces an enumerator defined in the project by the next one."""
        target = cursor.referenced
        if target is None or target.kind != Kind.ENUM_CONSTANT_DECL:
            return
        if not target.location.file.name.startswith(self.root):
            return
        names = [each.spelling for each in target.semantic_parent.get_children()]
        following = names[(names.index(target.spelling) + 1) % len(names)]
        code = self.code(cursor)
        self.replace(cursor, code.removesuffix(target.spelling) + following)

    def literal(self, cursor):
        code = self.code(cursor)
        if cursor.kind == Kind.CXX_BOOL_LITERAL_EXPR:
            self.replace(cursor, {"true": "false", "false": "true"}.get(code, code))
        elif cursor.kind == Kind.INTEGER_LITERAL and (found := INTEGER.fullmatch(code)):
            value = number(found[1])
            for sign, result in (("+", value + 1), ("-", value - 1)):
                shown = f"0x{result:X}" if code[:2] in ("0x", "0X") else str(result)
                self.replace(cursor, f"({code} {sign} 1)", shown)
        elif cursor.kind == Kind.FLOATING_LITERAL:
            for other in {0.0: ("0.01", "1.0"), 1.0: ("1.01", "0.0")}.get(
                    float(code.replace("'", "")), (f"({code} * 1.01)",)):
                self.replace(cursor, other, other.strip("()"))
        elif cursor.kind == Kind.CHARACTER_LITERAL:
            self.replace(cursor, "'b'" if code == "'a'" else "'a'")
        elif cursor.kind == Kind.STRING_LITERAL:
            self.string(cursor, code)

    def string(self, cursor, code):
        self.replace(cursor, '"a"' if code == '""' else '""')
        found = re.search(r"(?<![\\%\w.])[A-Za-z](?=[^\"]*\")", code[1:] if code[:1] == '"' else "")
        if found:
            at = found.start() + 1
            letter = "y" if code[at] in "xX" else "x"
            self.replace(cursor, code[:at] + letter + code[at + 1:])


def span(cursor):
    return cursor.extent.start.offset, cursor.extent.end.offset


def inside(inner, outer):
    return outer[0] <= inner[0] and inner[1] <= outer[1]


def stripped(cursor):
    """Returns the expression without parentheses and implicit conversions."""
    while cursor.kind in (Kind.UNEXPOSED_EXPR, Kind.PAREN_EXPR):
        children = list(cursor.get_children())
        if len(children) != 1:
            break
        cursor = children[0]
    return cursor


def is_void(cursor):
    return cursor.type.get_canonical().kind == TypeKind.VOID


def type_name(cursor):
    kind = cursor.type.get_canonical()
    if kind.kind == TypeKind.CONSTANTARRAY:
        return f"{kind.element_type.spelling}*"
    return kind.spelling.removeprefix("const ").rstrip(" &")


def number(digits):
    digits = digits.replace("'", "")
    return int(digits, 8 if re.fullmatch(r"0\d+", digits) else 0)


def balanced(code):
    """Returns whether the code contains as many closing brackets as opening ones. Ignores literals
    and comments."""
    bare = re.sub(r"\"(?:\\.|[^\"\\])*\"|(?<!\d)'(?:\\.|[^'\\])*'|//[^\n]*", "", code)
    return all(bare.count(a) == bare.count(b) for a, b in ("()", "{}", "[]"))


def top_level_semicolon(code, start, end):
    depth = 0
    for at in range(start, end):
        if code[at] in b"([{":
            depth += 1
        elif code[at] in b")]}":
            depth -= 1
        elif code[at] == 0x3B and depth == 0:
            return at
    return end
