"""Damaged databases: `catalog check` and `size` answer each with findings or an error, and what ends or falsifies a
run is found by the check. `explain`, which reads its candidates into memory, fails where `size` does and nowhere else.

    odd_catalogues.py GENVARA-CLI DATABASE SAMPLES-FOLDER

Each table is emptied, dropped and cut to a row, each column dropped, each column's cells made Null, text and other
things of a wrong kind, all of them and one alone; the file itself is cut and its bytes flipped.
"""
import concurrent.futures
import json
import os
import pathlib
import shutil
import sqlite3
import sys
import tempfile

import abuse
import odd_projects

FOUND = 1
CHECK_STATUSES = (0, FOUND, 3)
SAMPLES = ("hospital.prj", "pumping-station.prj", "telecom-shelter.prj")

# Values of a wrong kind, as SQL writes them; those of the short form first.
WRONG_KINDS = {"null": "NULL", "text": "'abc'", "empty": "''", "blob": "x'00ff'"}
# Numbers that few programs expect. They may be fit for their column, and so change a result.
WRONG_NUMBERS = {"infinite": "9e999", "least": "-9223372036854775808", "huge": "1e300", "negative": "-1", "zero": "0"}
SHORT = ("null", "text")
# A genset may go without the figures of its frequency dip.
OPTIONAL = {"BaseFreqDipKW", "BaseFreqDip", "ExpC"}

CUTS = (0, 1, 15, 16, 99, 100, 1000, 4096, 5000, 8192, 100000)  # bytes of the file that are left
PAGE_OF_DEFINITIONS = 4096  # bytes at the beginning of the file
SANITIZED_PART = 80  # databases of the short form under the sanitizers, where a run takes a second
FLIPS = 1500 if abuse.LONG else 25


class Damage:
    """One damaged database: how it is made, and whether it may change a result that the check has no word for."""

    def __init__(self, name, statement=None, edit=None, may_change=True):
        self.name, self.statement, self.edit, self.may_change = name, statement, edit, may_change

    def make(self, sound, file):
        if self.edit:
            file.write_bytes(self.edit(sound.read_bytes()))
            return
        shutil.copyfile(sound, file)
        connection = sqlite3.connect(file, isolation_level=None)
        connection.execute("PRAGMA journal_mode = OFF")
        connection.execute("PRAGMA synchronous = OFF")
        connection.execute(self.statement)
        connection.close()


def tables_of(sound):
    """Tables with their columns, each with its declared type, and the numbers of the rows."""
    connection = sqlite3.connect(sound)
    names = [row[0] for row in connection.execute("Select name from sqlite_master where type = 'table'")]
    tables = {name: ([(row[1], row[2]) for row in connection.execute(f'PRAGMA table_info("{name}")')],
                     [row[0] for row in connection.execute(f'Select rowid from "{name}"')]) for name in names}
    connection.close()
    return tables


def damaged_columns(table, columns, rows, dice):
    for column, kind in columns:
        yield Damage(f"{table}.{column} dropped", f'Alter table "{table}" drop column "{column}"' if len(columns) > 1
                     else f'Alter table "{table}" rename column "{column}" to other')
        for name, value in {**WRONG_KINDS, **WRONG_NUMBERS}.items():
            every = Damage(f"{table}.{column} all {name}", f'Update "{table}" set "{column}" = {value}',
                           may_change=name in WRONG_NUMBERS or kind == "TEXT" or (name == "null" and column in OPTIONAL))
            one = Damage(f"{table}.{column} one {name}", f'{every.statement} where rowid = {dice.choice(rows)}',
                         may_change=every.may_change)
            yield from (every, one) if abuse.LONG else (every,) if name in SHORT else ()
        if not abuse.LONG:
            name, value = dice.choice(sorted({**WRONG_KINDS, **WRONG_NUMBERS}.items()))
            yield Damage(f"{table}.{column} one {name}",
                         f'Update "{table}" set "{column}" = {value} where rowid = {dice.choice(rows)}')


