"""Sizes many projects, and one project many times, on as many machines as there are.

    with Client("tcp://scheduler:8786") as client:
        table = fleet.size(paths, client=client)
        study = fleet.chances(project, {"PowerSystem.AmbTemp": fleet.normal(35.0, 4.0)}, runs=100_000, seed=7, client=client)
        print(study.of_set("MV900D"))

The work is done by the workers of a `dask.distributed.Client`, and without one in this process; the answers are the same.
"""

from ._chances import Chances, Share, chances, wilson_interval
from ._draws import Choice, Distribution, Integers, Normal, Triangular, Uniform, choice, integers, normal, triangular, uniform
from ._sites import size
from ._store import Table

__all__ = ["Chances", "Choice", "Distribution", "Integers", "Normal", "Share", "Table", "Triangular", "Uniform", "chances",
           "choice", "integers", "normal", "size", "triangular", "uniform", "wilson_interval"]
