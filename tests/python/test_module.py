"""What a script does with the module, from reading to reports."""
import copy
import datetime
import gc
import math
import pickle
import re
import sqlite3
import subprocess
import sys
import threading
import xml.etree.ElementTree

import pytest

import genvara
from conftest import CLI, SOURCE, WITH_MODULE


def models(sets):
    return [one.model for one in sets]


# ---- the catalogue

def test_catalogue_beside_the_program_and_a_file(catalogue):
    other = genvara.Catalogue(SOURCE / "data/../" / catalogue.file)
    assert other.version == catalogue.version
    with pytest.raises(genvara.RaisedError) as raised:
        genvara.Catalogue("/nowhere/Genvara.db")
    assert raised.value.number == 53


def test_tables(catalogue):
    assert catalogue.tables[:3] == ["Gensets", "Derate Codes", "Alternators"]
    with sqlite3.connect(catalogue.file) as database:
        for name in catalogue.tables:
            rows = database.execute(f"SELECT * FROM [{name}]")
            columns = [column[0] for column in rows.description]
            assert catalogue.table(name) == [dict(zip(columns, row)) for row in rows]
    with pytest.raises(KeyError):
        catalogue.table("sqlite_master")


def test_building_and_checking(tmp_path):
    file = tmp_path / "built.db"
    rows = genvara.Catalogue.build(SOURCE / "data/catalog", file)
    assert rows == sum(len(genvara.Catalogue(file).table(name)) for name in genvara.Catalogue(file).tables)
    assert genvara.Catalogue.check(file) == []
    with sqlite3.connect(file) as database:
        database.execute("UPDATE Gensets SET [GensetModel] = NULL WHERE rowid = 1")
    assert len(genvara.Catalogue.check(file)) == 1
    with pytest.raises(genvara.RaisedError):
        genvara.Catalogue.build(tmp_path, tmp_path / "none.db")


# ---- projects

def test_attributes_of_every_record(hospital):
    for row in genvara.describe():
        attribute = getattr(getattr(genvara, row["kind"]), row["attribute"])
        assert row["meaning"] in attribute.__doc__
        assert row["unit"] in attribute.__doc__
    assert "-500 to 4572" in genvara.PowerSystem.altitude.__doc__
    assert hospital.proj_name == "St. Brannoc Hospital, emergency power"
    assert hospital.created == datetime.datetime(2025, 3, 11, 9, 20, 0)
    assert hospital.power_system.amb_temp == 35.0
    assert [step.description for step in hospital.steps][:2] == ["Life safety", "Critical branch"]
    assert hospital.steps[0].loads[0].running_power_factor == 0.95


def test_a_setter_that_refuses_leaves_the_value(hospital):
    hospital.power_system.altitude = 1500.0
    with pytest.raises(genvara.RaisedError) as raised:
        hospital.power_system.altitude = 4572.5
    error = raised.value
    assert (error.number, error.source, error.description) == (3, "CPwrSys::Altitude", "Invalid altitude")
    assert str(error) == "Invalid altitude (3, CPwrSys::Altitude)"
    assert pickle.loads(pickle.dumps(error)).args == error.args
    assert hospital.power_system.altitude == 1500.0
    hospital.power_system.altitude = 4572
    assert hospital.power_system.altitude == 4572.0


@pytest.mark.parametrize("value", [True, "1500", None, b"1", [], 1j])
def test_a_number_of_another_type(hospital, value):
    with pytest.raises(TypeError):
        hospital.power_system.altitude = value
    with pytest.raises(TypeError):
        hospital.power_system.gensets_in_parallel = value
    with pytest.raises(TypeError):
        hospital.power_system.gensets_in_parallel = 2.0


@pytest.mark.parametrize("value", [math.inf, -math.inf, math.nan, 10**400])
def test_a_number_that_none_is(hospital, value):
    charger = hospital.steps[0].loads[2]
    before = charger.battery_voltage
    with pytest.raises(genvara.RaisedError) as raised:
        charger.battery_voltage = value
    assert raised.value.number == 6
    assert charger.battery_voltage == before
    with pytest.raises(genvara.RaisedError):
        hospital.power_system.voltage = 2**31
    hospital.power_system.voltage = 2**31 - 1


