"""Rich text as readable text: the plain lines, or the lines with their formatting shown."""
import re

TOKEN = re.compile(rb"\\([a-z]+)(-?\d+)? ?|\\'([0-9a-f]{2})|\\([\\{}])|([{}])|[\r\n]+|([^\\{}\r\n]+)")


def paragraphs(data):
    """Each paragraph as (state, runs): alignment and stops at its end, and runs of (format, text)."""
    depth, skip, after_unicode = 0, None, 0
    face, size, bold, italic = 0, 0, False, False
    align, stops, kind = "left", [], ""
    runs, result = [], []

    def add(text):
        key = (face, size, bold, italic)
        if runs and runs[-1][0] == key:
            runs[-1] = (key, runs[-1][1] + text)
        else:
            runs.append((key, text))

    for match in TOKEN.finditer(data):
        word, number, byte, escaped, brace, text = match.groups()
        if brace == b"{":
            depth += 1
        elif brace == b"}":
            depth -= 1
            if skip is not None and depth < skip:
                skip = None
        elif skip is not None:
            continue
        elif word == b"fonttbl":
            skip = depth
        elif word == b"par":
            result.append(((align, tuple(stops)), runs))
            runs = []
        elif word == b"tab":
            add("\t")
        elif word == b"line":
            add("\n")
        elif word in (b"qc", b"ql"):
            align = "centre" if word == b"qc" else "left"
        elif word == b"pard":
            align, stops = "left", []
        elif word in (b"tqr", b"tqdec"):
            kind = word[2:].decode()
        elif word == b"tx":
            stops.append(kind + number.decode())
            kind = ""
        elif word == b"f":
            face = int(number)
        elif word == b"fs":
            size = int(number)
        elif word == b"b":
            bold = number != b"0"
        elif word == b"i":
            italic = number != b"0"
        elif word == b"u":
            add(chr(int(number) & 0xFFFF))
            after_unicode = 1
        elif byte:
            add(bytes.fromhex(byte.decode()).decode("cp1252", "replace"))
        elif escaped:
            add(escaped.decode())
        elif text:
            shown = text.decode("ascii")
            if after_unicode:
                shown = shown[1:]
                after_unicode = 0
            add(shown)
    if runs:
        result.append(((align, tuple(stops)), runs))
    return result


def kept(data):
    """For each paragraph whether a page may not end behind it, and whether its lines stay together."""
    with_next = together = False
    result = []
    for match in TOKEN.finditer(data):
        word = match.group(1)
        if word == b"pard":
            with_next = together = False
        elif word == b"keepn":
            with_next = True
        elif word == b"keep":
            together = True
        elif word == b"par":
            result.append((with_next, together))
    return result


def lines(data):
    """The plain text, a line a paragraph."""
    return ["".join(text for _, text in runs) for _, runs in paragraphs(data)]


def shown(found):
    """Paragraphs with their formatting: stops and alignment where they change, font where it changes, *bold*,
    /italic/, tabs as arrows."""
    faces = {0: "Arial", 1: "Times"}
    output, last_state, last_font = [], None, None
    for state, runs in found:
        if state != last_state:
            output.append(f"[{state[0]}: {' '.join(state[1]) or 'default stops'}]")
            last_state = state
        line = ""
        for (face, size, bold, italic), text in runs:
            if (face, size) != last_font:
                line += f"<{faces[face]} {size // 2}>"
                last_font = (face, size)
            marks = ("*" if bold else "") + ("/" if italic else "")
            line += marks + text.replace("\t", "→").replace("\n", "↵") + marks[::-1]
        output.append(line)
    return "\n".join(output) + "\n"
