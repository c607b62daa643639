"""Sizes electric generator sets for a site and its load profile.

    catalogue = genvara.Catalogue()
    project = genvara.read("hospital.prj")
    project.power_system.altitude = 1500.0
    result = project.size(catalogue, max_loading=80)
    print(result.recommended[0].model)

Names are those of the program's model, in snake case. `describe()` lists every member with its unit and what it takes.
"""

from ._core import *
from ._core import __all__ as _names
from ._core import __version__
from ._errors import RaisedError

__all__ = [*_names, "RaisedError"]
