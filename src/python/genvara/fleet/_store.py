"""Rows of results in an SQLite file, or in memory."""

from __future__ import annotations

import csv
import html
import json
import os
import pathlib
import sqlite3
import tempfile
from collections.abc import Iterable, Iterator, Sequence
from typing import Any

Path = str | os.PathLike[str]
Row = Sequence[Any]


def _quoted(name: str) -> str:
    return '"' + name.replace('"', '""') + '"'


class Store:
    """The results of a study: a row each, and tallies of sets. What a piece came to is written in one transaction with the
    note that it is done, so that no piece is there twice or in part."""

    def __init__(self, file: Path | None, study: dict[str, Any], columns: Sequence[str], resume: bool) -> None:
        """`study` tells all that the results depend on: a file is only gone on with by the same study.

        Raises FileExistsError for a file that is there without `resume`, ValueError for one of another study.
        """
        self.file = None if file is None else os.path.abspath(file)
        self.columns = tuple(columns)
        is_there = self.file is not None and os.path.exists(self.file)
        if is_there and not resume:
            raise FileExistsError(f"{self.file} is there already; resume=True goes on with it")
        self._database = sqlite3.connect(self.file or ":memory:")
        # A study that ended in its first moment has left a file with nothing in it.
        if is_there and not self._is_empty():
            self._check(study)
        else:
            self._begin(study)

    def _is_empty(self) -> bool:
        try:
            return self.select("SELECT count(*) FROM sqlite_master") == [(0,)]
        except sqlite3.DatabaseError:
            return False

    def _begin(self, study: dict[str, Any]) -> None:
        with self._database:
            self._database.execute("BEGIN IMMEDIATE")
            for statement in self._tables():
                self._database.execute(statement)
            self._database.executemany("INSERT INTO study VALUES (?, ?)",
                                       [(name, json.dumps(value)) for name, value in study.items()])

    def _tables(self) -> Iterator[str]:
        yield "CREATE TABLE study (name TEXT PRIMARY KEY, value TEXT)"
        yield "CREATE TABLE pieces (number INTEGER PRIMARY KEY)"
        # Without types: a column keeps each value as it is.
        first, *others = map(_quoted, self.columns)
        yield f"CREATE TABLE rows ({first} INTEGER PRIMARY KEY, {', '.join(others)})"
        yield "CREATE TABLE tallies (piece INTEGER, model TEXT, alt_num TEXT, engine_num TEXT, does INTEGER, first INTEGER)"

    def _check(self, study: dict[str, Any]) -> None:
        try:
            known = {name: json.loads(value) for name, value in self._database.execute("SELECT name, value FROM study")}
        except (sqlite3.DatabaseError, ValueError) as failure:
            self.close()
            raise ValueError(f"{self.file} holds no results of a study: {failure}") from failure
        others = [name for name in study if known.get(name) != json.loads(json.dumps(study[name]))]
        if others:
            self.close()
            raise ValueError(f"{self.file} is of a study with another {', another '.join(others)}")

    def done(self) -> set[int]:
        """The pieces that are there."""
        return {number for number, in self._database.execute("SELECT number FROM pieces")}

    def add(self, piece: int, rows: Iterable[Row], tallies: Iterable[Row] = ()) -> None:
        """Takes a piece, whole or not at all."""
        marks = ", ".join("?" * len(self.columns))
        with self._database:
            self._database.execute("BEGIN IMMEDIATE")
            self._database.execute("INSERT INTO pieces VALUES (?)", (piece,))
            self._database.executemany(f"INSERT INTO rows VALUES ({marks})", rows)
            self._database.executemany("INSERT INTO tallies VALUES (?, ?, ?, ?, ?, ?)", ((piece, *tally) for tally in tallies))

    def rows(self, first: int = 0, count: int = -1) -> Iterator[tuple[Any, ...]]:
        """Rows by their numbers, from one on."""
        key = _quoted(self.columns[0])
        yield from self._database.execute(f"SELECT * FROM rows WHERE {key} >= ? ORDER BY {key} LIMIT ?", (first, count))

    def row(self, number: int) -> tuple[Any, ...] | None:
        return next(self.rows(number, 1), None)

    def count(self, where: str = "1", values: Row = ()) -> int:
        found: int = self._database.execute(f"SELECT count(*) FROM rows WHERE {where}", values).fetchone()[0]
        return found

    def select(self, query: str, values: Row = ()) -> list[tuple[Any, ...]]:
        return self._database.execute(query, values).fetchall()

    def close(self) -> None:
        self._database.close()


