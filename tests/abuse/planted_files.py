"""Saves in a folder where somebody else planted links, pipes and folders under the names that a save needs: nothing outside is
touched, and nobody may read or run more than before.

    planted_files.py GENVARA-CLI SAVER SETTINGS-WRITER SOURCE-FOLDER
"""
import os
import pathlib
import stat
import sys
import tempfile

import abuse
import full_disk

VICTIM = b"of somebody else"
MODES = {0o600: 0o600, 0o640: 0o640, 0o6751: 0o751}  # a saved file is ours: whom it ran as before must not pass on to us


def prefix_of(name):
    """What temporary files of a target begin with: the 32-bit FNV-1a hash of its name."""
    known = 2166136261
    for byte in name.encode():
        known = (known ^ byte) * 16777619 % 2**32
    return f".genvara-{known:08x}-"


def plant(folder, outside, name):
    """Plants what could mislead a save of `name`; returns the names."""
    victim, missing = outside / "victim", outside / "missing"
    victim.write_bytes(VICTIM)
    names = []
    for prefix in (prefix_of(name), ".genvara-", f"{name}."):
        for ending, make in (("AAAAAA", lambda place: place.symlink_to(victim)),
                             ("BBBBBB", lambda place: place.symlink_to(missing)),
                             ("CCCCCC", lambda place: place.symlink_to(outside)),
                             ("DDDDDD", os.mkfifo), ("EEEEEE", pathlib.Path.mkdir)):
            make(folder / (prefix + ending))
            names.append(prefix + ending)
    return names


def look(findings, where, outside, *allowed):
    """Whether what lies outside is as it was."""
    if (outside / "victim").read_bytes() != VICTIM:
        findings.add(f"{where}: the victim's file was written")
    strangers = abuse.leftovers(outside, "victim", *allowed)
    if strangers:
        findings.add(f"{where}: made outside: {strangers}")


def save_beside_plants(save, folder, outside, findings):
    target = folder / save.file
    planted = plant(folder, outside, save.file)
    for before, after in MODES.items():
        where = f"{save.name}, over a file of mode {before:o}"
        target.write_bytes(save.old)
        target.chmod(before)
        done = save.run(folder)
        if done.odd or done.status != 0:
            findings.add(f"{where}: {done.odd or done.errors()}")
        mode = stat.S_IMODE(target.lstat().st_mode)
        if mode != after:
            findings.add(f"{where}: mode {mode:o} afterwards")
        if target.read_bytes() == save.old:
            findings.add(f"{where}: nothing was saved")
        look(findings, where, outside)
    left = abuse.leftovers(folder, save.file, save.file + ".lock", *planted)
    if left:
        findings.add(f"{save.name}: left behind: {left}")


def save_through_a_link(save, folder, outside, findings):
    """A user's own link is followed: it stays, and the file that it leads to is replaced."""
    where = f"{save.name}, through a link"
    real, target = outside / "real", folder / save.file
    real.write_bytes(save.old)
    target.symlink_to(real)
    done = save.run(folder)
    if done.odd or done.status != 0:
        findings.add(f"{where}: {done.odd or done.errors()}")
    if not target.is_symlink() or real.read_bytes() == save.old:
        findings.add(f"{where}: the link was replaced, or nothing was saved")
    left = abuse.leftovers(outside, "real", "victim")
    if left:
        findings.add(f"{where}: left behind: {left}")


def save_under_a_planted_lock(save, folder, outside, findings):
    """A lock that leads elsewhere is not taken: the save fails in words rather than make a file there."""
    target = folder / save.file
    target.write_bytes(save.old)
    (folder / f"{save.file}.lock").symlink_to(outside / "missing")
    done = save.run(folder)
    if done.odd or done.status == 0 or not done.tells_failure():
        findings.add(f"{save.name}, under a planted lock: {done.odd or 'no failure told'}")
    look(findings, f"{save.name}, under a planted lock", outside)


def try_all(program, saver, writer, source):
    findings = abuse.Findings()
    with tempfile.TemporaryDirectory() as work:
        everything = full_disk.saves(program, saver, writer, source, work)
        attacks = [(save, attack) for save in everything for attack in (save_beside_plants, save_through_a_link)]
        attacks += [(save, save_under_a_planted_lock) for save in everything if save.name == "settings"]
        for save, attack in attacks:
            with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryDirectory() as outside:
                (pathlib.Path(outside) / "victim").write_bytes(VICTIM)
                attack(save, pathlib.Path(folder), pathlib.Path(outside), findings)
    print(f"{len(attacks)} attacks on {len(everything)} ways to save")
    return findings


if __name__ == "__main__":
    sys.exit(try_all(*abuse.arguments("planted_files.py GENVARA-CLI SAVER SETTINGS-WRITER SOURCE-FOLDER")).status())
