"""Loads given by power and power factor: miscellaneous, lighting, medical imaging."""

from sizer.arithmetic import sine_for
from sizer.errors import member
from sizer.load import Load, RunsAsItStarts
from sizer.texts import fixed, plain

LAMPS = {0: ("Incandesent", "Incandesent lighting"),
         1: ("Fluorescent", "Floresent lighting"),
         2: ("HID", "High Intensity Discharge lighting")}
MAGNETIC, ELECTRONIC = 1, 2
BALLASTS = {0: ("N/A", ""),
            MAGNETIC: ("High Eff. Magnetic", " with high eff. magnetic ballast"),
            ELECTRONIC: ("Electronic", " with electronic ballast"),
            3: ("Low Distortion Electronic", " with low distortion electronic ballast")}


class CMiscLoad(RunsAsItStarts):
    """A linear load that runs as it starts."""

    LoadType = 4
    record = "watts real, RunningPowerFactor real"

    def RunningRealPower(self):
        return self.watts

    @member
    def RunningAppPower(self):
        return self.watts / self.RunningPowerFactor

    @member
    def RunningImgPower(self):
        return sine_for(self.RunningPowerFactor) * self.watts / self.RunningPowerFactor

    def Summary(self):
        return f"{fixed(self.watts / 1000, 2)} kW misc. load"

    def own_props(self):
        return [("Running kW", fixed(self.watts / 1000, 3)), ("Running PF", fixed(self.RunningPowerFactor, 2))]


class CLightLoad(Load):
    """Lamps; their power counts as non-linear with a magnetic or a plain electronic ballast."""

    LoadType = 2
    three_phase_text = "Even"
    record = ("LightType whole, Ballast whole, watts real, RunningPowerFactor real, starting_watts real,"
              " StartingPowerFactor real")

    def RunningRealPower(self):
        return self.watts

    def StartingRealPower(self):
        return self.starting_watts

    @member
    def RunningAppPower(self):
        return self.watts / self.RunningPowerFactor

    @member
    def StartingAppPower(self):
        return self.starting_watts / self.StartingPowerFactor

    @member
    def RunningImgPower(self):
        return sine_for(self.RunningPowerFactor) * self.watts / self.RunningPowerFactor

    @member
    def StartingImgPower(self):
        return sine_for(self.StartingPowerFactor) * self.starting_watts / self.StartingPowerFactor

    def SinglePhaseElectBallastPower(self, phase):
        return self.spread(phase, self.watts) if self.Ballast == ELECTRONIC else 0.0

    def SinglePhaseMagBallastPower(self, phase):
        return self.spread(phase, self.watts) if self.Ballast == MAGNETIC else 0.0

    def Summary(self):
        lamp = LAMPS.get(self.LightType, LAMPS[1])[1]
        return lamp if self.LightType == 0 else lamp + BALLASTS.get(self.Ballast, BALLASTS[0])[1]

    def own_props(self):
        unknown = ("Unknown", "")
        return [("Type", LAMPS.get(self.LightType, unknown)[0]), ("Ballast", BALLASTS.get(self.Ballast, unknown)[0]),
                ("Running kW", fixed(self.watts / 1000, 3)), ("Running PF", fixed(self.RunningPowerFactor, 2)),
                ("Starting kW", fixed(self.starting_watts / 1000, 3)),
                ("Starting PF", fixed(self.StartingPowerFactor, 2))]


class CMedEquipLoad(Load):
    """Imaging equipment: the peak of an exposure stands in for the start."""

    LoadType = 3
    record = ("ContVA real, PeakVA real, ContPowerFactor real, PeakPowerFactor real, MaxPeakDemandVoltDip whole,"
              " InputType whole")

    @member
    def RunningRealPower(self):
        return self.ContVA * self.ContPowerFactor

    @member
    def StartingRealPower(self):
        return self.PeakVA * self.PeakPowerFactor

    def RunningAppPower(self):
        return self.ContVA

    def StartingAppPower(self):
        return self.PeakVA

    @member
    def RunningImgPower(self):
        return sine_for(self.ContPowerFactor) * self.ContVA

    @member
    def StartingImgPower(self):
        return sine_for(self.PeakPowerFactor) * self.PeakVA

    def Summary(self):
        return "Medical Imaging Equipment"

    def own_props(self):
        return [("Peak kVA", fixed(self.PeakVA / 1000, 3)), ("Cont. kVA", fixed(self.ContVA / 1000, 3)),
                ("Peak PF", plain(self.PeakPowerFactor)), ("Cont. PF", plain(self.ContPowerFactor)),
                ("Max. Peak Demand Vdip", f"{self.MaxPeakDemandVoltDip}%")]
