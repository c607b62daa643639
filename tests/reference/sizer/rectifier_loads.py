"""Loads behind rectifiers: battery chargers, office equipment, uninterruptible supplies, drives."""

from sizer.arithmetic import interpolate, root, sine_for, square
from sizer.errors import member
from sizer.load import ImaginaryByTriangle, Load, RunsAsItStarts
from sizer.texts import fixed, plain, yes_no

INDUSTRIAL = 1
CHARGER_TYPES = {0: "Residential", INDUSTRIAL: "Industial", 2: "Telecom"}
# Efficiency and power factor by type of charger.
CHARGER_STAGES = {0: (0.5, 0.8), INDUSTRIAL: (0.85, 0.9), 2: (0.9, 0.95)}
CONTROLLED_RECTIFIER = 0
CHARGER_INPUTS = {CONTROLLED_RECTIFIER: "SCR", 1: "Ferro Resonant"}

OFFICE_POWER_FACTOR = 0.8

# Input types that a supply and a drive share.
SIX_PULSE, TWELVE_PULSE, SINGLE_PHASE = 1, 2, 5
ON_LINE = 1
STAND_BY_FAMILIES = (0, 2)


class CBatChrgLoad(ImaginaryByTriangle, RunsAsItStarts):
    """A battery charger, from what it gives: BatteryVoltage in V and ChargeCurrent in A."""

    LoadType = 1
    record = "BatteryVoltage real, ChargeCurrent real, ChargerInput whole, ChargerType whole"

    @member
    def SmallChargerEfficiency(self):
        """Per unit, by the output in W; the line between does not quite meet its ends."""
        watts = self.BatteryVoltage * self.ChargeCurrent
        if watts < 120:
            return 0.5
        return 0.8 if watts > 1200 else watts * 0.0002777778 + 0.466667

    def stage(self):
        """Efficiency and power factor."""
        if self.ChargerType == INDUSTRIAL and self.Phases != 0:
            return self.SmallChargerEfficiency(), 0.8
        return CHARGER_STAGES.get(self.ChargerType, (1.0, 1.0))

    @member
    def RunningAppPower(self):
        return self.BatteryVoltage * 1.1 * self.ChargeCurrent / self.stage()[0]

    @member
    def RunningRealPower(self):
        return self.RunningAppPower() * self.stage()[1]

    def ThreePhaseSixPulseRectPower(self):
        rectified = self.Phases == 0 and self.ChargerInput == CONTROLLED_RECTIFIER
        return self.RunningRealPower() if rectified else 0.0

    def SinglePhaseRectPower(self, phase):
        """The full power on every phase, whichever the charger stands on."""
        rectified = self.Phases != 0 and self.ChargerInput == CONTROLLED_RECTIFIER
        return self.RunningRealPower() if rectified else 0.0

    def Summary(self):
        return "Battery charger" + self.plural()

    def own_props(self):
        return [("Type", CHARGER_TYPES.get(self.ChargerType, "Unknown")),
                ("Input", CHARGER_INPUTS.get(self.ChargerInput, "Unknown")),
                ("Battery Volts", plain(self.BatteryVoltage)), ("Charging Current", plain(self.ChargeCurrent))]


class COfficeLoad(RunsAsItStarts):
    """Office machines by their number."""

    LoadType = 6
    three_phase_text = "Even"
    record = "NumPCs whole, NumPrinters whole, NumFaxes whole, NumCopiers whole"

    @member
    def RunningRealPower(self):
        return 600.0 * self.NumPrinters + 300.0 * self.NumPCs + 600.0 * self.NumFaxes + 1200.0 * self.NumCopiers

    @member
    def RunningAppPower(self):
        return self.RunningRealPower() / OFFICE_POWER_FACTOR

    @member
    def RunningImgPower(self):
        return sine_for(OFFICE_POWER_FACTOR) * self.RunningRealPower() / OFFICE_POWER_FACTOR

    def SinglePhaseRectPower(self, phase):
        return self.spread(phase, self.RunningRealPower())

    def Summary(self):
        return ("Evenly Distributed, " if self.Phases == 0 else "1 phase, ") + "Office Equipment"

    def own_props(self):
        return [("PCs", str(self.NumPCs)), ("Printers", str(self.NumPrinters)), ("Faxes", str(self.NumFaxes)),
                ("Copiers", str(self.NumCopiers))]


