"""Steps and loads that come, go and move."""
import copy
import gc

import pytest

import genvara
from conftest import SOURCE


def test_a_project_from_nothing(catalogue, tmp_path):
    project = genvara.new(catalogue)
    assert project.steps == ()
    project.proj_name = "Pump house"
    first = project.add_step("Lights")
    assert first.max_voltage_dip_override == project.power_system.max_voltage_dip
    pumps = project.add_step("Pumps", 20)
    between = project.add_step("Between", 15, before=pumps)
    assert [step.description for step in project.steps] == ["Lights", "Between", "Pumps"]
    assert (first.number, between.number, pumps.number) == (1, 2, 3)
    assert [step.max_voltage_dip_override for step in project.steps][1:] == [15, 20]
    light = first.add_load("Lighting", running_real_power=12000.0, quantity=2)
    assert (light.kind, light.quantity, light.path) == ("Lighting", 2, "Step[1].Load[1]")
    motor = pumps.add_load(genvara.Motor, name="Pump", hp=50.0, starting_method="Solid State", quantity=3)
    assert isinstance(motor, genvara.Motor)
    assert motor.path == "Step[3].Load[1]"
    assert motor.starting_method is genvara.StartingMethod.SOLID_STATE
    # 50 hp with the shares of the tables draw about 50 * 0.746 / 0.93 = 40 kW.
    assert motor.running_real_power == pytest.approx(40_000.0, rel=0.05)
    assert between.delete() is None
    assert project.size(catalogue).recommended
    project.save(tmp_path / "pumps.prj")
    again = genvara.read(tmp_path / "pumps.prj")
    assert [step.description for step in again.steps] == ["Lights", "Pumps"]
    assert again.steps[1].loads[0].name == "Pump"


def test_a_new_load_follows_its_form(catalogue):
    project = genvara.new(catalogue)
    motor = project.add_step("One").add_load("motor", hp=100.0)
    known = genvara.read(SOURCE / "samples/hospital.prj")
    other = next(load for step in known.steps for load in step.loads if load.kind == "Motor" and hasattr(load, "hp"))
    other.starting_method = motor.starting_method
    other.hp = 99.0
    other.hp = 100.0
    assert motor.code_letter == other.code_letter


def test_a_refused_member_adds_nothing(hospital):
    step = hospital.steps[0]
    before = len(step.loads)
    with pytest.raises(genvara.RaisedError):
        step.add_load("Motor", hp=50.0, quantity=-1)
    with pytest.raises(AttributeError):
        step.add_load("Motor", horse_power=50.0)
    with pytest.raises(TypeError):
        step.add_load("Motor", hp="fifty")
    with pytest.raises(genvara.RaisedError, match="Motor"):
        step.add_load("Moter")
    with pytest.raises(TypeError):
        step.add_load(7)
    with pytest.raises(genvara.RaisedError):
        hospital.add_step("Deep", 36)
    assert len(step.loads) == before and len(hospital.steps) == len(genvara.read(SOURCE / "samples/hospital.prj").steps)


def test_the_last_load_of_a_step(hospital):
    step = hospital.add_step("Many")
    for _ in range(257):
        step.add_load("Lighting")
    with pytest.raises(genvara.RaisedError, match="Maximum number of loads"):
        step.add_load("Lighting")
    assert len(step.loads) == 257


def test_what_was_deleted_is_told(hospital):
    step = hospital.steps[1]
    load = step.loads[0]
    other = step.loads[1]
    name = other.name
    load.delete()
    with pytest.raises(ReferenceError, match="load was deleted"):
        _ = load.name
    with pytest.raises(ReferenceError):
        load.quantity = 2
    with pytest.raises(ReferenceError):
        load.delete()
    assert repr(load) == "<genvara.Load, deleted>"
    assert (other.name, other.path) == (name, "Step[2].Load[1]")
    step.delete()
    for ask in (lambda: step.number, lambda: step.loads, lambda: other.name, step.delete, lambda: step.add_load("Motor")):
        with pytest.raises(ReferenceError):
            ask()
    assert repr(step) == "<genvara.Step, deleted>"
    with pytest.raises(ReferenceError):
        hospital.add_step("x", before=step)
    gc.collect()


def test_steps_move(hospital):
    names = [step.description for step in hospital.steps]
    step = hospital.steps[0]
    step.move(3)
    assert [one.description for one in hospital.steps][:3] == [names[1], names[2], names[0]]
    step.move(len(names))
    assert hospital.steps[-1] == step and step.number == len(names)
    step.move(1)
    assert [one.description for one in hospital.steps] == names
    for number in (0, len(names) + 1):
        with pytest.raises(IndexError):
            step.move(number)


def test_lists_cannot_be_changed_behind_the_project(hospital):
    with pytest.raises(TypeError):
        del hospital.steps[0]
    with pytest.raises(AttributeError):
        hospital.steps[0].loads.append(1)


def test_changes_stay_in_their_project(hospital, catalogue):
    result = hospital.size(catalogue)
    copied = copy.deepcopy(hospital)
    for step in hospital.steps[1:]:
        step.delete()
    assert len(result.project.steps) == len(copied.steps) > 1 == len(hospital.steps)
    with pytest.raises(ValueError):
        hospital.add_step("x", before=copied.steps[0])


def test_a_member_that_deletes_its_own_step(hospital):
    """Whatever a value's own code does meanwhile, nothing is touched that is gone."""
    step = hospital.steps[0]

    class Treacherous:
        def __float__(self):
            step.delete()
            return 50.0

    with pytest.raises(ReferenceError):
        step.add_load("Motor", hp=Treacherous())
    site = hospital.power_system
    assert site.altitude == 152.4
    target = hospital.steps[0].loads[0]

    class Deleting:
        def __float__(self):
            target.delete()
            return 0.5

    with pytest.raises((ReferenceError, genvara.RaisedError)):
        target.running_power_factor = Deleting()
