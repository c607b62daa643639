"""The disk is full at any byte of any save: the old file stays whole, the failure is told, nothing is left behind.

    full_disk.py GENVARA-CLI SAVER SETTINGS-WRITER SOURCE-FOLDER

A limit on file sizes stands for the disk everywhere; where the system lets a user mount a file system of his own,
a small one in memory is filled up as well.
"""
import contextlib
import json
import os
import pathlib
import subprocess
import sys
import tempfile

import abuse

UNREADABLE = 3  # exit status: a file that cannot be written
RUN_FAILED = 4
LIMITS = 400 if abuse.LONG else 6  # on each save, besides those where something is most likely to go wrong
FULL_TEXTS = ("File too large", "No space left on device", "database or disk is full", "disk I/O error")
PAGE = 4096  # bytes that a file in memory grows by
FREE_PAGES = range(0, 120) if abuse.LONG else (0, 1, 3, 40)
SETTINGS = {"00000001\\software\\crowd": {"mine": {"integer": 7}}}
INSIDE = "GENVARA_ABUSE_INSIDE"  # set in the process that has its own mounts


class Save:
    """One way to write a file: the command, what stood there, and whether what stands there is still whole."""

    def __init__(self, name, command, old, file="target"):
        self.name, self.command, self.old, self.file = name, command, old, file
        self.new = None

    def whole(self, content):
        return content == self.old

    def arrived(self, content):
        return content == self.new

    def run(self, folder, **options):
        return abuse.Run(self.command(pathlib.Path(folder) / self.file), (0, UNREADABLE), **options)


class SettingsSave(Save):
    """The writer stores two values, one after the other; the disk may fill up between them."""

    def whole(self, content):
        values = json.loads(content)["00000001\\software\\crowd"]
        values.pop("w-1", None)
        return values == {"mine": {"integer": 7}}


def saves(program, saver, writer, source, work):
    """All the ways; `work` holds what they read."""
    database = pathlib.Path(work) / "sound.db"
    subprocess.run([program, "catalog", "build", source / "data/catalog", "-o", database], check=True,
                   capture_output=True, timeout=abuse.TIMEOUT)
    sample = source / "samples/hospital.prj"
    common = ["--db", database, "-o"]
    return [
        Save("project", lambda file: [saver, file, "2", "--once"], b"old project"),
        Save("report", lambda file: [program, "report", sample, "--now", "2026-01-02 03:04:05", *common, file],
             b"old report"),
        Save("spec export", lambda file: [program, "export-spec", sample, *common, file], b"[Mine]\r\nkey=1\r\n"),
        SettingsSave("settings", lambda file: [writer, file, "w", "1"], json.dumps(SETTINGS).encode()),
        Save("catalogue", lambda file: [program, "catalog", "build", source / "data/catalog", "-o", file],
             b"old catalogue")]


def attempt(save, folder, findings, where, must=None, **options):
    """Saves over the old file on a full disk, and looks at what became of it.

    `must` is the exit status that only a mistake could change, if it is known.
    """
    target = pathlib.Path(folder) / save.file
    done = save.run(folder, **options)
    content = target.read_bytes() if target.exists() else None
    if done.odd:
        findings.add(f"{where}: {done.odd}")
    elif must is not None and done.status != must:
        findings.add(f"{where}: status {done.status}, not {must}")
    if done.status == 0 and (content is None or not save.arrived(content)):
        findings.add(f"{where}: saved, it says, but the file holds {content[:80] if content else content!r}")
    if done.status != 0:
        if content is None or not (save.arrived(content) or save.whole(content)):
            findings.add(f"{where}: the old file is gone: {content[:80] if content else content!r}")
        if not done.tells_failure() or not any(text in done.errors() for text in FULL_TEXTS):
            findings.add(f"{where}: the failure is not told: {done.errors()[:300]!r}")
    left = abuse.leftovers(folder, save.file, save.file + ".lock", "filler")
    if left:
        findings.add(f"{where}: left behind: {left}")


def learn(save):
    """What the save writes where there is room."""
    with tempfile.TemporaryDirectory(dir=abuse.memory_folder()) as folder:
        (pathlib.Path(folder) / save.file).write_bytes(save.old)
        done = save.run(folder)
        save.new = (pathlib.Path(folder) / save.file).read_bytes()
        return done.odd or (f"status {done.status}: {done.errors()}" if done.status else None)


