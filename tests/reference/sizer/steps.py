"""Load steps: what switches on together, with its totals in W, VA and var."""

from sizer.arithmetic import root, square
from sizer.errors import member
from sizer.linear_loads import CMedEquipLoad
from sizer.motor_loads import TAP_65, CMtrLoad
from sizer.texts import fixed

# The permitted dip, in percent, that a step without medical equipment answers with.
NO_MEDICAL_DIP = 100


def total(name):
    """A total over the loads, each times its quantity; phase 0 is the whole, 1 to 3 are one phase."""

    def walk(self, phase):
        result = 0.0
        for load in self.Loads:
            if phase == 0 or load.Phases == phase:
                result += load.Quantity * getattr(load, name)()
            elif load.Phases == 0:
                result += load.Quantity * (getattr(load, name)() / 3)
        return result

    return named("Total" + name, walk)


def sum_of(title, name):
    """A harmonic total: the loads' figures as they stand, without the quantity."""

    def walk(self, *phase):
        result = 0.0
        for load in self.Loads:
            result += getattr(load, name)(*phase)
        return result

    return named(title, walk)


def named(title, function):
    function.__name__ = title
    return member(function)


class CLoadStep:
    """A step; MaxVoltageDipOverride in percent. IDs of loads count from 0 in their order."""

    def __init__(self, step_id, description, dip):
        self.StepID, self.Description, self.MaxVoltageDipOverride = step_id, description, dip
        self.Loads = []

    def add(self, load):
        load.ID = len(self.Loads)
        self.Loads.append(load)

    TotalRunningRealPower = total("RunningRealPower")
    TotalRunningImgPower = total("RunningImgPower")
    TotalStartingRealPower = total("StartingRealPower")
    TotalStartingImgPower = total("StartingImgPower")

    @member
    def TotalRunningApparentPower(self, phase):
        return root(square(self.TotalRunningImgPower(phase)) + square(self.TotalRunningRealPower(phase)))

    @member
    def TotalStartingApparentPower(self, phase):
        return root(square(self.TotalStartingImgPower(phase)) + square(self.TotalStartingRealPower(phase)))

    TotalSixPulseRectPower = sum_of("TotalSixPulseRectPower", "ThreePhaseSixPulseRectPower")
    TotalTwelvePulseRectPower = sum_of("TotalTwelvePulseRectPower", "ThreePhaseTwelvePulseRectPower")
    TotalSixPulseRectFilteredPower = sum_of("TotalSixPulseRectFilteredPower", "ThreePhaseSixPulseRectFilteredPower")
    TotalTwelvePulseRectFilteredPower = sum_of("TotalTwelvePulseRectFilteredPower",
                                               "ThreePhaseTwelvePulseRectFilteredPower")
    TotalSixPulsePPCPower = sum_of("TotalSixPulsePPCPower", "ThreePhaseSixPulsePPCRectPower")
    TotalSinglePhaseRectPower = sum_of("TotalSinglePhaseRectPower", "SinglePhaseRectPower")
    TotalElectBallastRealPower = sum_of("TotalElectBallastRealPower", "SinglePhaseElectBallastPower")
    TotalMagBallastRealPower = sum_of("TotalMagBallastRealPower", "SinglePhaseMagBallastPower")

    def of_kind(self, kind):
        return [load for load in self.Loads if isinstance(load, kind)]

    def HasFirePump(self):
        return any(motor.FirePump for motor in self.of_kind(CMtrLoad))

    def HasLoadedMotor(self):
        return any(motor.StartsLoaded for motor in self.of_kind(CMtrLoad))

    def HasLoadedMotorWithTap65(self):
        return any(motor.StartsLoaded and motor.StartingMethod == TAP_65 for motor in self.of_kind(CMtrLoad))

    def HasMedicalImageLoad(self):
        return bool(self.of_kind(CMedEquipLoad))

    def GetSmallestMedicalDip(self):
        """Percent."""
        return min([NO_MEDICAL_DIP] + [load.MaxPeakDemandVoltDip for load in self.of_kind(CMedEquipLoad)])

    def GetProps(self):
        return [("Step ID", str(self.StepID)), ("Description", self.Description),
                ("Voltage Dip Override", str(self.MaxVoltageDipOverride)),
                ("Running kW", fixed(self.TotalRunningRealPower(0) / 1000, 3)),
                ("Running kVA", fixed(self.TotalRunningApparentPower(0) / 1000, 3)),
                ("Starting kW", fixed(self.TotalStartingRealPower(0) / 1000, 3)),
                ("Starting kVA", fixed(self.TotalStartingApparentPower(0) / 1000, 3))]