def _without_formula(value: Any) -> Any:
    text = value.strip() if isinstance(value, str) else ""
    if len(text) < 2 or text[0] not in "=+-@":
        return value
    try:
        float(text)
    except ValueError:
        return f"'{value}"
    return value


def _saved_mode(target: pathlib.Path) -> int:
    """Who may read a file once it was saved: as before, or of a new file what the user's mask leaves. To ask the system for the mask
    is to change it, under the feet of other threads."""
    if target.exists():
        return target.stat().st_mode & 0o777
    words = pathlib.Path("/proc/self/status").read_text(errors="replace").split()
    return 0o666 & ~int(words[words.index("Umask:") + 1], 8)


class Table:
    """Results as a table: a row each, in order. It reads the file of results where there is one."""

    def __init__(self, store: Store) -> None:
        self._store = store

    @property
    def columns(self) -> tuple[str, ...]:
        """Titles of the columns."""
        return self._store.columns

    @property
    def file(self) -> str | None:
        """The SQLite file of the results; None for those in memory."""
        return self._store.file

    def __len__(self) -> int:
        return self._store.count()

    def __getitem__(self, number: int) -> dict[str, Any]:
        count = len(self)
        found = self._store.row(number + count if number < 0 else number) if -count <= number < count else None
        if found is None:
            raise IndexError(f"there is no row {number} among {count}")
        return dict(zip(self.columns, found))

    def rows(self) -> Iterator[dict[str, Any]]:
        """The rows by the titles of the columns."""
        return (dict(zip(self.columns, row)) for row in self._store.rows())

    def __iter__(self) -> Iterator[dict[str, Any]]:
        return self.rows()

    def to_csv(self, file: Path) -> None:
        """Writes the table as CSV (UTF-8), whole or not at all. Numbers are written so that they read back as they are; a text that a
        spreadsheet would take for a formula, and might carry out, gets an apostrophe before it."""
        target = pathlib.Path(file).absolute()
        if self.file is not None and target.exists() and os.path.samefile(target, self.file):
            raise ValueError(f"{target} holds the results themselves")
        handle, temporary = tempfile.mkstemp(prefix=f".{target.name}.", dir=target.parent)
        try:
            with os.fdopen(handle, "w", newline="", encoding="utf-8") as output:
                writer = csv.writer(output)
                writer.writerow(self.columns)
                writer.writerows([_without_formula(value) for value in row] for row in self._store.rows())
                output.flush()
                os.fsync(output.fileno())
            os.chmod(temporary, _saved_mode(target))
            os.replace(temporary, target)
        except BaseException:
            os.unlink(temporary)
            raise

    def to_pandas(self) -> Any:
        """The table as a DataFrame, where pandas is installed."""
        import pandas  # type: ignore[import]

        return pandas.DataFrame(list(self._store.rows()), columns=list(self.columns))

    def close(self) -> None:
        """Lets go of the file of results."""
        self._store.close()

    def __repr__(self) -> str:
        return f"<genvara.fleet.{type(self).__name__} of {len(self)} rows>"

    def _repr_html_(self) -> str:
        shown = 20
        rows = [self.columns, *self._store.rows(0, shown)]
        cells = ["".join(f"<td>{'' if value is None else html.escape(str(value))}</td>" for value in row) for row in rows]
        more = f"<caption>{len(self)} rows, of which these are the first {shown}</caption>" if len(self) > shown else ""
        head = cells[0].replace("<td>", "<th>").replace("</td>", "</th>")
        return f"<table>{more}<tr>{head}</tr>" + "".join(f"<tr>{row}</tr>" for row in cells[1:]) + "</table>"
