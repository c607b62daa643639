"""The genset database."""

import sqlite3

from sizer.errors import ANYTHING, MISMATCH, Raised
from sizer.load import MotorTables
from sizer.texts import plain

MOTOR_COLUMNS = ("HP", "RunningKW", "RunningKVA", "SPF")


def number(row, column, source):
    """A field as a float; Null and text raise an error under the name of the member that asks."""
    if not isinstance(row[column], (int, float)):
        raise Raised(MISMATCH[0], source, MISMATCH[1])
    return float(row[column])


def whole(row, column, source):
    return round(number(row, column, source))


def text(row, column, source):
    if row[column] is None:
        raise Raised(MISMATCH[0], source, MISMATCH[1])
    return row[column] if isinstance(row[column], str) else plain(row[column])


class Database:
    """Reads the tables of one file."""

    def __init__(self, path):
        self.connection = sqlite3.connect(f"file:{path}?mode=ro", uri=True)
        self.connection.row_factory = sqlite3.Row
        self.motors = MotorTables([[float(row[name]) for name in MOTOR_COLUMNS]
                                   for row in self.rows("Select * from [Motor Power Conversions]")])
        self.version = self.rows("Select * from [Properties]")[-1]["Version"]

    def close(self):
        self.connection.close()

    def rows(self, query):
        return self.connection.execute(query).fetchall()

    def only_row(self, table, key):
        """The row that another refers to. A missing one is the database layer's own failure."""
        for row in self.rows(f"Select * from [{table}] where ID = {key}"):
            return row
        raise Raised(ANYTHING, ANYTHING, ANYTHING)

    def phases(self, connection_code):
        """1 or 3."""
        return self.only_row("Connections", connection_code)["Phases"]

    def candidates(self, site):
        """The sets for the site's frequency, connection and voltage; fuel 0 leaves the fuel free."""
        query = (f"Select * from [Gensets] where Frequency = {site.Freq} AND WindingConnection = {site.ConnectCode}"
                 f" AND VoltageLL = {site.Voltage}")
        return self.rows(query + (f" AND Fuel = {site.Fuel}" if site.Fuel != 0 else ""))
