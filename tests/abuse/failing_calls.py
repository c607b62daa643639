"""Every call of the system that a save or a reading makes fails once: no crash, no lost file, a sentence.

    failing_calls.py GENVARA-CLI SAVER SETTINGS-WRITER EDITOR SHIM SOURCE-FOLDER

SHIM is the library of FailingCalls.cpp, which is preloaded. Calls of files fail one after the other up to the last one that a
run makes; of the memory that it asks for, a sample.
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

import abuse
import full_disk
import kill_editor

FILE_CALLS = ("open", "read", "write", "fsync", "rename", "truncate", "map")
#: Requests for memory that fail, besides the first ones.
MEMORY = 2000 if abuse.LONG else 25
FIRST = 40 if abuse.LONG else 6
MOST_MEMORY = 30_000  # requests of one run; what lies behind its last one fails nothing
MOST_CALLS = 10_000 if abuse.LONG else 25  # of one kind; the catalogue alone makes more
STATUSES = (0, 1, full_disk.UNREADABLE, full_disk.RUN_FAILED)
EDITOR_TIME = 3.0  # seconds, in which the recovery is written more than once
EDITOR_CALLS = range(1, 40) if abuse.LONG else (1, 3)


def environment(shim, call, number, folder, mark, lasts=False):
    """What makes the shim fail one call, or all from one on."""
    names = {"LD_PRELOAD": str(shim), "GENVARA_FAIL_CALL": call, "GENVARA_FAIL_AT": str(number),
             "GENVARA_FAIL_BELOW": str(folder), "GENVARA_FAIL_MARK": str(mark)}
    return {**names, "GENVARA_FAIL_ON": "1"} if lasts else names


def numbers_of(call, dice):
    """Which calls of a kind to fail."""
    if call != "malloc":
        return range(1, MOST_CALLS + 1)
    return [*range(1, FIRST + 1), *sorted(dice.randrange(FIRST, MOST_MEMORY) for _ in range(MEMORY))]


def judge_save(save, folder, done, findings, where):
    """What became of the file, and what was told."""
    target = pathlib.Path(folder) / save.file
    content = target.read_bytes() if target.exists() else None
    if done.odd:
        findings.add(f"{where}: {done.odd}")
    if done.status == 0 and (content is None or not save.arrived(content)):
        findings.add(f"{where}: saved, it says, but the file holds {content[:80] if content else content!r}")
    if done.status != 0:
        if content is None or not (save.arrived(content) or save.whole(content)):
            findings.add(f"{where}: the old file is gone: {content[:80] if content else content!r}")
        if not done.tells_failure():
            findings.add(f"{where}: the failure is not told: {done.errors()[:300]!r}")
    left = abuse.leftovers(folder, save.file, save.file + ".lock")
    if left:
        findings.add(f"{where}: left behind: {left}")


def fail_saves(save, shim, findings, dice):
    trouble = full_disk.learn(save)
    if trouble:
        findings.add(f"{save.name} in peace: {trouble}")
        return
    for call in (*FILE_CALLS, "malloc"):
        for number in numbers_of(call, dice):
            with tempfile.TemporaryDirectory(dir=abuse.memory_folder()) as work:
                folder, mark = pathlib.Path(work) / "folder", pathlib.Path(work) / "mark"
                folder.mkdir()
                (folder / save.file).write_bytes(save.old)
                names = environment(shim, call, number, folder, mark)
                done = abuse.Run(save.command(folder / save.file), STATUSES, environment=names)
                judge_save(save, folder, done, findings, f"{save.name}, {call} {number}")
                if call != "malloc" and not mark.exists():
                    break  # the run makes no more of these


def fail_readings(program, shim, source, work, findings, dice):
    """Reads a project and a catalogue in whose folder calls fail: an answer as in peace, or a sentence."""
    folder = pathlib.Path(work) / "read"
    folder.mkdir()
    database = folder / "catalogue.db"
    subprocess.run([program, "catalog", "build", source / "data/catalog", "-o", database], check=True, capture_output=True)
    shutil.copy(source / "samples/hospital.prj", folder / "hospital.prj")
    subprocess.run([program, "convert", source / "samples/studio.prj", "-o", folder / "studio.json"], check=True, capture_output=True)
    for name, arguments in (("size", ["size", "--json", folder / "hospital.prj", "--db", database]),
                            ("size JSON", ["size", "--json", folder / "studio.json", "--db", database]),
                            ("check", ["check", folder / "hospital.prj", "--db", database]),
                            ("explain", ["explain", folder / "hospital.prj", "--db", database]),
                            ("catalog check", ["catalog", "check", database])):
        peace = abuse.Run([program, *arguments], STATUSES)
        for call in ("open", "read", "map", "malloc"):
            for number in numbers_of(call, dice):
                mark = pathlib.Path(work) / "mark"
                mark.unlink(missing_ok=True)
                done = abuse.Run([program, *arguments], STATUSES, environment=environment(shim, call, number, folder, mark))
                where = f"{name}, {call} {number}"
                if done.odd:
                    findings.add(f"{where}: {done.odd}")
                elif done.out != peace.out and not done.tells_failure() and b"error" not in done.out:
                    findings.add(f"{where}: another answer without a word: {done.out[:200]!r} {done.errors()[:200]!r}")
                if call != "malloc" and not mark.exists():
                    break


def fail_editor(editor, shim, source, findings):
    """The window goes on when its recovery cannot be written, and leaves the project's file alone."""
    for call in ("open", "write", "fsync", "rename"):
        for number, lasts in ((number, lasts) for number in EDITOR_CALLS for lasts in (False, True)):
            with tempfile.TemporaryDirectory(dir=abuse.memory_folder()) as work:
                state, project = pathlib.Path(work) / "state", pathlib.Path(work) / "mine.prj"
                state.mkdir()
                shutil.copy(source / "samples/farm.prj", project)
                names = environment(shim, call, number, state, pathlib.Path(work) / "mark", lasts)
                where = f"editor, {call} {number}{' and all behind it' if lasts else ''}"
                judge_editor(editor, state, project, names, findings, where)


def judge_editor(editor, state, project, names, findings, where):
    before = project.read_bytes()
    typing = kill_editor.Editor(editor, state, project, names)
    typing.begun.wait(kill_editor.FIRST_EDIT)
    first = typing.last()
    time.sleep(EDITOR_TIME)
    ended = typing.process.poll()
    last = typing.last()
    typing.kill()
    if ended is not None:
        findings.add(f"{where}: ends with {ended}")
    elif not 0 < first < last:
        findings.add(f"{where}: nothing more is edited")
    if project.read_bytes() != before:
        findings.add(f"{where}: the project's file is touched")


def try_all(program, saver, writer, editor, shim, source):
    findings, dice = abuse.Findings(), abuse.dice()
    with tempfile.TemporaryDirectory() as work:
        everything = full_disk.saves(program, saver, writer, source, work)
        json_project = full_disk.Save("JSON project", lambda file: [program, "convert", source / "samples/hospital.prj", "-o", file],
                                      b"old project", "target.json")
        for save in [*everything, json_project]:
            fail_saves(save, shim, findings, dice)
        fail_readings(program, shim, source, work, findings, dice)
    fail_editor(editor, shim, source, findings)
    return findings


if __name__ == "__main__":
    paths = abuse.arguments("failing_calls.py GENVARA-CLI SAVER SETTINGS-WRITER EDITOR SHIM SOURCE-FOLDER")
    sys.exit(try_all(*paths).status())
