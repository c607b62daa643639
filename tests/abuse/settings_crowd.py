"""Eight programs write to one settings store at once: nothing is lost, and the file is never half a one.

    settings_crowd.py SETTINGS-WRITER
"""
import pathlib
import subprocess
import sys
import tempfile
import time

import abuse

WRITERS = 8
WRITES = 100 if abuse.LONG else 12  # of each, two values each
LONGEST = 540.0 if abuse.LONG else 80.0  # seconds for all of them
KEY = "00000001\\software\\crowd"


def counts(store):
    """The number of values that each writer says it has written."""
    values = store.get(KEY, {})
    return {name: value["integer"] for name, value in values.items() if "-" not in name}


class Watch:
    """Reads the file while it is written."""

    def __init__(self, file, findings):
        self.file = file
        self.findings = findings
        self.reads = 0
        self.last = {}

    def look(self):
        if not self.file.exists():
            return {}
        text = self.file.read_bytes()
        try:
            store = abuse.strict_json(text)
        except ValueError as cause:
            self.findings.add(f"read {self.reads}: {len(text)} bytes are no JSON: {cause}")
            return {}
        self.reads += 1
        now = counts(store)
        for name, count in self.last.items():
            if now.get(name, 0) < count:
                self.findings.add(f"read {self.reads}: {name} went back from {count} to {now.get(name, 0)}")
        self.last = now
        return store


def crowd(writer, writes, mode=()):
    """Lets the writers write, watches the file, and returns what was found."""
    findings = abuse.Findings()
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "settings.json"
        watch = Watch(file, findings)
        end = time.monotonic() + LONGEST
        writers = [subprocess.Popen([writer, file, f"w{i}", str(writes), *mode], stderr=subprocess.PIPE)
                   for i in range(WRITERS)]
        while any(process.poll() is None for process in writers) and time.monotonic() < end:
            watch.look()
            time.sleep(0.001)
        for number, process in enumerate(writers):
            if process.poll() is None:
                process.kill()
                findings.add(f"writer {number} hangs")
            complaint = process.communicate()[1]
            if process.returncode != 0 or complaint:
                findings.add(f"writer {number} ends with {process.returncode}: {complaint!r}")
        values = watch.look().get(KEY, {})
        for number in range(WRITERS):
            for i in range(1, writes + 1):
                if values.get(f"w{number}-{i}") != {"integer": i}:
                    findings.add(f"the value w{number}-{i} is lost")
            if values.get(f"w{number}") != {"integer": writes}:
                findings.add(f"the last count of w{number} is lost: {values.get(f'w{number}')}")
        if abuse.leftovers(folder, file, "settings.json.lock"):
            findings.add(f"left behind: {abuse.leftovers(folder, file, 'settings.json.lock')}")
    print(f"{WRITERS} writers, {2 * writes} writes each, {watch.reads} reads meanwhile")
    return findings


if __name__ == "__main__":
    sys.exit(crowd(*abuse.arguments("settings_crowd.py SETTINGS-WRITER"), WRITES).status())