def test_codes_take_names_numbers_and_constants(hospital):
    site = hospital.power_system
    site.fuel = "nat. gas"
    assert site.fuel is genvara.Fuel.NAT_GAS
    site.fuel = 3
    assert site.fuel == genvara.Fuel(3)
    site.fuel = genvara.Fuel.DIESEL
    assert site.fuel == 1
    with pytest.raises(genvara.RaisedError) as raised:
        site.fuel = "Diesle"
    assert "Diesel" in raised.value.description
    assert site.fuel == 1
    site.fuel = 77  # its setter takes any
    assert site.fuel == 77 and type(site.fuel) is int


def test_phases_follow_the_connection(hospital):
    assert hospital.power_system.phases == 3
    hospital.power_system.connect_code = 3
    assert hospital.power_system.phases == 1


def test_a_member_of_another_entry_method_does_not_exist():
    project = genvara.read(SOURCE / "samples/hospital.prj")
    motors = [load for step in project.steps for load in step.loads if load.kind == "Motor"]
    motor = next(load for load in motors if load.data_entry_method == genvara.MotorDataEntryMethod(0))
    assert motor.hp > 0
    assert not hasattr(motor, "running_amps")
    with pytest.raises(AttributeError):
        motor.running_amps = 12.0
    assert motor.running_real_power > 0  # a figure of every load
    with pytest.raises(AttributeError):
        motor.running_real_power = 1000.0
    with pytest.raises(AttributeError):
        motor.horse_power = 3


def test_saving_and_reading(hospital, tmp_path):
    hospital.power_system.altitude = 1234.5
    hospital.proj_name = "Höhenklinik"
    for name in ("changed.json", "changed.prj"):
        hospital.save(tmp_path / name)
        again = genvara.read(str(tmp_path / name))
        assert (again.proj_name, again.power_system.altitude) == ("Höhenklinik", 1234.5)
    assert genvara.loads(hospital.dumps()).dumps() == hospital.dumps()
    hospital.proj_name = "漢"
    with pytest.warns(UserWarning, match="1 character "):
        hospital.save(tmp_path / "lossy.prj")
    with pytest.raises(genvara.RaisedError):
        hospital.save(tmp_path / "changed.doc")
    assert not (tmp_path / "changed.doc").exists()


def test_what_cannot_be_read(tmp_path):
    with pytest.raises(genvara.RaisedError) as raised:
        genvara.read(tmp_path / "none.prj")
    assert raised.value.number == 53
    with pytest.raises(genvara.RaisedError) as raised:
        genvara.loads('{"Format": "genvara-project", "Version": 1, "PowerSystem": {"Altitude": 9999, "Freq": true}}')
    assert "/PowerSystem/Altitude" in raised.value.description and "/PowerSystem/Freq" in raised.value.description
    (tmp_path / "text.prj").write_text("Hello", encoding="utf-8")
    with pytest.raises(genvara.RaisedError):
        genvara.read(tmp_path / "text.prj")


def test_skipped_items_are_told(tmp_path):
    text = (SOURCE / "samples/hospital.prj").read_bytes().replace(b"152.4,", b"9999,", 1)
    (tmp_path / "high.prj").write_bytes(text)
    with pytest.warns(UserWarning, match="1 item "):
        project = genvara.read(tmp_path / "high.prj")
    item, = project.skipped
    assert item["record"] == "power system A" and "Invalid altitude" in item["found"]


def test_copies(hospital, catalogue):
    for made in (copy.copy(hospital), copy.deepcopy(hospital), pickle.loads(pickle.dumps(hospital))):
        assert made.dumps() == hospital.dumps()
        made.power_system.altitude = 3000.0
        made.steps[0].description = "Other"
        assert hospital.power_system.altitude == 152.4
        assert hospital.steps[0].description == "Life safety"
        assert made.size(catalogue).recommended[0].derated_rating < hospital.size(
            catalogue).recommended[0].derated_rating or made.size(catalogue).recommended[0].model != "MV900D"


