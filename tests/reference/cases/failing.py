"""Small cases in which a figure cannot be worked out, or nearly cannot, each for one cause."""

from pathlib import Path
from types import SimpleNamespace

from cases.database import TABLES, write_database
from cases.projects import encode

HEAD = ("8,0,0,1", '#2020-01-02 03:04:05#,"C","D",#2020-01-02 03:04:06#,"P","U"')
GENSET = dict(zip(TABLES["Gensets"], (60, 1, 480, 1, 1, 1, "R100", "R45", 95.0, 96.0, 98.0, 100.0, 100.0, 400.0, 110.0,
                                      80.0, 10.0, 1.1)))
DERATE = dict(zip(TABLES["Derate Codes"], (1, 1000.0, 1.0, 25.0, 2.0)))
ALTERNATOR = dict(zip(TABLES["Alternators"], (1, "A1-X", 100.0, 480.0, 0.15)))
MOTORS = ((1.0, 0.9, 1.2, 0.8), (10.0, 8.5, 10.1, 0.6), (100.0, 80.0, 90.0, 0.4), (500.0, 395.0, 440.0, 0.3))

HEATER = '1,4,"Heater","",1,0', "50000,0.9"
DRIVE = '1,8,"Fan","",1,0', "1,40,90,125,#FALSE#"
AIR_CONDITIONER = '1,0,"A/C","",1,0', "2,20"
LARGEST_BY_BTU = '1,0,"A/C","",1,0', "0,6250000"
MOTOR_BY_WATTS = '1,5,"Pump","",1,0', '1,"G",1,#TRUE#,#FALSE#', "20000", "100000,0.4,300"
STAND_BY, FAST = 2, 0


def ups(family, pulse):
    return '1,7,"UPS","",1,0', f"{pulse},{family},50000,100,10,#TRUE#"


def medical(cont_va, cont_factor, peak_factor, quantity=1):
    return f'1,3,"X-ray","",{quantity},0', f"{cont_va},1000,{cont_factor},{peak_factor}", "6,1"


def charger(volts, amps, stage=0):
    return '1,1,"Charger","",1,0', f"{volts},{amps},{stage},1"


def case(name, *loads, site="0,25,1,60,1,1", limits="30,3,3,480", gensets=({},), derate=(), alternator=(),
         motors=MOTORS, properties=((1, "1.0", "", ""),)):
    """A project of one step, and what is particular about its catalogue: changes of the rows above."""
    records = [record for load in loads for record in load]
    project = encode([*HEAD, site, "20,#FALSE#,15,#FALSE#", limits, "1", '"S",30', str(len(loads)), *records])
    rows = {"Gensets": [tuple({**GENSET, **changes}.values()) for changes in gensets],
            "Derate Codes": [tuple({**DERATE, **dict(derate)}.values())],
            "Alternators": [tuple({**ALTERNATOR, **dict(alternator)}.values())], "Properties": properties,
            "Connections": ((1, "Wye", 3),), "Motor Power Conversions": motors}
    return SimpleNamespace(name=name, project=project, rows=rows)


CASES = [
    case("comes through", HEATER),
    case("no candidates", HEATER, site="0,25,1,50,1,1"),
    case("no load"),
    case("several versions", HEATER, properties=((3, "3.0", "", ""), (1, "1.5", "", ""))),
    case("a stand-by supply's six-pulse filter alone", ups(STAND_BY, 1)),
    case("a stand-by supply's twelve-pulse filter alone", ups(FAST, 2)),
    case("both filters alone", ups(STAND_BY, 1), ups(STAND_BY, 2)),
    case("a filter alone without distortion figures", ups(STAND_BY, 1), alternator={"BasekW": 0}),
    case("a filter beside another rectifier", ups(STAND_BY, 1), DRIVE),
    case("a site of no volts", HEATER, limits="30,3,3,0", gensets=({"VoltageLL": 0},)),
    case("no starting power factor", AIR_CONDITIONER, motors=((1, 1, 1.5, 0), (100, 80, 90, 0))),
    case("the largest air conditioner by BTU/hr", LARGEST_BY_BTU, gensets=({"Rating130C": 2000, "LRkVA": 20000},)),
    case("conversions that end upright", DRIVE, motors=((1, 1, 1.5, 1), (9, 8, 9, 1), (9, 9, 10, 1))),
    case("more real than apparent power", MOTOR_BY_WATTS, motors=((1, 1, 1.5, 1), (100, 80, 20, 1))),
    case("one row of conversions", DRIVE, motors=MOTORS[:1]),
    case("one row of conversions, unused", HEATER, motors=MOTORS[:1]),
    case("a continuous power factor above 1", medical(1000, 1.2, 0.9)),
    case("a peak power factor above 1", medical(1000, 0.9, 1.2)),
    case("a bad load without candidates", medical(1000, 0.9, 1.2), site="0,25,1,50,1,1"),
    case("a charger beyond all numbers", charger("1E+200", "1E+200")),
    case("a charger whose square is beyond all numbers", charger("1E+160", "1")),
    case("a quantity beyond all numbers", medical("1.5E+308", 0.9, 0.9, quantity=2)),
    case("a negative rectifier", HEATER, charger("-48", "100"), gensets=({"ExpC": None},)),
    case("a negative step under a broken exponent", charger("-48", "100", stage=1)),
    case("no reactance", HEATER, alternator={"SubtransReact": 0}),
    case("a negative reactance", HEATER, alternator={"SubtransReact": -0.1}),
    case("a derate code of no row", HEATER, gensets=({"DerateCode": 9},)),
    case("an alternator of no row", HEATER, gensets=({"AltModel": 9},)),
    case("missing rows of another site's sets", HEATER, gensets=({}, {"VoltageLL": 208, "DerateCode": 9})),
    case("Null in a rating that is not asked for", HEATER, gensets=({"Rating80C": None},)),
    case("a duty code of no column", HEATER, limits="30,3,5,480", gensets=({"Rating80C": None},)),
    *(case(f"Null in {column}", HEATER, gensets=({column: None},)) for column in (
        "DerateCode", "AltModel", "Rating130C", "LRkVA", "StartingPower", "BaseFreqDipKW", "BaseFreqDip", "ExpC")),
    *(case(f"text in {column}", HEATER, gensets=({column: "many"},)) for column in (
        "DerateCode", "AltModel", "Rating130C", "LRkVA", "StartingPower", "BaseFreqDipKW", "BaseFreqDip", "ExpC")),
    case("Null in Fuel, any asked for", HEATER, site="0,25,1,60,0,1", gensets=({"Fuel": None},)),
    case("Null in a model's number", HEATER, gensets=({"GensetModel": None},)),
    *(case(f"Null in {column}", HEATER, derate={column: None}) for column in list(DERATE)[1:]),
    *(case(f"Null in {column}", HEATER, alternator={column: None}) for column in list(ALTERNATOR)[2:]),
    *(case(f"text in {column}", HEATER, alternator={column: "many"}) for column in list(ALTERNATOR)[2:]),
]


def prepare(folder):
    """Writes each case into a folder of its own; its name, its database and its project."""
    for number, one in enumerate(CASES):
        place = Path(folder) / f"case-{number}"
        place.mkdir()
        write_database(place / "catalogue.db", one.rows)
        (place / "project.prj").write_bytes(one.project)
        yield one.name, place / "catalogue.db", place / "project.prj"
