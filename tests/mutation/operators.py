"""Small faults for C++ texts, found on the text alone: a compiler says afterwards which of them are none."""

import re
from dataclasses import dataclass

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>^[ \t]*\#(?:[^\n]*\\\n)*[^\n]*)
      | (?P<raw>R"(?P<mark>\w*)\(.*?\)(?P=mark)")
      | (?P<number>\b\d[\w'.]*)
      | (?P<text>"(?:\\.|[^"\\\n])*")
      | (?P<char>'(?:\\.|[^'\\\n])*')""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)

RELATIONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
LOGICAL = {"&&": "||", "||": "&&"}
OPENING, CLOSING = "([{", ")]}"

# What looks like a declaration, or must not be missing.
NO_STATEMENT = re.compile(
    r"(using|typedef|namespace|template|class|struct|enum|friend|static_assert|public|private|protected|explicit|"
    r"virtual|inline|constexpr|const|static|mutable|case|default|extern|else|do|try|auto)\b"
    r"|return\b[^;]|~|\[\["
    r"|(?!return|throw|delete)[\w:]+(<.*>)?[&*]* [\w\[\]]+(::|,| = |;|\(|\{|\[)")
PARAMETER = re.compile(r"(const )?[\w:]+(<.*>)?[&*]* \w+( = .*)?$")


@dataclass(frozen=True)
class Change:
    """One fault: text[start:end] becomes `new`."""
    operator: str
    start: int
    end: int
    new: str

    def applied_to(self, text):
        return text[:self.start] + self.new + text[self.end:]


def masked(text):
    """The text with comments, directives and the insides of its literals blanked, each character in its place."""
    def blank(match):
        whole = match.group()
        if match["comment"] or match["directive"]:
            return re.sub(r"[^\n]", " ", whole)
        if match["number"]:
            return whole
        return whole[0] + re.sub(r"[^\n]", " ", whole[1:-1]) + whole[-1]
    return TOKEN.sub(blank, text)


def end_of_bracket(code, start):
    """Where the bracket that opens at start is closed, or -1."""
    depth = 0
    for i in range(start, len(code)):
        depth += (code[i] in OPENING) - (code[i] in CLOSING)
        if depth == 0:
            return i
    return -1


def parts(code, start, end, separator):
    """(start, end) of what the separator parts at the outermost level of code[start:end]; white space is left out."""
    cuts, depth = [start], 0
    for i in range(start, end):
        template = code[i] == "<" and re.match(r"[\w:]<[\w:]", code[i - 1:i + 2])
        depth += (code[i] in OPENING or bool(template)) - (code[i] in CLOSING)
        depth -= code[i] == ">" and depth > 0 and code[i - 1] not in "- "
        if code[i] == separator and depth == 0:
            cuts.append(i + 1)
    ends = [cut - 1 for cut in cuts[1:]] + [end]
    found = []
    for a, b in zip(cuts, ends):
        piece = code[a:b]
        found.append((a + len(piece) - len(piece.lstrip()), b - len(piece) + len(piece.rstrip())))
    return found


def literals(text):
    for match in TOKEN.finditer(text):
        start, end, whole = match.start(), match.end(), match.group()
        if match["number"]:
            name = "literal" if re.fullmatch(r"\d+\.\d+", whole) else "off by one"
            yield Change(name, start, end, f"({whole} + 1)")
            if whole.strip("0."):
                yield Change(name, start, end, f"({whole} - 1)")
        elif match["text"]:
            yield Change("literal", end - 1, end - 1, "~")
        elif match["char"]:
            yield Change("literal", start, end, "'!'" if whole == "'~'" else "'~'")
        elif match["raw"]:
            for line in re.finditer(r"\n", whole):
                yield Change("literal", start + line.start(), start + line.start(), "~")
            yield Change("literal", end - len(match["mark"]) - 2, end - len(match["mark"]) - 2, "~")