def damages(sound, dice):
    for table, (columns, rows) in tables_of(sound).items():
        yield Damage(f"{table} dropped", f'Drop table "{table}"')
        yield Damage(f"{table} emptied", f'Delete from "{table}"', may_change=False)
        yield Damage(f"{table} of one row", f'Delete from "{table}" where rowid <> {dice.choice(rows)}')
        yield from damaged_columns(table, columns, rows, dice)
    size = sound.stat().st_size
    for length in CUTS:
        yield Damage(f"cut to {length} bytes", edit=lambda content, length=length: content[:length])
    for _ in range(FLIPS):
        # Half of them where the file tells what it is and where the tables' own definitions lie.
        place, bits = dice.randrange(dice.choice((PAGE_OF_DEFINITIONS, size))), dice.randrange(1, 256)
        yield Damage(f"byte {place} turned by {bits:02x}", edit=lambda content, place=place, bits=bits:
                     content[:place] + bytes([content[place] ^ bits]) + content[place + 1:])


def failures_of(done):
    """What each project of an answer in JSON failed with, None for one that did not."""
    return [json.loads(line).get("Error") for line in done.out.splitlines()]


def unlike(program, database, samples, size):
    """Where `explain` parts from what `size` came to; None if nowhere."""
    explain = abuse.Run([program, "explain", "--json", "--db", database, *samples], odd_projects.COMMANDS["explain"][0])
    trouble = explain.odd or odd_projects.answers_of("explain", explain, samples)
    if trouble:
        return trouble
    same = explain.status == size.status and failures_of(explain) == failures_of(size) and explain.err == size.err
    return None if same else f"{explain.errors()[:300]!r} where size says {size.errors()[:300]!r}"


def wrong(program, database, samples, baseline, damage):
    """What goes wrong with a damaged database; None if nothing."""
    check = abuse.Run([program, "catalog", "check", database], CHECK_STATUSES)
    if check.odd:
        return f"catalog check {check.odd}"
    if check.status == FOUND and not check.out.strip():
        return "catalog check finds something without a word"
    if check.status > FOUND and not check.tells_failure():
        return f"catalog check fails without a word: {check.errors()!r}"
    size = abuse.Run([program, "size", "--json", "--db", database, *samples], odd_projects.COMMANDS["size"][0])
    trouble = size.odd or odd_projects.answers_of("size", size, samples)
    if trouble:
        return f"size: {trouble}"
    if size.status != 0 and not size.tells_failure():
        return f"size fails without a word: {size.errors()!r}"
    trouble = unlike(program, database, samples, size)
    if trouble:
        return f"explain: {trouble}"
    if check.status == 0 and size.status != 0:
        return f"catalog check finds nothing, size fails: {size.errors()[:300]}"
    if check.status == 0 and not damage.may_change and size.out != baseline:
        return "catalog check finds nothing, size comes to other results"
    return None


def try_catalogues(program, sound, samples_folder, dice, chosen=lambda _: True):
    """Tries all damages; returns what was found."""
    findings = abuse.Findings()
    samples = [pathlib.Path(samples_folder) / name for name in SAMPLES]
    baseline = abuse.Run([program, "size", "--json", "--db", sound, *samples], (0,))
    if baseline.odd:
        findings.add(f"the sound database: {baseline.odd}")
        return findings

    with tempfile.TemporaryDirectory(dir=abuse.memory_folder()) as folder:
        def trial(numbered):
            number, damage = numbered
            file = pathlib.Path(folder) / f"{number}.db"
            damage.make(sound, file)
            trouble = wrong(program, file, samples, baseline.out, damage)
            file.unlink()
            return trouble and f"{damage.name}: {trouble}"

        everything = [damage for damage in damages(pathlib.Path(sound), dice) if chosen(damage.name)]
        if abuse.SANITIZED and not abuse.LONG and len(everything) > SANITIZED_PART:
            everything = dice.sample(everything, SANITIZED_PART)
        with concurrent.futures.ThreadPoolExecutor(min(2, os.cpu_count() or 1)) as pool:
            for trouble in pool.map(trial, enumerate(everything)):
                if trouble:
                    findings.add(trouble)
        if os.listdir(folder):
            findings.add(f"left behind: {os.listdir(folder)}")
    print(f"{len(everything)} damaged databases")
    if not everything:
        findings.add("no database was tried")
    return findings


if __name__ == "__main__":
    paths = abuse.arguments("odd_catalogues.py GENVARA-CLI DATABASE SAMPLES-FOLDER")
    sys.exit(try_catalogues(*paths, abuse.dice()).status())
