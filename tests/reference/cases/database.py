"""Writes the tables of a genset database."""

import sqlite3
from contextlib import closing

TABLES = {
    "Gensets": ("Frequency", "WindingConnection", "VoltageLL", "Fuel", "DerateCode", "AltModel", "GensetModel",
                "EngineModel", "Rating80C", "Rating105C", "Rating125C", "Rating130C", "Rating150C", "LRkVA",
                "StartingPower", "BaseFreqDipKW", "BaseFreqDip", "ExpC"),
    "Derate Codes": ("ID", "AltDerateBase", "AltDerateSlope", "TempDerateBase", "TempDerateSlope"),
    "Alternators": ("ID", "ModelNum", "BasekW", "BaseVolts", "SubtransReact"),
    "Properties": ("ID", "Version", "Date", "Initials"),
    "Connections": ("ID", "Connection Type", "Phases"),
    "Motor Code Letters": ("CodeLetter", "LRkVAPerHP"),
    "Motor Starting Multiplier": ("Multiplier",),
    "Motor Power Conversions": ("HP", "RunningKW", "RunningKVA", "SPF"),
}
# Tables that no sizing reads but every database has.
FORM_ROWS = {"Motor Code Letters": [("G", 5.95)], "Motor Starting Multiplier": [(1.0,)]}


def write_database(path, rows):
    """rows holds the rows of each table but those of FORM_ROWS. Columns have no type, so a text may stand anywhere."""
    with closing(sqlite3.connect(path)) as connection, connection:
        for table, columns in TABLES.items():
            names = ", ".join(f"[{column}]" for column in columns)
            connection.execute(f"create table [{table}] ({names})")
            marks = ",".join("?" * len(columns))
            connection.executemany(f"insert into [{table}] values ({marks})", {**FORM_ROWS, **rows}[table])
