"""What the projects of a run made the sizing meet. A run that met too little proves nothing."""

from collections import Counter

from sizer.designer import REASONS, Verdict
from sizer.projectfile import KINDS

# Uninterruptible supplies by family, input type, filter and whether they are on one phase.
SUPPLIES = [(family, pulse, filtered, one_phase) for family in (0, 1, 2) for filtered in (False, True)
            for pulse, one_phase in ((1, False), (2, False), (3, False), (4, False), (5, True))]
# What filters may be all that a phase has.
SIX_PULSE, TWELVE_PULSE = "six-pulse", "twelve-pulse"
ALONE = (SIX_PULSE, TWELVE_PULSE, f"{SIX_PULSE} and {TWELVE_PULSE}")

TESTS = ("EngineStart", "Rating", "MaxLoading", "PhaseLoading", "OneStepCapability", "FrequencyDip", "AlternatorStart",
         "VoltageDip", "Distortion")
OUTCOMES = ("pass", "fail", "do not apply", "are tightest")
NEVER = [(name, "do not apply") for name in TESTS if name not in ("OneStepCapability", "FrequencyDip", "Distortion")]
STEP_FLAGS = ("HasFirePump", "HasLoadedMotor", "HasMedicalImageLoad", "HasLoadedMotorWithTap65")
DEMANDED = (*(f"loads of kind {kind.LoadType}" for kind in KINDS), *(f"loads with phases {code}" for code in range(4)),
            *(f"sets rejected for {bit}" for bit, _ in REASONS), *(f"steps with {flag}" for flag in STEP_FLAGS),
            "chosen sets", "sets of equal rating side by side", "figures of distortion", "sets without frequency dips",
            "projects without sets", "projects of several steps",
            *(f"supplies {supply}" for supply in SUPPLIES),
            *(f"phases with {filters} filters alone" for filters in ALONE),
            *(f"sets explained as {fate}" for fate in Verdict.FATES),
            *(f"sets of transient class {name}" for name in ("G1", "G2", "G3", "none", None)),
            *(f"tests of {name} that {outcome}" for name in TESTS for outcome in OUTCOMES if (name, outcome) not in NEVER))


class StandingLoad:
    """Non-linear load in W, as it grows from step to step."""

    def __init__(self):
        self.six = self.twelve = self.balanced = 0.0
        self.by_phase = [0.0] * 3

    def add(self, step):
        self.six += step["TotalSixPulseRectFilteredPower"]
        self.twelve += step["TotalTwelvePulseRectFilteredPower"]
        self.balanced += sum(step[f"Total{name}Power"] for name in ("SixPulseRect", "TwelvePulseRect", "SixPulsePPC"))
        for name in ("SinglePhaseRectPower", "ElectBallastRealPower", "MagBallastRealPower"):
            self.by_phase = [sum(pair) for pair in zip(self.by_phase, step[f"Total{name}"])]

    def filters(self):
        return " and ".join(name for name, watts in ((SIX_PULSE, self.six), (TWELVE_PULSE, self.twelve)) if watts > 0)

    def idle_phases(self):
        return sum(watts == 0 and self.balanced == 0 for watts in self.by_phase)


class Coverage:
    """Counts over expected answers."""

    def __init__(self):
        self.met = Counter()

    def add(self, answer):
        self.met["projects"] += 1
        if "Error" in answer:
            self.met["projects without an answer"] += 1
            return
        self.met["projects of several steps"] += len(answer["LoadProfile"]) > 1
        self.met["projects without sets"] += not answer["ChosenSets"] and not answer["RejectedSets"]
        for step in answer["LoadProfile"]:
            self.add_step(step)
        self.add_filters(answer)
        for records in (answer["ChosenSets"], answer["RejectedSets"]):
            self.add_sets(records)

    def add_project(self, project):
        """What an answer does not show of a project."""
        for supply in project.supplies():
            self.met[f"supplies {supply}"] += 1

    def add_filters(self, answer):
        """The phases that filtered rectifiers could correct and that have no non-linear load."""
        standing = StandingLoad()
        for step in answer["LoadProfile"]:
            standing.add(step)
            if answer["Designer"]["VTHD_CalcsValid"] and standing.filters():
                self.met[f"phases with {standing.filters()} filters alone"] += standing.idle_phases()

    def add_step(self, step):
        for flag in STEP_FLAGS:
            self.met[f"steps with {flag}"] += step[flag]
        for load in step["Loads"]:
            self.met[f"loads of kind {load['LoadType']}"] += 1
            self.met[f"loads with phases {load['Phases']}"] += 1

    def add_sets(self, records):
        ratings = [record["DeratedRating"] for record in records]
        self.met["sets of equal rating side by side"] += len(ratings) - len(set(ratings))
        for record in records:
            reason = record.get("RejectionReason", 0)
            self.met["chosen sets"] += reason == 0
            self.met["figures of distortion"] += record["MaxStepVTHD"] > 0
            self.met["sets without frequency dips"] += not record["FreqDipAvail"]
            for bit, _ in REASONS:
                self.met[f"sets rejected for {bit}"] += bool(reason & bit)

    def add_explanation(self, explanation):
        for one in explanation.get("Sets", ()):
            self.met[f"sets explained as {one['Verdict']}"] += 1
            self.met[f"sets of transient class {one['Class']}"] += 1
            if one["Tightest"]:
                self.met[f"tests of {one['Tightest']['Name']} that are tightest"] += 1
            for step in one["Steps"]:
                for test in step["Tests"]:
                    outcome = "fail" if test["Fails"] else "pass"
                    self.met[f"tests of {test['Name']} that {outcome if test['Applies'] else 'do not apply'}"] += 1

    def missing(self):
        return [name for name in DEMANDED if not self.met[name]]