def powers(project):
    return [(load.running_real_power, load.running_app_power, load.starting_app_power, load.starting_real_power)
            for step in project.steps for load in step.loads]


def test_copies_keep_what_a_form_worked_out(hospital, catalogue):
    motor = motor_of(hospital)
    motor.data_entry_method = genvara.MotorDataEntryMethod.RUNNING_KW
    motor.running_real_power = 20000.0
    # The form looks the apparent power up by kW, and the reader of files, as it always has, by W.
    assert powers(genvara.loads(hospital.dumps())) != powers(hospital)
    for made in (copy.deepcopy(hospital), pickle.loads(pickle.dumps(hospital)), hospital.size(catalogue).project):
        assert powers(made) == powers(hospital)


def test_records_outlive_their_project():
    loads = genvara.read(SOURCE / "samples/hospital.prj").steps[3].loads
    site = genvara.read(SOURCE / "samples/hospital.prj").power_system
    first = genvara.read(SOURCE / "samples/hospital.prj").size(genvara.Catalogue()).recommended[0]
    gc.collect()
    site.altitude = 100.0
    assert loads[0].name and first.model == "MV900D"


# ---- results

def test_a_result_stays(hospital, catalogue):
    result = hospital.size(catalogue)
    rating = result.recommended[0].derated_rating
    hospital.power_system.altitude = 4000.0
    assert result.recommended[0].derated_rating == rating
    assert result.project.power_system.altitude == 152.4
    assert hospital.size(catalogue).recommended[0].derated_rating != rating


def test_results_can_be_copied(hospital, catalogue):
    result = hospital.size(catalogue, max_loading=75, min_loading=20, max_sets_recommended=4, max_sets_undersized=2)
    for made in (copy.deepcopy(result), pickle.loads(pickle.dumps(result))):
        assert models(made.recommended) == models(result.recommended)
        assert [one.voltage_dips for one in made.undersized] == [one.voltage_dips for one in result.undersized]
        assert (made.designer.max_loading, made.designer.min_loading, made.designer.max_sets_recommended,
                made.designer.max_sets_undersized) == (75, 20, 4, 2)
        assert made.explain()[0].reason == result.explain()[0].reason


def test_a_result_of_another_catalogue(hospital, tmp_path):
    file = tmp_path / "own.db"
    genvara.Catalogue.build(SOURCE / "data/catalog", file)
    kept = pickle.dumps(hospital.size(genvara.Catalogue(file)))
    assert pickle.loads(kept).catalogue.file == str(file)
    with sqlite3.connect(file) as database:
        database.execute("UPDATE Properties SET Version = '9'")
    with pytest.raises(genvara.RaisedError, match="not the one that it was"):
        pickle.loads(kept)


def test_motors_follow_the_catalogue_that_sizes(tmp_path):
    file = tmp_path / "own.db"
    genvara.Catalogue.build(SOURCE / "data/catalog", file)
    with sqlite3.connect(file) as database:
        columns = [row[1] for row in database.execute("PRAGMA table_info([Motor Power Conversions])")]
        for column in columns[1:3]:
            database.execute(f"UPDATE [Motor Power Conversions] SET [{column}] = [{column}] * 1.125")
    own = genvara.Catalogue(file)
    project = genvara.read(SOURCE / "samples/hospital.prj")
    result = project.size(own)
    assert result.total_running_kw > project.size(genvara.Catalogue()).total_running_kw
    assert result.total_running_kw == genvara.read(SOURCE / "samples/hospital.prj", own).size(own).total_running_kw
    copied = result.project
    del result, own
    gc.collect()
    assert copied.steps[3].loads[0].summary


def test_limits_are_checked(hospital, catalogue):
    with pytest.raises(TypeError, match="max_load"):
        hospital.size(catalogue, max_load=80)
    with pytest.raises(genvara.RaisedError) as raised:
        hospital.size(catalogue, max_loading=101)
    assert raised.value.number == 13
    with pytest.raises(TypeError):
        hospital.size(None)


