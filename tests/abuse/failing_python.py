"""Every call of the system that the module for Python makes fails once: no crash, no lost file, an exception.

    failing_python.py GENVARA-CLI PACKAGE-FOLDER SHIM SOURCE-FOLDER

The tasks are those of python_user.py; SHIM is the library of FailingCalls.cpp.
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import abuse
import failing_calls
import full_disk

USER = pathlib.Path(__file__).with_name("python_user.py")
CALLS = ("open", "read", "write", "fsync", "truncate", "map", "malloc")
STATUSES = (0, full_disk.UNREADABLE)


class ProjectSave(full_disk.Save):
    """A project is saved with the time of the day."""

    def arrived(self, content):
        return self.undated(content) == self.undated(self.new)

    @staticmethod
    def undated(content):
        return re.sub(rb"\d{4}-\d\d-\d\d[ T]\d\d:\d\d:\d\d", b"a time", content)


def command(task, file, source):
    return ["/usr/bin/python3", "-B", USER, task, file, source]


def fail_saves(source, shim, findings, dice):
    for kind, task, target in ((ProjectSave, "save", "target.prj"), (ProjectSave, "save", "target.json"),
                               (full_disk.Save, "build", "target.db")):
        save = kind(f"Python, {task} {target}", lambda file, task=task: command(task, file, source), b"an old file", target)
        failing_calls.fail_saves(save, shim, findings, dice)


def faults(shim, folder, work, dice, calls):
    """The environments of all faults, each kind of call up to the last that a run makes."""
    mark = pathlib.Path(work) / "mark"
    for call in calls:
        numbers = list(failing_calls.numbers_of(call, dice))
        # An interpreter takes long to start.
        for number in numbers[::3] if call == "malloc" and not abuse.LONG else numbers:
            mark.unlink(missing_ok=True)
            yield f"{call} {number}", failing_calls.environment(shim, call, number, folder, mark)
            if call != "malloc" and not mark.exists():
                break


def fail_readings(program, source, shim, work, findings, dice):
    """An answer as in peace, or an exception."""
    folder = pathlib.Path(work) / "read"
    folder.mkdir()
    shutil.copy(source / "samples/hospital.prj", folder / "hospital.prj")
    subprocess.run([program, "convert", source / "samples/studio.prj", "-o", folder / "studio.json"], check=True, capture_output=True)
    subprocess.run([program, "catalog", "build", source / "data/catalog", "-o", folder / "own.db"], check=True, capture_output=True)
    for task, file in (("read", "studio.json"), ("size", "hospital.prj"), ("explain", "studio.json"), ("tables", "own.db")):
        peace = abuse.Run(command(task, folder / file, source), STATUSES)
        if peace.status != 0:
            findings.add(f"Python, {task} in peace: {peace.status} {peace.errors()[-500:]}")
            continue
        for where, names in faults(shim, folder, work, dice, ("open", "read", "map", "malloc")):
            done = abuse.Run(command(task, folder / file, source), STATUSES, environment=names)
            if done.odd:
                findings.add(f"Python, {task}, {where}: {done.odd}")
            elif done.status == 0 and done.out != peace.out:
                findings.add(f"Python, {task}, {where}: another answer without a word: {done.out[:200]!r}")
            elif done.status != 0 and not done.tells_failure():
                findings.add(f"Python, {task}, {where}: the failure is not told: {done.errors()[:300]!r}")


def fail_studies(source, shim, work, findings, dice):
    """What a failed study has written is gone on with, to the answer that it has in peace."""
    folder = pathlib.Path(work) / "study"
    folder.mkdir()
    file = folder / "chances.db"
    peace = abuse.Run(command("chances", folder / "peace.db", source), STATUSES)
    if peace.status != 0:
        findings.add(f"Python, chances in peace: {peace.status} {peace.errors()[-500:]}")
        return
    for where, names in faults(shim, folder, work, dice, CALLS):
        for left in folder.glob("chances.db*"):
            left.unlink()
        done = abuse.Run(command("chances", file, source), STATUSES, environment=names)
        if done.odd:
            findings.add(f"Python, chances, {where}: {done.odd}")
            continue
        if done.status != 0 and not done.tells_failure():
            findings.add(f"Python, chances, {where}: the failure is not told: {done.errors()[:300]!r}")
        again = abuse.Run(command("resume", file, source), STATUSES)
        if again.status != 0 or json.loads(again.out) != json.loads(peace.out):
            findings.add(f"Python, chances, {where}: cannot be gone on with: {again.out[:200]!r} {again.errors()[-300:]}")


def try_all(program, package, shim, source):
    os.environ["PYTHONPATH"] = str(package)
    os.environ["GENVARA_FAIL_LATER"] = "1"  # the task begins the faults
    findings, dice = abuse.Findings(), abuse.dice()
    with tempfile.TemporaryDirectory() as work:
        fail_saves(source, shim, findings, dice)
        fail_readings(program, source, shim, work, findings, dice)
        fail_studies(source, shim, work, findings, dice)
    return findings


if __name__ == "__main__":
    paths = abuse.arguments("failing_python.py GENVARA-CLI PACKAGE-FOLDER SHIM SOURCE-FOLDER")
    sys.exit(try_all(*paths).status())
