"""The desktop program is killed at any moment while somebody types: what was on screen is there at the next start.

    kill_editor.py EDITOR
"""
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

import abuse

# The sanitizers slow the program down; they look for other faults than late ones.
KILLS = 1000 if abuse.LONG else 40 if abuse.SANITIZED else 200
AT_ONCE = 4          # programs that share the state folder
LONGEST_LIFE = 10.0 if abuse.SANITIZED else 4.0  # seconds from the first edit to the kill
MOST_LOST = 6.0 if abuse.SANITIZED else 2.0      # seconds of work that a kill may cost
FIRST_EDIT = 120.0   # seconds after which a program that has not begun counts as hanging
NUMBER = re.compile(r"Generation (\d{8})")


class Editor:
    """A program that edits its own copy of a project and tells each edit."""

    def __init__(self, program, state, project, environment=None):
        self.project = project
        self.told = []  # (moment, number)
        self.process = subprocess.Popen([program, state, project], stdout=subprocess.PIPE, text=True,
                                        env={**offscreen(), **(environment or {})})
        self.begun = threading.Event()
        self.reader = threading.Thread(target=self.read)
        self.reader.start()

    def read(self):
        for line in self.process.stdout:
            if line.endswith("\n"):
                self.told.append((time.monotonic(), int(line)))
                self.begun.set()
        self.begun.set()

    def kill(self):
        """Ends it, and returns the least number that has to be found: what was told so long before."""
        moment = time.monotonic()
        os.kill(self.process.pid, signal.SIGKILL)
        self.process.wait()
        self.reader.join()
        return max((number for when, number in self.told if when <= moment - MOST_LOST), default=0)

    def last(self):
        return self.told[-1][1] if self.told else 0


def offscreen():
    return {**os.environ, "QT_QPA_PLATFORM": "offscreen"}


def lost(program, state):
    """What the next start finds: the number of the last edit, by the file of the project."""
    lines = subprocess.run([program, state, "-", "--lost"], check=True, capture_output=True, text=True, timeout=FIRST_EDIT,
                           env=offscreen()).stdout.splitlines()
    found = {}
    for line in lines:
        name, file, fault = line.split("\t")
        number = NUMBER.fullmatch(name)
        found[file] = (int(number.group(1)) if number else None, name, fault)
    return found


def hunt(program, kills, dice):
    findings = abuse.Findings()
    worst = 0
    with tempfile.TemporaryDirectory() as work:
        work = pathlib.Path(work)
        sample = pathlib.Path(__file__).resolve().parents[2] / "samples" / "farm.prj"
        original = sample.read_bytes()
        for first in range(0, kills, AT_ONCE):
            editors = []
            for place in range(min(AT_ONCE, kills - first)):
                project = work / f"project-{place}.prj"
                shutil.copyfile(sample, project)
                editors.append(Editor(program, work / "state", project))
            for editor in editors:
                if not editor.begun.wait(FIRST_EDIT) or not editor.told:
                    findings.add(f"kill {first}: the program did not begin")
            least = {}
            for editor in editors:
                time.sleep(dice.uniform(0, LONGEST_LIFE / AT_ONCE))
                least[str(editor.project)] = (editor.kill(), editor)
            found = lost(program, work / "state")
            for file, (number, editor) in least.items():
                if pathlib.Path(file).read_bytes() != original:
                    findings.add(f"kill {first}: the file {file} was written without a save")
                if file not in found:
                    if number > 0:
                        findings.add(f"kill {first}: edit {number} was on screen for {MOST_LOST} s, and nothing is kept")
                    continue
                kept, name, fault = found[file]
                if fault:
                    findings.add(f"kill {first}: what is kept cannot be read: {fault}")
                elif kept is None and (number > 0 or name.startswith("Generation")):
                    findings.add(f"kill {first}: {name!r} is kept, and edit {number} was on screen for {MOST_LOST} s")
                elif kept is not None and not number <= kept <= editor.last() + 1:
                    findings.add(f"kill {first}: {name} is kept, and edit {number} was on screen for {MOST_LOST} s")
                elif kept is not None:
                    worst = max(worst, editor.last() - kept)
            for left in (work / "state" / "recovery").glob("*"):
                findings.add(f"kill {first}: {left.name} was left behind")
    print(f"{kills} kills, at most {worst} edits lost")
    return findings


if __name__ == "__main__":
    sys.exit(hunt(*abuse.arguments("kill_editor.py EDITOR"), KILLS, abuse.dice()).status())