def limit_sizes(save, findings, dice):
    size = len(save.new)
    limits = {0, 1, PAGE, size // 2, size - 1, size, *(dice.randrange(size) for _ in range(LIMITS))}
    for limit in sorted(limits):
        with tempfile.TemporaryDirectory(dir=abuse.memory_folder()) as folder:
            (pathlib.Path(folder) / save.file).write_bytes(save.old)
            must = UNREADABLE if limit < size else 0
            attempt(save, folder, findings, f"{save.name}, files up to {limit} of {size} bytes", must, limit=limit)


@contextlib.contextmanager
def small_disk(options):
    """A file system of its own in memory."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["mount", "-t", "tmpfs", "-o", options, "none", folder], check=True, capture_output=True)
        try:
            yield pathlib.Path(folder)
        finally:
            subprocess.run(["umount", folder], check=True, capture_output=True)


def fill_disk(save, findings):
    for free in FREE_PAGES:
        with small_disk("size=8m") as folder:
            (folder / save.file).write_bytes(save.old)
            with open(folder / "filler", "wb") as filler:
                os.posix_fallocate(filler.fileno(), 0, (os.statvfs(folder).f_bavail - free) * PAGE)
            # Without a free page nothing can be written; with fewer than the file has, not all of it.
            must = UNREADABLE if free * PAGE < len(save.new) else None
            attempt(save, folder, findings, f"{save.name}, {free} pages free", must)
    # The folder, the old file, and no other.
    with small_disk("size=8m,nr_inodes=2") as folder:
        (folder / save.file).write_bytes(save.old)
        attempt(save, folder, findings, f"{save.name}, no file more", UNREADABLE)


def full_devices(everything, program, source, work, findings):
    """/dev/full takes nothing: as the target of a save, and as standard output."""
    for save in everything:
        if save.name in ("settings", "catalogue"):
            continue  # they refuse what is no ordinary file, as their own tests show
        done = abuse.Run(save.command("/dev/full"), (UNREADABLE,))
        if done.odd or not done.tells_failure():
            findings.add(f"{save.name} to /dev/full: {done.odd or done.errors()!r}")
    database, sample = pathlib.Path(work) / "sound.db", source / "samples/farm.prj"
    for command in (["size", sample], ["size", "--json", sample, sample], ["explain", sample], ["check", sample],
                    ["report", sample, "-o", "-"], ["export-spec", sample, "-o", "-"], ["catalog", "check", database],
                    ["--version"], ["--help"], ["size", "--help"]):
        takes_database = command[0] != "catalog" and not str(command[-1]).startswith("--")
        with open("/dev/full", "wb") as full:
            done = abuse.Run([program, *command, *(["--db", database] if takes_database else [])],
                             (UNREADABLE, RUN_FAILED), stdout=full)
        if done.odd or FULL_TEXTS[1] not in done.errors():
            findings.add(f"{command} > /dev/full: {done.odd or done.errors()!r}")


def try_all(program, saver, writer, source, findings=None):
    """Everything; returns what was found."""
    findings = abuse.Findings() if findings is None else findings
    dice = abuse.dice()
    with tempfile.TemporaryDirectory() as work:
        everything = saves(program, saver, writer, source, work)
        for save in everything:
            trouble = learn(save)
            if trouble:
                findings.add(f"{save.name} with room enough: {trouble}")
            elif os.environ.get(INSIDE):
                fill_disk(save, findings)
            else:
                limit_sizes(save, findings, dice)
        if not os.environ.get(INSIDE):
            full_devices(everything, program, source, work, findings)
    return findings


def again_with_own_mounts():
    """Runs this script where it may mount; None where the system does not allow that."""
    if os.environ.get(INSIDE):
        return None
    enter = ["unshare", "--user", "--map-root-user", "--mount"]
    probe = "mount -t tmpfs none \"$0\""
    with tempfile.TemporaryDirectory() as folder, contextlib.suppress(FileNotFoundError):
        if subprocess.run([*enter, "sh", "-c", probe, folder], capture_output=True).returncode == 0:
            return subprocess.run([*enter, sys.executable, "-B", *sys.argv], env=dict(os.environ, **{INSIDE: "1"}),
                                  check=False).returncode
    print("no file system of one's own here: only limits on file sizes were tried")
    return None


if __name__ == "__main__":
    paths = abuse.arguments("full_disk.py GENVARA-CLI SAVER SETTINGS-WRITER SOURCE-FOLDER")
    status = try_all(*paths).status()
    sys.exit(max(status, again_with_own_mounts() or 0))
