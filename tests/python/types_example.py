"""What a type checker accepts, and what it does not."""
import datetime

import genvara
from genvara import fleet


def study(path: str) -> list[str]:
    catalogue = genvara.Catalogue()
    project = genvara.read(path, catalogue)
    project.power_system.altitude = 1500
    project.power_system.fuel = "Diesel"
    project.power_system.fuel = genvara.Fuel.DIESEL
    fuel: genvara.Fuel = project.power_system.fuel
    project.created = datetime.datetime(2026, 1, 2)
    project.power_system.altitude = "high"  # type: ignore[assignment]
    project.power_system.height = 3  # type: ignore[attr-defined]
    result = project.size(catalogue, max_loading=80)
    project.size(catalogue, max_load=80)  # type: ignore[call-arg]
    tightest = result.explain()[0].tightest
    margin: float = tightest.margin if tightest else 0.0
    return [one.model for one in result.recommended] + [f"{fuel.name} {margin}"]


def ask(path: str) -> None:
    catalogue = genvara.Catalogue()
    project = genvara.new(catalogue)
    pump = project.add_step("Pumps", 20).add_load("Motor", hp=50.0)
    pump.delete()
    advice = project.advise(catalogue, kinds=["starter"])
    text: str = advice[0].text + advice[0].project.proj_name
    steps: list[list[str]] = project.order(catalogue, max_steps=4, before=[("Step[1].Load[1]", "Step[2].Load[1]")]).steps
    frame = genvara.sweep(project, catalogue, {"PowerSystem.Altitude": range(0, 3001, 250)}).to_pandas()
    pdf: bytes = project.size(catalogue).report(format="pdf")
    project.size(catalogue).report(format="doc")  # type: ignore[arg-type]
    study = fleet.chances(project, {"PowerSystem.AmbTemp": fleet.normal(35.0, 4.0)}, runs=1000, seed=7)
    share: float = study.of_set("MV900D").low
    fleet.size([path, project], out="sites.db", max_loading=80).to_csv("sites.csv")
    fleet.chances(project, {"PowerSystem.AmbTemp": 35.0}, runs=1, seed=1)  # type: ignore[dict-item]
    print(text, steps, frame, pdf, share)
