"""Writes the types of the module for editors and checkers.

    make_stubs.py PACKAGE-FOLDER TEMPLATE OUTPUT

The template holds what is written by hand; what comes from the table of properties takes the place of lines of the
form "#@ codes", "#@ kinds" and, within a class, "#@ members KIND".
"""
import pathlib
import sys

sys.path.insert(0, sys.argv[1])
import genvara  # noqa: E402  (the path comes first)

TYPES = {"number": ("float", "SupportsFloat"), "integer": ("int", "SupportsIndex"), "boolean": ("bool", "bool"),
         "text": ("str", "str"), "date": ("datetime.datetime", "datetime.datetime")}


def types_of(row):
    if row["type"] == "code":
        return row["enum"], f"{row['enum']} | int | str"
    return TYPES[row["type"]]


def members(kind):
    for row in genvara.describe(kind):
        read, written = types_of(row)
        yield f"    @property\n    def {row['attribute']}(self) -> {read}:"
        yield f'        """{row["doc"]}"""'
        yield f"    @{row['attribute']}.setter\n    def {row['attribute']}(self, value: {written}) -> None: ..."


def codes():
    for name in genvara.__all__:
        enum = getattr(genvara, name)
        if hasattr(enum, "__members__"):
            yield f"class {name}(enum.IntEnum):"
            yield from (f"    {member} = {code.value}" for member, code in enum.__members__.items())


def kinds():
    for name in genvara.__all__:
        kind = getattr(genvara, name)
        if isinstance(kind, type) and issubclass(kind, genvara.Load) and kind is not genvara.Load:
            yield f"class {name}(Load):"
            yield from members(name)


def lines(template):
    for line in template.splitlines():
        words = line.split()
        if words[:1] != ["#@"]:
            yield line
        elif words[1] == "members":
            yield from members(words[2])
        else:
            yield from {"codes": codes, "kinds": kinds}[words[1]]()


text = pathlib.Path(sys.argv[2]).read_text(encoding="utf-8")
pathlib.Path(sys.argv[3]).write_text("\n".join(lines(text)) + "\n", encoding="utf-8")