class Rectifier(Load):
    """Where the power counts, by input type; a filtered rectifier counts as unfiltered too."""

    # Whether the power counts as unfiltered at all.
    counts_unfiltered = True

    def rectified(self, applies):
        return self.RunningRealPower() if applies else 0.0

    def three_phase(self, input_type, applies):
        return self.rectified(self.Phases == 0 and self.InputType == input_type and applies)

    def ThreePhaseSixPulseRectPower(self):
        return self.three_phase(SIX_PULSE, self.counts_unfiltered)

    def ThreePhaseTwelvePulseRectPower(self):
        return self.three_phase(TWELVE_PULSE, self.counts_unfiltered)

    def ThreePhaseSixPulseRectFilteredPower(self):
        return self.three_phase(SIX_PULSE, self.InputFilterInstalled)

    def ThreePhaseTwelvePulseRectFilteredPower(self):
        return self.three_phase(TWELVE_PULSE, self.InputFilterInstalled)

    def SinglePhaseRectPower(self, phase):
        return self.rectified(self.Phases == phase and self.InputType == SINGLE_PHASE and self.counts_unfiltered)


class CUPSLoad(ImaginaryByTriangle, RunsAsItStarts, Rectifier):
    """An uninterruptible supply of OutputRating in VA; Loading and Charging are percents."""

    LoadType = 7
    record = ("InputType whole, Family whole, OutputRating real, Loading whole, Charging whole,"
              " InputFilterInstalled flag")

    @property
    def counts_unfiltered(self):
        return self.Family == ON_LINE

    @member
    def RunningAppPower(self):
        if self.Family in STAND_BY_FAMILIES:
            return (self.OutputRating / 0.9) * 1.1
        output = (self.Loading / 100) * self.OutputRating
        return (self.Charging / 100 + 1) * (output / (0.95 if self.Phases == 0 else 0.9))

    @member
    def RunningRealPower(self):
        return self.RunningAppPower() * (0.85 if self.Family == ON_LINE and self.Phases != 0 else 0.95)

    def Summary(self):
        return "UPS" + self.plural()

    def own_props(self):
        return [("Output Rating (kVA)", fixed(self.OutputRating / 1000, 3)), ("Loading", f"{self.Loading}%"),
                ("Charging", f"{self.Charging}%"), ("Input Filter", yes_no(self.InputFilterInstalled))]


class CVFDLoad(ImaginaryByTriangle, Rectifier):
    """A drive with a motor of MtrRating in hp; Efficiency and KVALimit are percents."""

    LoadType = 8
    record = "InputType whole, MtrRating real, Efficiency whole, KVALimit whole, InputFilterInstalled flag"

    @member
    def RunningRealPower(self):
        kw = interpolate(self.MtrRating, self.motors.HP, self.motors.KW)
        return kw / (self.Efficiency / 100) * 1000

    @member
    def RunningAppPower(self):
        return self.RunningRealPower() / 0.9

    @member
    def StartingAppPower(self):
        return (self.KVALimit / 100) * self.RunningAppPower()

    @member
    def StartingRealPower(self):
        return self.StartingAppPower() * 0.9

    @member
    def StartingImgPower(self):
        return root(square(self.StartingAppPower()) - square(self.StartingRealPower()))

    def Summary(self):
        return "VFD" + self.plural()

    def own_props(self):
        return [("Motor HP", plain(self.MtrRating)), ("Drive Eff", f"{self.Efficiency}%"),
                ("Start/Run kVA Limit", f"{self.KVALimit}%"), ("Input Filter", yes_no(self.InputFilterInstalled))]
