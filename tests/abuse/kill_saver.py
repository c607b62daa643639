"""A program that saves is killed at any moment: the file is the old project or the new one, and whole.

    kill_saver.py SAVER
"""
import os
import pathlib
import re
import select
import signal
import subprocess
import sys
import tempfile
import time

import abuse

KILLS = 10_000 if abuse.LONG else 60
LONGEST_LIFE = 0.08  # seconds from the first save to the kill: several saves, even on a slow disk
FIRST_SAVE = 60.0    # seconds after which a saver that has not saved counts as hanging
STAMP = re.compile(rb"Generation (\d{8})")


def model_text(saver, folder, generation):
    """What a file of a generation holds, but for its number: every second generation has the same."""
    file = pathlib.Path(folder) / "model.prj"
    subprocess.run([saver, file, str(generation), "--once"], check=True, capture_output=True, timeout=FIRST_SAVE)
    text = file.read_bytes()
    assert STAMP.search(text), text[:200]
    return text


def expected(models, generation):
    return STAMP.sub(b"Generation %08d" % generation, models[generation % 2])


def last_told(saver, wait):
    """Lets a saver live for a while behind its first save, kills it, and returns the last number it told."""
    first, _, _ = select.select([saver.stdout], [], [], FIRST_SAVE)
    if first:
        time.sleep(wait)
    os.kill(saver.pid, signal.SIGKILL)
    told = saver.communicate()[0].split(b"\n")[:-1]  # behind the last line end stands nothing
    return int(told[-1]) if told else None


def hunt(saver, kills, dice, mode=()):
    """Kills savers, each of which goes on where the last one ended, and returns what was found."""
    findings = abuse.Findings()
    most_left = 0
    with tempfile.TemporaryDirectory() as work, tempfile.TemporaryDirectory() as other:
        models = [model_text(saver, other, generation) for generation in (0, 1)]
        file = pathlib.Path(work) / "project.prj"
        generation = 1
        for kill in range(kills):
            told = last_told(subprocess.Popen([saver, file, str(generation), *mode], stdout=subprocess.PIPE),
                             dice.uniform(0, LONGEST_LIFE))
            if told is None:
                findings.add(f"kill {kill}: the saver did not save")
                break
            # What was told is there; the next one may be.
            if file.read_bytes() not in (expected(models, told), expected(models, told + 1)):
                findings.add(f"kill {kill}: behind generation {told} the file holds {file.stat().st_size} bytes, "
                             "neither the old project nor the new one")
            # The saves of this one deleted what earlier ones left.
            left = abuse.leftovers(work, file)
            most_left = max(most_left, len(left))
            if len(left) > 1:
                findings.add(f"kill {kill}: temporary files pile up: {left}")
            generation = told + 1
        subprocess.run([saver, file, "7", "--once"], check=True, capture_output=True, timeout=FIRST_SAVE)
        if file.read_bytes() != expected(models, 7):
            findings.add("the save at the end did not arrive")
        if abuse.leftovers(work, file):
            findings.add(f"the save at the end left {abuse.leftovers(work, file)}")
    print(f"{kills} kills, {generation} saves, at most {most_left} temporary file left")
    return findings


if __name__ == "__main__":
    sys.exit(hunt(*abuse.arguments("kill_saver.py SAVER"), KILLS, abuse.dice()).status())