def test_nothing_to_size(catalogue):
    empty = genvara.loads('{"Format": "genvara-project", "Version": 1, "LoadProfile": []}')
    with pytest.raises(genvara.RaisedError, match="At least one load"):
        empty.size(catalogue)
    empty.power_system.connect_code = 99
    with pytest.raises(genvara.RaisedError, match="99"):
        empty.size(catalogue)


def test_explain_chooses(hospital, catalogue):
    result = hospital.size(catalogue)
    assert models(result.explain()) == models(result.recommended) + models(result.undersized)
    assert set(models(result.explain(models=["MV900D"]))) == {"MV900D"}
    assert len(result.explain(all=True)) == result.counts["candidates"]
    with pytest.raises(genvara.RaisedError, match="MV1D"):
        result.explain(models=["MV1D"])


def test_reports_are_those_of_the_console(hospital, catalogue, tmp_path):
    result = hospital.size(catalogue)
    for type_ in ("sizing", "summary"):
        for keywords, arguments in (({"set": 2}, ["--set", 2]),
                                    ({"set": 1, "undersized": True}, ["--undersized", 1]),
                                    ({"set": 0, "metric": True}, ["--metric"])):
            file = tmp_path / "report.rtf"
            subprocess.run([CLI, "report", "--type", type_, *map(str, arguments), "-o", str(file), "--now",
                            "2026-01-02T03:04:05", SOURCE / "samples/hospital.prj"], check=True)
            ours = result.report(type_, **keywords)
            assert ours.startswith(b"{\\rtf") and without_date(ours) == without_date(file.read_bytes())
    with pytest.raises(IndexError):
        result.report(set=16)
    with pytest.raises(IndexError):
        result.report(set=-1)
    with pytest.raises(ValueError):
        result.report("balance")
    assert result.no_match_report().startswith(b"{\\rtf")
    file = tmp_path / "spec.gvx"
    subprocess.run([CLI, "export-spec", "-o", str(file), SOURCE / "samples/hospital.prj"], check=True)
    assert result.spec() == file.read_bytes()


def pages_of(pdf):
    return int(re.search(rb"/Count (\d+)", pdf).group(1))


def test_reports_as_pdf_are_those_of_the_console(hospital, catalogue, tmp_path):
    result = hospital.size(catalogue)
    for type_ in ("sizing", "summary"):
        file = tmp_path / "report.pdf"
        subprocess.run([CLI, "report", "--type", type_, "--set", "1", "-o", str(file), SOURCE / "samples/hospital.prj"], check=True)
        ours, told = result.report(type_, set=1, format="pdf"), file.read_bytes()
        assert ours.startswith(b"%PDF-") and ours.rstrip().endswith(b"%%EOF")
        # Title and number of pages are the same; the time of printing differs.
        assert pages_of(ours) == pages_of(told) > 0
        title = re.search(rb"/Title \(.*?\)\n/", ours, re.DOTALL).group()
        assert title in told and len(title) > 20
    assert result.no_match_report(format="pdf").startswith(b"%PDF-")
    with pytest.raises(ValueError, match="\"doc\""):
        result.report(format="doc")


def test_a_pdf_without_the_program_that_draws_it(hospital, catalogue, monkeypatch):
    from genvara import _pdf

    result = hospital.size(catalogue)
    monkeypatch.setattr(_pdf, "_HELPER", "genvara-none")
    with pytest.raises(genvara.RaisedError, match="genvara-none is missing"):
        result.report(format="pdf")
    with pytest.raises(genvara.RaisedError, match="failed: .*no rich text"):
        monkeypatch.undo()
        _pdf.drawn(b"Hello", "name")


def test_version():
    told = subprocess.run([CLI, "--version"], capture_output=True, text=True, check=True).stdout
    assert genvara.__version__ in told and genvara.__version__[0].isdigit()


def without_date(report):
    """A report without the line that tells when it was printed."""
    return re.sub(rb"[A-Z][a-z]+ \d{1,2}, 20\d\d|\d\d:\d\d:\d\d [AP]M", b"", report)


