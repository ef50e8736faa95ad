"""The small changes that a source file can have, and the text of a file in which all of them are asleep."""

import dataclasses
import re
import zlib

OPERATORS = {"<": ("<=", "Less"), "<=": ("<", "AtMost"), ">": (">=", "More"), ">=": (">", "AtLeast"),
             "==": ("!=", "Same"), "!=": ("==", "Other"), "+": ("-", "Plus"), "-": ("+", "Minus"),
             "*": ("/", "Times"), "/": ("*", "Over"), "+=": ("-=", "Add"), "-=": ("+=", "Subtract")}
CALLS = {"min": "max", "max": "min", "any_of": "all_of", "all_of": "any_of"}
MEMBERS = {"front": ("back", "front"), "back": ("front", "back"), "starts_with": ("ends_with", "startsWith"),
           "ends_with": ("starts_with", "endsWith")}

HIDDEN = re.compile(r'R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|(?<![0-9a-zA-Z])\'(?:\\.|[^\'\\\n])+\'|//[^\n]*')
# The layout of the code sets blanks around every operator of two values, and around no other sign.
OPERATOR = re.compile(r"(?<= )(<=|>=|==|!=|\+=|-=|[<>+\-*/])(?=[ \n])")
LOGIC = re.compile(r"(?<= )(&&|\|\|)(?=[ \n])")
NUMBER = re.compile(r"(?<![\w.'])(\d[\d']*)(\.\d+)?(?![\w.'])")
LITERAL = re.compile(r"\b(true|false)\b")
JUMP = re.compile(r"\b(continue|break);")
CALL = re.compile(r"\bstd::(?:ranges::)?(min|max|any_of|all_of)(?=\()")
MEMBER = re.compile(r"\.(front|back|starts_with|ends_with)\(")
CONDITION = re.compile(r"\bif \(")
STATEMENT = re.compile(r"(?<=[;{}\"]\n)( +)((?!return|co_|static_assert|using|throw|delete|case|typedef)[\w.:>\-]+"
                       r"\([^{}]*?\);)(?=\n)")
CONSTANT = re.compile(r"(?<!if )\bconstexpr\b")
ON = "::mutants::on(NUMBER)"
NO_CODE = re.compile(r"\s*(#|template|using|static_assert)")


@dataclasses.dataclass
class Change:
    """One small change: what its first line was and would be, and the pieces that put it, asleep, into the text as
    (begin, end, text, rank); of those that begin in one place, the lowest rank comes first."""
    number: int
    file: str
    line: int
    was: str
    becomes: str
    pieces: list

    def told(self):
        return f"{self.file}:{self.line}\n  - {self.was}\n  + {self.becomes}"

    def key(self):
        return self.file, self.was, self.becomes


def code_only(text):
    """The text with its quotes and remarks blanked out, in the same places."""
    return HIDDEN.sub(lambda found: re.sub(r"[^\n]", '"', found.group()), text)


def closing(code, begin):
    """Where the bracket that opens at `begin` closes."""
    depth = 0
    for at in range(begin, len(code)):
        depth += (code[at] in "([{") - (code[at] in ")]}")
        if depth == 0:
            return at
    return len(code)


def ends_operand(code, at, sign):
    """Whether no operand of && or || goes over this place."""
    one, two, before = code[at], code[at:at + 2], code[at - 1]
    return (one in ",;?" or (one == ":" and two != "::" and before != ":") or
            (one == "=" and two != "==" and before not in "=!<>") or
            (sign == "&&" and "||" in (two, code[at - 1:at + 1])))


def left_operand(code, end, sign):
    at, depth = end, 0
    while at > 0:
        one = code[at - 1]
        depth += (one in ")]}") - (one in "([{")
        if depth < 0 or (depth == 0 and (ends_operand(code, at - 1, sign) or one == "{" or
                                         code[at - 7:at] in ("return ", "return\n"))):
            break
        at -= 1
    return at + len(code[at:]) - len(code[at:].lstrip())


def right_operand(code, begin, sign):
    at, depth = begin, 0
    while at < len(code):
        depth += (code[at] in "([{") - (code[at] in ")]}")
        if depth < 0 or (depth == 0 and (ends_operand(code, at, sign) or code[at:at + 2] == sign)):
            break
        at += 1
    return at - len(code[begin:at]) + len(code[begin:at].rstrip())


def value_before(code, end):
    """Where the value begins whose member is called at `end`; nothing when it is more than names and brackets."""
    at = end
    while at > 0 and (re.match(r"[\w.:]", code[at - 1]) or code[at - 1] in ")]"):
        if code[at - 1] in ")]":
            depth = 0
            while at > 0:
                depth += (code[at - 1] in ")]") - (code[at - 1] in "([")
                at -= 1
                if depth == 0:
                    break
        else:
            at -= 1
    return None if at == end or code[at - 2:at] == "->" else at


