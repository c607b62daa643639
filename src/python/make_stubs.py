"""Writes the types of the module for editors and checkers.

    make_stubs.py PACKAGE-FOLDER TEMPLATE OUTPUT

The template holds what is written by hand; what comes from the table of properties takes the place of lines of the
form "#@ names", "#@ codes", "#@ kinds" and, within a class, "#@ members KIND".
"""
import pathlib
import sys

sys.path.insert(0, sys.argv[1])
import genvara  # noqa: E402  (the path comes first)

TYPES = {"number": "float", "integer": "int", "boolean": "bool", "text": "str", "date": "datetime.datetime"}


def members(kind):
    for row in genvara.describe(kind):
        name = row["attribute"]
        if row["type"] == "code":
            yield f"    {name}: _Code[{row['enum']}]"
            yield f'    """{row["doc"]}"""'
            continue
        type_ = TYPES[row["type"]]
        yield f"    @property\n    def {name}(self) -> {type_}:"
        yield f'        """{row["doc"]}"""'
        yield f"    @{name}.setter\n    def {name}(self, value: {type_}) -> None: ..."


def names():
    yield "__all__ = [" + ", ".join(f'"{name}"' for name in genvara.__all__) + "]"


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
            yield from {"names": names, "codes": codes, "kinds": kinds}[words[1]]()


text = pathlib.Path(sys.argv[2]).read_text(encoding="utf-8")
pathlib.Path(sys.argv[3]).write_text("\n".join(lines(text)) + "\n", encoding="utf-8")
