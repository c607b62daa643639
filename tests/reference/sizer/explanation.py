"""Why each set is recommended or not: the two figures of every test at every step, in the shape of the program's JSON."""

from sizer.designer import (ALTERNATOR_START, DISTORTION, ENGINE_START, FREQUENCY_DIP, LOCKED_ROTOR_DIP, MAX_LOADING,
                            ONE_STEP, PHASE, RATING, VOLTAGE_DIP, Verdict)
from sizer.errors import Close

DIESEL = 1
# Classes of ISO 8528-5, highest first, with the voltage and frequency dip in percent that each permits.
CLASSES = (("G3", 15, 7), ("G2", 20, 10), ("G1", 25, 15))


class Test:
    """What a step asks for and what there is for it."""

    def __init__(self, name, bit, unit, needed, available, applies=True):
        self.name, self.bit, self.unit, self.applies = name, bit, unit, applies
        self.needed, self.available = float(needed), float(available)

    def fails(self):
        return self.applies and self.needed > self.available

    def margin(self):
        """Percent; None where there is nothing to have a share of."""
        if not self.applies or self.available == 0:
            return None
        return 100 * (self.available - self.needed) / self.available

    def record(self):
        margin = self.margin()
        return {"Name": self.name, "Bit": self.bit, "Unit": self.unit, "Needed": self.needed,
                "Available": self.available, "Applies": self.applies, "Fails": self.fails(),
                "Margin": None if margin is None else Close(margin)}


class Explanation:
    """One judged candidate."""

    def __init__(self, verdict, allowed_dips, fate):
        self.verdict, self.fate = verdict, fate
        self.steps = [self.tests(step, allowed) for step, allowed in enumerate(allowed_dips)]

    def tests(self, step, allowed_dip):
        """Of one step, in the order in which they are shown."""
        verdict, candidate = self.verdict, self.verdict.candidate
        site, profile, rating = verdict.site, verdict.profile, candidate.site_rating
        dips, computed = candidate.has_frequency_dip(), verdict.distortion_computed
        return [
            Test("EngineStart", ENGINE_START, "kW", profile.start_kw[step], candidate.site_starting_kw),
            Test("Rating", RATING, "kW", profile.run_kw[step][0], rating),
            Test("MaxLoading", MAX_LOADING, "kW", profile.run_kw[step][0], verdict.max_loading * rating / 100),
            Test("PhaseLoading", PHASE, "kW", max(profile.run_kw[step][1:]), rating / site.Phases),
            Test("OneStepCapability", ONE_STEP, "kW", profile.alone_kw[step], candidate.base_dip_kw, dips),
            Test("FrequencyDip", FREQUENCY_DIP, "%", verdict.frequency_dips[step], site.MaxFreqDip,
                 dips and site.MaxFreqDipEnabled),
            Test("AlternatorStart", ALTERNATOR_START, "kVA", profile.start_kva[step],
                 (allowed_dip / LOCKED_ROTOR_DIP) * candidate.site_locked_rotor_kva),
            Test("VoltageDip", VOLTAGE_DIP, "%", verdict.voltage_dips[step], allowed_dip),
            Test("Distortion", DISTORTION, "%", max(verdict.distortions[step]), site.MaxHarmonics,
                 computed and site.MaxHarmonicsEnabled)]

    def bits(self):
        return sum({test.bit for tests in self.steps for test in tests if test.fails()})

    def tightest(self):
        """The least margin; min takes the first of equal ones."""
        margins = [(number, test) for number, tests in enumerate(self.steps, 1) for test in tests
                   if test.margin() is not None]
        if not margins:
            return None
        number, test = min(margins, key=lambda one: one[1].margin())
        return {"Name": test.name, "StepNumber": number, "Margin": Close(test.margin())}

    def transient_class(self):
        candidate, verdict = self.verdict.candidate, self.verdict
        if not candidate.has_frequency_dip() or candidate.texts["FuelType"] != DIESEL:
            return None
        voltage, frequency = max(verdict.voltage_dips), max(verdict.frequency_dips)
        return next((name for name, most_voltage, most_frequency in CLASSES
                     if voltage <= most_voltage and frequency <= most_frequency), "none")

    def record(self):
        candidate, total = self.verdict.candidate, self.verdict.profile.total_kw()
        loading = 100 * total / candidate.site_rating if candidate.site_rating else None
        return {**{name: candidate.texts[name] for name in ("ModelNum", "AltNum", "EngineNum")},
                "NominalRating": candidate.nominal, "DeratedRating": candidate.derated, "Verdict": self.fate,
                "Class": self.transient_class(), "Loading": loading,
                "Steps": [{"StepNumber": number, "Tests": [test.record() for test in tests]}
                          for number, tests in enumerate(self.steps, 1)],
                "Tightest": self.tightest()}


class Explainer:
    """Takes the place of a designer's lists: keeps every candidate with its fate."""

    def __init__(self, limits):
        self.limits, self.explained = limits, []

    def keep(self, verdict, allowed_dips, fate):
        explanation = Explanation(verdict, allowed_dips, fate)
        assert explanation.bits() == verdict.reason, "the figures do not tell what the tests found"
        self.explained.append(explanation)

    def of(self, fate):
        return [one for one in self.explained if one.fate == fate]

    def listed(self):
        """The sets of both lists in their order."""
        chosen = sorted(self.of(RECOMMENDED), key=rating)[:self.limits.max_chosen]
        return chosen + sorted(self.of(UNDERSIZED), key=rating, reverse=True)[:self.limits.max_rejected]

    def answer(self, path, every):
        sets = self.explained if every else self.listed()
        return {"File": str(path), "Candidates": len(self.explained), "Recommended": len(self.of(RECOMMENDED)),
                "Undersized": len(self.of(UNDERSIZED)), "BelowMinLoading": len(self.of(BELOW_LOADING)),
                "Sets": [one.record() for one in sets]}


RECOMMENDED, UNDERSIZED, BELOW_LOADING = Verdict.FATES


def rating(explanation):
    return explanation.verdict.candidate.derated
