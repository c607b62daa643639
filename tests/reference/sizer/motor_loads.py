"""Loads that start as motors: motors and air conditioners."""

from sizer.arithmetic import interpolate, locked_rotor_kva_per_hp, root, sine_for
from sizer.errors import member
from sizer.load import ImaginaryByTriangle, Load
from sizer.texts import fixed, plain, yes_no

HORSEPOWER, KILOWATTS, AMPERES = 0, 1, 2
SOLID_STATE = 6
TAP_65 = 3

# Starting method: its text among the properties and in the summary.
STARTING_METHODS = {1: ("Across the Line", ", w/ A.T.L. starting"),
                    2: ("80% Tapped Autotransformer", ", w/ 80% Autotransformer starting"),
                    TAP_65: ("65% Tapped Autotransformer", ", w/ 65% Autotransformer starting"),
                    4: ("Part Winding", ", w/ part-winding starting"),
                    5: ("Wye-Delta", ", w/ wye-delta starting")}


class StartsAsMotor(ImaginaryByTriangle, Load):
    """Figures worked out on reading: running watts and volt_amperes, starting_va and StartingPF."""

    def RunningRealPower(self):
        return self.watts

    def RunningAppPower(self):
        return self.volt_amperes

    def StartingAppPower(self):
        return self.starting_va

    @member
    def StartingRealPower(self):
        return self.StartingPF * self.starting_va


class CMtrLoad(StartsAsMotor):
    """A motor, entered by horsepower, running kilowatts or amperes."""

    LoadType = 5

    def read_record(self, file, site):
        self.read_fields(file, "DataEntryMethod whole, CodeLetter text, StartingMethod whole, StartsLoaded flag,"
                               " FirePump flag")
        self.CodeLetter = self.CodeLetter.strip(" ").upper()
        {HORSEPOWER: self.read_horsepower, KILOWATTS: self.read_watts,
         AMPERES: self.read_amperes}[self.DataEntryMethod](file, site)
        self.read_fields(file, "starting_va real, StartingPF real, SolidStateCurrentLimit whole")

    def read_horsepower(self, file, site):
        self.HP = file.real()
        kw = interpolate(self.HP, self.motors.HP, self.motors.KW)
        self.watts, self.volt_amperes = kw * 1000, interpolate(kw, self.motors.KW, self.motors.KVA) * 1000

    def read_watts(self, file, site):
        """The table of kilowatts is asked with watts, and its kVA stand for VA: project files reopen that way."""
        self.watts = file.real()
        self.volt_amperes = interpolate(self.watts, self.motors.KW, self.motors.KVA)

    def read_amperes(self, file, site):
        self.RunningAmps, self.StartingAmps = file.real(), file.real()
        kva = self.RunningAmps * site.Voltage * root(3 if self.Phases == 0 else 1) / 1000
        self.watts, self.volt_amperes = interpolate(kva, self.motors.KVA, self.motors.KW) * 1000, kva * 1000

    @member
    def StartingImgPower(self):
        return sine_for(self.StartingPF) * self.starting_va

    def amperes_text(self):
        return f"{fixed(self.StartingAmps, 1)}/{fixed(self.RunningAmps, 1)}"

    def size_text(self):
        if self.DataEntryMethod == HORSEPOWER:
            return f"{fixed(self.HP, 2)} HP"
        return f"{fixed(self.watts / 1000, 3)} kW" if self.DataEntryMethod == KILOWATTS else f"{self.amperes_text()} A"

    def starter_texts(self):
        if self.StartingMethod == SOLID_STATE:
            return "Solid State", f", w/ {self.SolidStateCurrentLimit}% solid start starting"
        return STARTING_METHODS.get(self.StartingMethod, ("Unknown", ""))

    def Summary(self):
        phases = "3 phase" if self.Phases == 0 else "1 phase"
        loaded = "loaded" if self.StartsLoaded else "unloaded"
        pump = ", fire pump " if self.FirePump else " "
        return (f"{self.size_text()}, {phases}, code {self.CodeLetter}, {loaded}{pump}motor{self.plural()}"
                f"{self.starter_texts()[1]}")

    def size_props(self):
        if self.DataEntryMethod == HORSEPOWER:
            return [("Data Entry Method", "HP"), ("HP", plain(self.HP))]
        if self.DataEntryMethod == KILOWATTS:
            return [("Data Entry Method", "Running KW"), ("Running kW", fixed(self.watts / 1000, 3))]
        return [("Data Entry Method", "Start/Run Amps"), ("Start/Run Amps", self.amperes_text())]

    def own_props(self):
        return [("Starts Loaded", yes_no(self.StartsLoaded)), ("Starting Method", self.starter_texts()[0]),
                ("Code Letter", self.CodeLetter), *self.size_props(), ("Starting PF", fixed(self.StartingPF, 2)),
                ("Starting kVA", fixed(self.starting_va / 1000, 3)),
                ("SS Start Current Limit", str(self.SolidStateCurrentLimit)), ("Fire Pump", yes_no(self.FirePump))]


# Entry method of an air conditioner: the unit's label and the horsepower of one unit.
COOLING_SIZES = {0: ("BTU/hr", 0.00016), 1: ("Tons", 2), 2: ("HP", 1)}

# To which every largest size comes; by BTU/hr the product is a rounding above it.
MOST_HORSEPOWER = 1000.0


class CAirCondLoad(StartsAsMotor):
    """An air conditioner as the motor of its compressor."""

    LoadType = 0

    def read_record(self, file, site):
        self.read_fields(file, "DataEntryMethod whole, size real")
        hp = min(self.size * COOLING_SIZES[self.DataEntryMethod][1], MOST_HORSEPOWER)
        kw = interpolate(hp, self.motors.HP, self.motors.KW)
        self.watts, self.volt_amperes = kw * 1000, interpolate(kw, self.motors.KW, self.motors.KVA) * 1000
        self.starting_va = locked_rotor_kva_per_hp(hp) * hp * 1000
        self.StartingPF = interpolate(hp, self.motors.HP, self.motors.SPF)

    @member
    def StartingImgPower(self):
        return self.starting_va * self.StartingPF * sine_for(self.StartingPF) / self.StartingPF

    def Summary(self):
        return ("3 phase " if self.Phases == 0 else "1 phase ") + "air conditioner" + self.plural()

    def own_props(self):
        label = COOLING_SIZES[self.DataEntryMethod][0]
        return [("Data Entry Method", label), (label, plain(self.size)), ("Starting PF", plain(self.StartingPF)),
                ("Starting kVA", fixed(self.starting_va / 1000, 3))]
