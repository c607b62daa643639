"""What the projects of a run made the sizing meet. A run that met too little proves nothing."""

from collections import Counter

from sizer.designer import REASONS, Verdict
from sizer.projectfile import KINDS

TESTS = ("EngineStart", "Rating", "MaxLoading", "PhaseLoading", "OneStepCapability", "FrequencyDip", "AlternatorStart",
         "VoltageDip", "Distortion")
OUTCOMES = ("pass", "fail", "do not apply", "are tightest")
NEVER = [(name, "do not apply") for name in TESTS if name not in ("OneStepCapability", "FrequencyDip", "Distortion")]
STEP_FLAGS = ("HasFirePump", "HasLoadedMotor", "HasMedicalImageLoad", "HasLoadedMotorWithTap65")
DEMANDED = (*(f"loads of kind {kind.LoadType}" for kind in KINDS), *(f"loads with phases {code}" for code in range(4)),
            *(f"sets rejected for {bit}" for bit, _ in REASONS), *(f"steps with {flag}" for flag in STEP_FLAGS),
            "chosen sets", "sets of equal rating side by side", "figures of distortion", "sets without frequency dips",
            "projects without sets", "projects of several steps",
            *(f"sets explained as {fate}" for fate in Verdict.FATES),
            *(f"sets of transient class {name}" for name in ("G1", "G2", "G3", "none", None)),
            *(f"tests of {name} that {outcome}" for name in TESTS for outcome in OUTCOMES if (name, outcome) not in NEVER))


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
        for records in (answer["ChosenSets"], answer["RejectedSets"]):
            self.add_sets(records)

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
