"""What a type checker accepts, and what it does not."""
import datetime

import genvara


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