def raw_changes(text):
    """(begin, end, replacement as a person would write it, pieces) of each; NUMBER stands for its number."""
    code = code_only(text)
    for found in OPERATOR.finditer(code):
        other, name = OPERATORS[found.group()]
        yield *found.span(), other, [(found.end(), found.end(), f" ::mutants::{name}{{NUMBER}} {found.group()}", 5)]
    for found in LOGIC.finditer(code):
        sign = found.group()
        left, right = left_operand(code, found.start(), sign), right_operand(code, found.end(), sign)
        yield *found.span(), "||" if sign == "&&" else "&&", [
            (left, left, f"({ON} != (({ON} != bool(", 2 - (right - left) / len(code)),
            (*found.span(), f")) {sign} ({ON} != bool(", 5),
            (right, right, "))))", (right - left) / len(code))]
    for found in NUMBER.finditer(code):
        more = str(int(found.group(1).replace("'", "")) + 1) + (found.group(2) or "")
        yield *found.span(), more, [(*found.span(), f"({ON} ? {more} : {found.group()})", 5)]
    for found in LITERAL.finditer(code):
        yield *found.span(), "false" if found.group() == "true" else "true", [
            (*found.span(), f"({ON} != {found.group()})", 5)]
    for found in JUMP.finditer(code):
        other = "break" if found.group(1) == "continue" else "continue"
        yield *found.span(1), other, [
            (found.start(), found.start(), f"{{ if ({ON}) {{ {other}; }} ", 5),
            (found.end(), found.end(), " }", 0)]
    for found in CALL.finditer(code):
        other = found.group()[:-len(found.group(1))] + CALLS[found.group(1)]
        yield *found.span(), other, [(*found.span(), f"PACELET_CALL(NUMBER, {found.group()}, {other})", 5)]
    for found in MEMBER.finditer(code):
        other, function = MEMBERS[found.group(1)]
        begin = value_before(code, found.start())
        if begin is not None:
            yield *found.span(1), other, [
                (begin, begin, f"::mutants::{function}(NUMBER, ", 2 - (found.end() - begin) / len(code)),
                (*found.span(), "" if other in ("front", "back") else ", ", 5)]
    for found in CONDITION.finditer(code):
        begin, end = found.end(), closing(code, found.end() - 1)
        inner = code[begin:end]
        if ";" not in inner and not re.search(r"[^=!<>]=[^=]", inner):
            yield begin, end, "!(" + text[begin:end] + ")", [
                (begin, begin, f"{ON} != bool(", 2 - (end - begin + 1) / len(code)),
                (end, end, ")", (end - begin + 1) / len(code))]
    for found in STATEMENT.finditer(code):
        if not re.search(r"\breserve\($", code[found.start(2):code.index("(", found.start(2)) + 1]):
            yield *found.span(2), ";", [(found.start(2), found.start(2), f"if (!{ON}) ", 0.5)]


def changes_of(file, text):
    """All changes of a file; their numbers are the same as long as the file is."""
    starts = [0] + [found.end() for found in re.finditer("\n", text)]
    first = zlib.crc32(file.encode()) % 200_000 * 10_000
    lines = text.split("\n")
    found = []
    for begin, end, replacement, pieces in sorted(raw_changes(text), key=lambda raw: raw[:3]):
        line = next(at for at in range(len(starts) - 1, -1, -1) if starts[at] <= begin)
        if NO_CODE.match(lines[line]):
            continue
        number = first + len(found)
        becomes = (text[starts[line]:begin] + replacement + text[end:]).split("\n")[0]
        found.append(Change(number, file, line + 1, lines[line].strip(), becomes.strip(),
                            [(*piece[:2], piece[2].replace("NUMBER", str(number)), piece[3]) for piece in pieces]))
    return found


def constants(text):
    """The pieces that make of each constant of the compiler one of the program, by line."""
    code = code_only(text)
    pieces = {}
    for found in CONSTANT.finditer(code):
        next_sign = re.search(r"[(={;]", code[found.end():])
        is_function = next_sign is not None and next_sign.group() == "("
        line = code.count("\n", 0, found.start()) + 1
        pieces[line] = (*found.span(), "inline" if is_function else "const", 5)
    return pieces


def asleep(text, pieces):
    """The text with all the pieces in it; its lines are where they were."""
    result, at = [], 0
    for begin, end, new, _ in sorted(pieces, key=lambda piece: (piece[0], piece[3])):
        result += [text[at:begin], new]
        at = max(end, at)
    return "".join(result) + text[at:]
