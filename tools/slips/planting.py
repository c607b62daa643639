"""Finds the places of a C++ source at which a slip can be planted, and what each would be."""

import dataclasses
import re


@dataclasses.dataclass(frozen=True)
class Slip:
    """A small change of one line, or of two neighbours: the kind of mistake that a tired engineer makes."""

    file: str
    line: int  # from 1
    kind: str
    before: tuple[str, ...]
    after: tuple[str, ...]

    @property
    def key(self) -> str:
        """The same as long as the line reads the same, wherever it stands in its file."""
        return "\0".join((self.file, self.kind, *self.before, "", *self.after))


COMPARISONS = {" < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ", " == ": " != ", " != ": " == "}
SIGNS = {" + ": " - ", " - ": " + ", " * ": " / ", " / ": " * ", " += ": " -= ", " -= ": " += "}
LOGIC = {" && ": " || ", " || ": " && ", "true": "false", "false": "true"}
# Lines that only name things, or that hold no behaviour of their own.
NAMES_ONLY = re.compile(r"\s*(#|//|using |namespace |template|static_assert|friend |class |struct |enum |public:|private:|protected:|typedef )")
NUMBER = re.compile(r"(?<![\w.\"'])(\d[\d']*\.\d+(?:[eE][+-]?\d+)?|\d[\d']*(?:[eE][+-]?\d+)?)(?![\w.\"'])")
TEXT = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
STATEMENT = re.compile(r"\s+(?!return\b|throw\b|break\b|continue\b|case\b|default\b|const\b|auto\b|static\b|constexpr\b|else\b|delete\b|goto\b|\})"
                       r"[\w:\[\]()*&.>\-]+(\(.*\)|( [-+*/|&]?= ).*);\s*$")
MEMBER = re.compile(r"(\s*\{?\.\w+ = )(.+?)([,}].*)?$")
ROW = re.compile(r'(\s*\{+"?)([^",]+)("?,.*)$')
ARGUMENTS = re.compile(r"\b(\w+)\(([\w.]+(?:\(\))?), ([\w.]+(?:\(\))?)\)")


def masked(line: str) -> str:
    """The line with texts and comments blanked out, sign by sign."""
    line = TEXT.sub(lambda found: '"' + " " * len(found.group(1)) + '"', line)
    return re.sub(r"//.*", lambda found: " " * len(found.group(0)), line)


def changed_number(number: str) -> str:
    plain = number.replace("'", "")
    if "." in plain or "e" in plain.lower():
        value = float(plain)
        return repr(value * 1.01 if value else 1.0)
    return str(int(plain) + 1)


def changed_text(text: str) -> str | None:
    """The text with one letter changed; none for what is no text for people or files."""
    letters = [i for i, sign in enumerate(text) if sign.isalpha() and (i == 0 or text[i - 1] != "\\")]
    if not letters:
        return None
    at = letters[len(letters) // 2]
    return text[:at] + ("q" if text[at] != "q" else "k") + text[at + 1:]


def slips_of_line(line: str):
    """Pairs of a kind and the changed line."""
    code = masked(line)
    for kind, table in (("comparison", COMPARISONS), ("sign", SIGNS), ("logic", LOGIC)):
        for old, new in table.items():
            pattern = rf"\b{old}\b" if old.isalpha() else re.escape(old)
            for found in re.finditer(pattern, code):
                yield kind, line[:found.start()] + new + line[found.end():]
    for found in NUMBER.finditer(code):
        yield "constant", line[:found.start()] + changed_number(found.group(1)) + line[found.end():]
    for found in TEXT.finditer(line):
        text = changed_text(found.group(1)) if code[found.start()] == '"' else None
        if text is not None:
            yield "text", line[:found.start() + 1] + text + line[found.end() - 1:]
    for found in re.finditer(r"(?<=[( ])!(?=[\w(])", code):
        yield "logic", line[:found.start()] + line[found.end():]
    for found in ARGUMENTS.finditer(code):
        one, other = found.group(2), found.group(3)
        if one != other and not one[0].isdigit() and not other[0].isdigit():
            yield "exchange", line[:found.start(2)] + other + ", " + one + line[found.end(3):]


def slips_of_two(one: str, other: str):
    """Two neighbours that exchange what they hold: members of a record, or rows of a table."""
    for pattern in (MEMBER, ROW):
        first, second = pattern.match(one), pattern.match(other)
        if first and second and first.group(2) != second.group(2) and masked(one) == one == one.rstrip("{") and masked(other) == other:
            yield "exchange", tuple(
                f"{mine.group(1)}{yours.group(2)}{mine.group(3) or ''}" for mine, yours in ((first, second), (second, first)))
            return
    first, second = ROW.match(one), ROW.match(other)
    if first and second and '"' in first.group(1) and '"' in second.group(1) and first.group(2) != second.group(2):
        yield "exchange", tuple(
            f"{mine.group(1)}{yours.group(2)}{mine.group(3)}" for mine, yours in ((first, second), (second, first)))


def is_whole_statement(lines: list[str], i: int) -> bool:
    """Whether nothing of the line's statement stands on another, and nothing hangs on it."""
    before = masked(lines[i - 1]).rstrip() if i > 0 else ""
    return bool(STATEMENT.match(masked(lines[i]))) and before.endswith((";", "{", "}", ":", "/"))


def slips_of(file: str, text: str) -> list[Slip]:
    """All slips that can be planted in a source, in the order of its lines."""
    lines = text.split("\n")
    slips = []
    for i, line in enumerate(lines):
        if NAMES_ONLY.match(line):
            continue
        found = [(kind, (line,), (after,)) for kind, after in slips_of_line(line)]
        if is_whole_statement(lines, i):
            found.append(("dropped", (line,), ("",)))
        if i + 1 < len(lines):
            found += [(kind, (line, lines[i + 1]), after) for kind, after in slips_of_two(line, lines[i + 1])]
        slips += [Slip(file, i + 1, kind, before, after) for kind, before, after in found]
    return slips


def planted(text: str, slip: Slip) -> str:
    """The source with the slip in it."""
    lines = text.split("\n")
    at = slip.line - 1
    assert tuple(lines[at:at + len(slip.before)]) == slip.before
    lines[at:at + len(slip.before)] = slip.after
    return "\n".join(lines)
