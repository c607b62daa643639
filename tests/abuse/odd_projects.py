"""Damaged project files: `check`, `size --json` and `explain --json` answer for each, with a status and an output of the contract.

    odd_projects.py GENVARA-CLI DATABASE SAMPLES-FOLDER

Of every sample, as it is and as a JSON project, each byte is flipped, the file is cut at each length, and each line is
dropped and doubled; the short form tries a part of these. The program takes many files at once; a batch that goes wrong is tried again in
halves until the file is found.
"""
import functools
import pathlib
import subprocess
import sys
import tempfile

import abuse

FLIPS = (0xFF, 0x01, 0x04, 0x10, 0x20, 0x80) if abuse.LONG else (0xFF,)  # bits that are turned over
FLIPPED_BYTES = 60  # of each sample, in the short form
CUT_STEP = 1 if abuse.LONG else 37  # bytes
MOST_CUTS = 60  # of each sample, in the short form; a JSON project is long
MOST_LINES = 40  # of each sample, in the short form
BATCH = 250  # files of one run
COMMANDS = {"check": ((0, 1, 3), ["check"]), "size": ((0, 3, 4), ["size", "--json", "--jobs", "2"]),
            "explain": ((0, 3, 4), ["explain", "--json", "--jobs", "2"])}
KEYS = {"size": {"File", "Project", "PowerSystem", "LoadProfile", "Designer", "ChosenSets", "RejectedSets"},
        "explain": {"File", "Candidates", "Recommended", "Undersized", "BelowMinLoading", "Sets"}}


def damages(text, dice):
    """Names and contents of the damaged forms of a file."""
    positions = range(len(text)) if abuse.LONG else sorted(dice.sample(range(len(text)), FLIPPED_BYTES))
    for position in positions:
        for bits in FLIPS:
            yield f"flip-{position}-{bits:02x}", text[:position] + bytes([text[position] ^ bits]) + text[position + 1:]
    for length in range(0, len(text), CUT_STEP if abuse.LONG else max(CUT_STEP, len(text) // MOST_CUTS)):
        yield f"cut-{length}", text[:length]
    lines = text.splitlines(keepends=True)
    few = abuse.LONG or len(lines) <= MOST_LINES
    for number in range(len(lines)) if few else sorted(dice.sample(range(len(lines)), MOST_LINES)):
        yield f"drop-{number + 1}", b"".join(lines[:number] + lines[number + 1:])
        yield f"double-{number + 1}", b"".join(lines[:number + 1] + lines[number:])


def answers_of(command, done, files):
    """What is wrong with the output of a command that answers in JSON on a line for each file; None if nothing."""
    lines = done.out.split(b"\n")
    if lines.pop() != b"" or len(lines) != len(files):
        return f"{len(lines)} lines for {len(files)} files"
    failures = 0
    for line, file in zip(lines, files):
        try:
            answer = abuse.strict_json(line)
        except ValueError as cause:
            return f"{file.name} is answered by no JSON: {cause}"
        if answer.get("File") != str(file):
            return f"{file.name} is answered for {answer.get('File')}"
        if set(answer) == {"File", "Error"}:
            failures += 1
            if set(answer["Error"]) != {"Number", "Source", "Description"} or not answer["Error"]["Description"]:
                return f"{file.name} fails without a word: {answer}"
        elif set(answer) != KEYS[command]:
            return f"{file.name} is answered with {sorted(answer)}"
    return None if (failures > 0) == (done.status > 0) else f"status {done.status} with {failures} failures"


def answers_of_check(done, files):
    """What is wrong with the output of `check`, in which each file is named; None if nothing."""
    told = (done.out + done.err).decode("utf-8", "replace")
    for file in files:
        if f"{file}: " not in told and f"{file}:" not in told:
            return f"{file.name} is not answered for"
    gaps = done.out.count(b"\n") > done.out.count(b": read without a gap\n")
    if done.status == 0 and (gaps or done.err):
        return "status 0 with findings"
    return None if done.status != 1 or gaps else "status 1 without a finding"


def wrong(program, database, command, files):
    """What goes wrong with a batch; None if nothing."""
    allowed, words = COMMANDS[command]
    done = abuse.Run([program, *words, "--db", database, *files], allowed)
    return done.odd or (answers_of(command, done, files) if command in KEYS else answers_of_check(done, files))


def search(trial, files, findings):
    """Tries a batch, and its halves if it goes wrong, until each file that goes wrong is known."""
    trouble = trial(files)
    if trouble is None:
        return 0
    if len(files) == 1:
        findings.add(f"{files[0].name}: {trouble}\n{files[0].read_bytes()!r}")
        return 1
    half = len(files) // 2
    if search(trial, files[:half], findings) + search(trial, files[half:], findings) == 0:
        findings.add(f"only together, {files[0].name} to {files[-1].name}: {trouble}")
    return 1


def forms_of(program, database, sample):
    """Ending and content of a sample in both formats of a project."""
    yield sample.suffix, sample.read_bytes()
    with tempfile.TemporaryDirectory(dir=abuse.memory_folder()) as folder:
        twin = pathlib.Path(folder) / f"{sample.stem}.json"
        subprocess.run([program, "convert", sample, "-o", twin, "--db", database], check=True)
        yield twin.suffix, twin.read_bytes()


def try_samples(program, database, samples, dice, kinds=lambda _: True):
    """Tries all damages of all samples; returns what was found."""
    findings = abuse.Findings()
    tried = 0
    forms = [(sample.stem, *form) for sample in sorted(pathlib.Path(samples).glob("*.prj"))
             for form in forms_of(program, database, sample)]
    for stem, ending, sound in forms:
        with tempfile.TemporaryDirectory(dir=abuse.memory_folder()) as folder:
            files = []
            for name, content in damages(sound, dice):
                if kinds(name):
                    files.append(pathlib.Path(folder) / f"{stem}-{name}{ending}")
                    files[-1].write_bytes(content)
            for command in COMMANDS:
                trial = functools.partial(wrong, program, database, command)
                for start in range(0, len(files), BATCH):
                    search(trial, files[start:start + BATCH], findings)
            tried += len(files)
    print(f"{tried} damaged projects")
    if tried == 0:
        findings.add("no project was tried")
    return findings


if __name__ == "__main__":
    paths = abuse.arguments("odd_projects.py GENVARA-CLI DATABASE SAMPLES-FOLDER")
    sys.exit(try_samples(*paths, abuse.dice()).status())
