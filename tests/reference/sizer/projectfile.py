"""Reads well-formed project files."""

from datetime import datetime
from types import SimpleNamespace

from sizer.linear_loads import CLightLoad, CMedEquipLoad, CMiscLoad
from sizer.motor_loads import CAirCondLoad, CMtrLoad
from sizer.rectifier_loads import CBatChrgLoad, COfficeLoad, CUPSLoad, CVFDLoad
from sizer.steps import CLoadStep

# By the code of the kind.
KINDS = (CAirCondLoad, CBatChrgLoad, CLightLoad, CMedEquipLoad, CMiscLoad, CMtrLoad, COfficeLoad, CUPSLoad, CVFDLoad)

PROJECT_FIELDS = (("Created", "moment"), ("Customer", "text"), ("Description", "text"), ("LastModified", "moment"),
                  ("ProjName", "text"), ("UserName", "text"))
# Altitude in m, AmbTemp in degrees Celsius, Freq in Hz, dips and harmonics in percent, Voltage in V between lines.
SITE_FIELDS = (("Altitude", "real"), ("AmbTemp", "real"), ("ConnectCode", "whole"), ("Freq", "whole"),
               ("Fuel", "whole"), ("GensetsInParallel", "whole"), ("MaxFreqDip", "whole"),
               ("MaxFreqDipEnabled", "flag"), ("MaxHarmonics", "whole"), ("MaxHarmonicsEnabled", "flag"),
               ("MaxVoltageDip", "whole"), ("Phases", "whole"), ("RiseDutyCode", "whole"), ("Voltage", "whole"))


class ValueFile:
    """The sequence of a file's values; commas and line ends part them."""

    def __init__(self, data):
        self.left = data.decode("cp1252")

    def text(self):
        """What stands between quotes, or up to the next comma or line end."""
        self.left = self.left.lstrip(" ")
        if self.left.startswith('"'):
            value, _, self.left = self.left[1:].partition('"')
        else:
            end = min((at for at in map(self.left.find, ",\r\n") if at >= 0), default=len(self.left))
            value, self.left = self.left[:end], self.left[end:]
        self.left = self.left[2:] if self.left.startswith("\r\n") else self.left[1:]
        return value

    def real(self):
        return float(self.text())

    def whole(self):
        return round(self.real())

    def flag(self):
        return {"#TRUE#": True, "#FALSE#": False}[self.text()]

    def moment(self):
        """A date with or without its time, in the form of ISO 8601."""
        return datetime.fromisoformat(self.text().strip("#")).isoformat()

    def record(self, fields):
        return SimpleNamespace(**{name: getattr(self, kind)() for name, kind in fields})


class ProjectFile:
    """The project's head, the site and the steps. The site's phases are those of its connection, not the file's."""

    def __init__(self, data, database):
        file = ValueFile(data)
        for _ in range(4):
            file.whole()
        self.project = file.record(PROJECT_FIELDS)
        self.site = file.record(SITE_FIELDS)
        self.site.Phases = database.phases(self.site.ConnectCode)
        self.steps = [CLoadStep(number, file.text(), file.whole()) for number in range(file.whole())]
        for step in self.steps:
            for _ in range(file.whole()):
                step.add(self.read_load(file, database.motors))

    def read_load(self, file, motors):
        file.whole()
        load = KINDS[file.whole()](motors)
        load.read(file, self.site)
        return load