def words(code):
    for match in re.finditer(r"(?<= )(<=|>=|==|!=|<|>|&&|\|\|)(?=\s)", code):
        sign = match.group()
        if sign in LOGICAL:
            yield Change("condition", match.start(), match.end(), LOGICAL[sign])
        else:
            yield Change("relation", match.start(), match.end(), RELATIONS[sign])
    for match in re.finditer(r"\b(true|false)\b", code):
        yield Change("literal", match.start(), match.end(), "false" if match.group() == "true" else "true")


def negation(start, end, text):
    return Change("condition", start, end, f"!({text[start:end]})")


def choice_start(code, end):
    """Where the condition in front of a question mark begins."""
    depth = 0
    for i in range(end - 1, -1, -1):
        depth += (code[i] in CLOSING) - (code[i] in OPENING)
        border = None if depth > 0 else re.compile(r"[,;?{}([]| [-+*/|&]?= | : |\breturn ").match(code, i)
        if border:
            return border.end() + len(code[border.end():end]) - len(code[border.end():end].lstrip())
    return end


def conditions(text, code):
    for match in re.finditer(r"\b(if|while|for) (\()", code):
        end = end_of_bracket(code, match.start(2))
        clauses = parts(code, match.end(2), end, ";")
        if match[1] == "for":
            clauses = clauses[1:2]
        start, end = clauses[-1] if clauses else (0, 0)
        if start < end and not re.match(r"(const |auto )|[\w:]+[&*]* \w+ = ", code[start:end]):
            yield negation(start, end, text)
    for match in re.finditer(r"\s\? ", code):
        start = choice_start(code, match.start())
        if start < match.start():
            yield negation(start, match.start(), text)
    for match in re.finditer(r"\breturn ([^;{}?]*?(?: (?:&&|\|\||[=!<>]=|<|>)\s|^!)[^;{}?]*);", code):
        yield negation(match.start(1), match.end(1), text)


def statements(code):
    for match in re.finditer(r"^[ \t]+(?=[\w:+*(-])", code, re.MULTILINE):
        start = match.end()
        before = code[:start].rstrip()[-1:]
        end = statement_end(code, start)
        if before in ";{}:)" and end and not NO_STATEMENT.match(code, start, end):
            yield Change("statement", start, end, ";")
    for match in re.finditer(r"(?<=\{ )[^{};]+;(?= \})", code):
        if not NO_STATEMENT.match(match.group()):
            yield Change("statement", match.start(), match.end(), ";")


def statement_end(code, start):
    """Behind the semicolon of the statement that begins at start; None where it is a block or a list."""
    i = start
    while i < len(code):
        if code[i] in OPENING:
            if code[i] == "{" and re.search(r"\)( const)?\s*$|\b(else|do|try)\s*$", code[start:i]) \
                    and not re.search(r"\[[^\]]*\]\s*(\([^()]*\))?\s*$", code[start:i]):
                return None
            i = end_of_bracket(code, i)
            if i < 0:
                return None
        elif code[i] in CLOSING:
            return None
        elif code[i] == ";":
            return i + 1
        i += 1
    return None


def arguments(text, code):
    for match in re.finditer(r"\b(\w+)(\()", code):
        end = end_of_bracket(code, match.start(2))
        if match[1] in ("if", "for", "while", "switch", "return", "min", "max") or end < 0:
            continue
        found = parts(code, match.end(2), end, ",")
        if any(a == b or PARAMETER.match(code, a, b) for a, b in found):
            continue
        for (a, b), (c, d) in zip(found, found[1:]):
            if text[a:b] != text[c:d]:
                yield Change("arguments", a, d, text[c:d] + text[b:c] + text[a:b])


def changes(text):
    """Every fault that this text can be given, in order, by the number of the line (0-based) on which it begins."""
    code = masked(text)
    found = {}
    for change in [*literals(text), *words(code), *conditions(text, code), *statements(code), *arguments(text, code)]:
        found.setdefault(text.count("\n", 0, change.start), []).append(change)
    return found