def test_html_is_well_formed(hospital, catalogue):
    result = hospital.size(catalogue)
    html = result._repr_html_()
    page = xml.etree.ElementTree.fromstring("<div>" + html.replace("<br>", "<br/>") + "</div>")
    assert [len(table.findall("tr")) for table in page.findall("table")] == [len(result.recommended) + 1, 6]
    assert page.find("table/tr[2]/td").text == "MV900D"


def test_threads_size_side_by_side(hospital, catalogue):
    expected = models(hospital.size(catalogue).recommended)
    found = []

    def work():
        own = copy.deepcopy(hospital)
        for altitude in range(0, 2000, 100):
            own.power_system.altitude = float(altitude)
            own.size(catalogue)
        own.power_system.altitude = 152.4
        found.append(models(own.size(catalogue).recommended))

    threads = [threading.Thread(target=work) for _ in range(4)]
    for thread in threads:
        thread.start()
    for altitude in range(0, 2000, 10):  # changes of the shared project reach nobody
        hospital.power_system.altitude = float(altitude)
    for thread in threads:
        thread.join()
    assert found == [expected] * 4


def test_sizing_lets_other_threads_run(hospital, catalogue):
    go = threading.Event()
    ran = []

    def work():
        go.wait()
        ran.append(True)

    thread = threading.Thread(target=work)
    thread.start()
    interval = sys.getswitchinterval()
    sys.setswitchinterval(1000.0)  # only who lets go of the interpreter lets another thread run
    try:
        go.set()
        for _ in range(3000):
            if ran:
                break
            hospital.size(catalogue)
        assert ran
    finally:
        sys.setswitchinterval(interval)
        thread.join()


def test_import_needs_nothing_but_the_standard_library():
    code = "import sys, genvara; print(sorted(set(sys.modules) & {'pandas', 'numpy', 'distributed'}))"
    done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=True, env=WITH_MODULE)
    assert done.stdout == "[]\n"


# ---- changes that act like the entry forms

def motor_of(project):
    return next(load for step in project.steps for load in step.loads
                if load.kind == "Motor" and load.data_entry_method == genvara.MotorDataEntryMethod.HORSEPOWER)


def locked_rotor_kva(catalogue, letter):
    row, = [row for row in catalogue.table("Motor Code Letters") if letter in row.values()]
    value, = [value for value in row.values() if isinstance(value, float)]
    return value


def test_a_motor_follows_its_size(hospital, catalogue):
    motor = motor_of(hospital)
    motor.starting_method = genvara.StartingMethod.ACROSS_THE_LINE
    motor.hp = 50.0
    running, letter = motor.running_real_power, motor.code_letter
    motor.hp = 100.0
    assert motor.running_real_power > 1.8 * running
    # Across the line a motor starts with its locked-rotor kVA.
    kva = 100.0 * locked_rotor_kva(catalogue, motor.code_letter)
    assert motor.starting_app_power == pytest.approx(kva * 1000.0, abs=100.0)
    motor.code_letter = "A" if letter != "A" else "B"
    kva = 100.0 * locked_rotor_kva(catalogue, motor.code_letter)
    assert motor.starting_app_power == pytest.approx(kva * 1000.0, abs=100.0)


def test_a_solid_state_starter_limits_the_current(hospital):
    motor = motor_of(hospital)
    motor.starting_method = "Solid State"
    share = motor.solid_state_current_limit / 100.0
    assert motor.starting_app_power == pytest.approx(share * motor.running_app_power, abs=100.0)


def test_a_motor_that_starts_unloaded(hospital):
    motor = motor_of(hospital)
    motor.starts_loaded = True
    factor = motor.starting_pf
    motor.starts_loaded = False
    assert motor.starting_pf == pytest.approx(factor * 0.65, abs=0.005) or motor.starting_pf == pytest.approx(
        factor / 0.65, abs=0.005)
    assert motor.starting_pf != factor


def test_a_refused_change_of_a_load_changes_nothing_else(hospital):
    motor = motor_of(hospital)
    before = hospital.dumps()
    with pytest.raises(genvara.RaisedError):
        motor.hp = 1000.5
    with pytest.raises(genvara.RaisedError):
        motor.code_letter = "AB"
    assert hospital.dumps() == before
