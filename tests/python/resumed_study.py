"""A study that a test kills: resumed_study.py SCHEDULER-FILE PROJECT OUT RUNS PIECE."""
import sys

from distributed import Client

import genvara
from genvara import fleet

DRAWN = {"Step[2].Load[1].Quantity": fleet.integers(1, 2), "PowerSystem.AmbTemp": fleet.normal(35.0, 4.0)}

if __name__ == "__main__":
    scheduler, project, out, runs, piece = sys.argv[1:]
    with Client(scheduler_file=scheduler, set_as_default=False) as client:
        fleet.chances(genvara.read(project), DRAWN, runs=int(runs), seed=7, piece=int(piece), out=out, client=client)
