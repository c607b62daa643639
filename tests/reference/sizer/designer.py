"""Judges every candidate for a site and sorts those that serve from those that do not."""

from sizer.arithmetic import power
from sizer.candidate import Candidate
from sizer.distortion import CONNECTIONS, distortion
from sizer.errors import failing_as, finite
from sizer.profile import Profile

# Bits of a rejection and their texts, in the order in which these are shown.
ENGINE_START, RATING, PHASE, MAX_LOADING, ALTERNATOR_START, DISTORTION = 1, 2, 4, 8, 16, 32
FREQUENCY_DIP, ONE_STEP, VOLTAGE_DIP = 128, 256, 512
REASONS = (
    (ENGINE_START, "The engine does not have enough starting power."),
    (ALTERNATOR_START, "The alternator does not have enough kVA to start at least one load step."),
    (RATING, "The genset rating has been exceeded."),
    (PHASE, "At least one phase of the alternator is overloaded."),
    (MAX_LOADING, "The user specified max. loading was exceeded."),
    (DISTORTION, "The allowed VTHD on at least one phase was exceeded."),
    (VOLTAGE_DIP, "The allowed voltage dip was exceeded on at least one load step."),
    (FREQUENCY_DIP, "The allowed frequency dip was exceeded on at least one load step."),
    (ONE_STEP, "At least one load step exceeded the genset's one step load capability."))

# Percent of dip for which a set's locked-rotor kVA hold.
LOCKED_ROTOR_DIP = 35
# Percent of voltage dip that each percent of frequency dip adds.
DIP_PER_FREQUENCY_DIP = 0.4
# Permitted dips in percent, by the motors of a step.
PUMP_DIP, LOADED_MOTOR_DIP, ANY_DIP = 15, 25, 100


def permitted_dip(step, site):
    """Percent."""
    limit = ANY_DIP
    if step.HasFirePump() or step.HasLoadedMotorWithTap65():
        limit = PUMP_DIP
    elif step.HasLoadedMotor():
        limit = LOADED_MOTOR_DIP
    limit = min(limit, site.MaxVoltageDip, step.MaxVoltageDipOverride)
    return min(limit, step.GetSmallestMedicalDip()) if step.HasMedicalImageLoad() else limit


class Limits:
    """Loading in percent of the site rating, and the lengths of the two lists."""

    def __init__(self, min_loading=30, max_loading=80, max_chosen=16, max_rejected=5):
        self.min_loading, self.max_loading = min_loading, max_loading
        self.max_chosen, self.max_rejected = max_chosen, max_rejected


class Verdict:
    """What the tests of all steps find about one candidate: rejection bits, and dips and distortion in percent."""

    FATES = ("recommended", "undersized", "below minimum loading")

    def __init__(self, candidate, site, profile, max_loading):
        self.candidate, self.site, self.profile, self.max_loading = candidate, site, profile, max_loading
        self.reason, self.distortion_computed = 0, False
        self.voltage_dips, self.frequency_dips, self.distortions = [], [], []

    def flag(self, bit, fails):
        self.reason |= bit if fails else 0

    def judge_step(self, step, allowed_dip):
        """The tests of a step; allowed_dip in percent."""
        self.judge_running(step)
        frequency_dip = self.judge_frequency_dip(self.profile.alone_kw[step])
        self.judge_voltage_dip(self.profile.start_kva[step], allowed_dip, frequency_dip)
        self.judge_distortion(step)

    def judge_running(self, step):
        rating, running = self.candidate.site_rating, self.profile.run_kw[step]
        self.flag(ENGINE_START, self.candidate.site_starting_kw < self.profile.start_kw[step])
        self.flag(RATING, rating < running[0])
        self.flag(MAX_LOADING, self.max_loading * rating / 100 < running[0])
        self.flag(PHASE, any(rating / self.site.Phases < kw for kw in running[1:]))

    def judge_frequency_dip(self, step_kw):
        """The dip that a step of that power causes, in percent; 0 where the set has no such data."""
        candidate, dip = self.candidate, 0.0
        if candidate.has_frequency_dip():
            dip = finite(candidate.base_dip * power(step_kw / candidate.base_dip_kw, candidate.dip_exponent))
            self.flag(ONE_STEP, step_kw > candidate.base_dip_kw)
            self.flag(FREQUENCY_DIP, self.site.MaxFreqDipEnabled and dip > self.site.MaxFreqDip)
        self.frequency_dips.append(dip)
        return dip

    def judge_voltage_dip(self, start_kva, allowed, frequency_dip):
        kva, dip = self.candidate.site_locked_rotor_kva, 100.0
        if kva > 0:
            dip = finite((start_kva / kva) * LOCKED_ROTOR_DIP + frequency_dip * DIP_PER_FREQUENCY_DIP)
        self.flag(ALTERNATOR_START, (allowed / LOCKED_ROTOR_DIP) * kva < start_kva)
        self.flag(VOLTAGE_DIP, dip > allowed)
        self.voltage_dips.append(dip)

    def judge_distortion(self, step):
        found = distortion(self.candidate.alternator, self.site, self.profile, step)
        self.distortion_computed = found is not None
        if found and self.site.MaxHarmonicsEnabled:
            self.flag(DISTORTION, max(found) > self.site.MaxHarmonics)
        self.distortions.append(found or [0.0, 0.0, 0.0])

    def fate(self, min_loading):
        """A set that serves but would run below the least loading is dropped."""
        if self.reason:
            return self.FATES[1]
        return self.FATES[0 if min_loading * self.candidate.site_rating / 100 <= self.profile.total_kw() else 2]

    def worst_voltage_dip(self):
        return max([0.0, *self.voltage_dips]) if self.candidate.site_locked_rotor_kva > 0 else 0.0

    def record(self):
        """The result as the program answers it."""
        candidate = self.candidate
        by_phase = list(zip(*self.distortions))
        rejection = {"RejectionReason": self.reason, "Reasons": [words for bit, words in REASONS if self.reason & bit]}
        return {**(rejection if self.reason else {}), **candidate.texts, "NominalRating": candidate.nominal,
                "DeratedRating": candidate.derated, "StartKVA35": candidate.locked_rotor_kva,
                "VoltageDips": self.voltage_dips, "FreqDips": self.frequency_dips,
                "StepVTHD_A": list(by_phase[0]), "StepVTHD_B": list(by_phase[1]), "StepVTHD_C": list(by_phase[2]),
                "MaxStepVoltDip": self.worst_voltage_dip(), "MaxStepFreqDip": max([0.0, *self.frequency_dips]),
                "MaxStepVTHD": max(map(max, self.distortions)), "FreqDipAvail": candidate.has_frequency_dip()}


class Designer:
    """One run over the candidates of a site; without any, the totals, in kW and kVA, stay at nothing."""

    def __init__(self, database, site, steps, limits, explainer=None):
        self.database, self.site, self.steps, self.limits = database, site, steps, limits
        self.explainer = explainer
        self.chosen, self.rejected = [], []
        self.TotalRunningKW = self.PeakStartingKVA = 0.0
        self.VTHD_CalcsValid = False

    def run(self):
        with failing_as("CDesigner::ChooseSets"):
            rows = self.database.candidates(self.site)
            if rows:
                self.judge_all(rows)
        self.chosen = sorted(self.chosen, key=rating)[:self.limits.max_chosen]
        # Sorting backwards keeps the order of equal ratings, too.
        self.rejected = sorted(self.rejected, key=rating, reverse=True)[:self.limits.max_rejected]

    def judge_all(self, rows):
        profile = Profile(self.steps)
        allowed_dips = [permitted_dip(step, self.site) for step in self.steps]
        self.VTHD_CalcsValid = self.site.ConnectCode in CONNECTIONS
        self.TotalRunningKW, self.PeakStartingKVA = finite(profile.total_kw()), finite(max([0.0, *profile.start_kva]))
        for row in rows:
            verdict = Verdict(Candidate(row, self.database, self.site), self.site, profile,
                              self.limits.max_loading)
            for step, allowed in enumerate(allowed_dips):
                verdict.judge_step(step, allowed)
            fate = verdict.fate(self.limits.min_loading)
            self.keep(verdict, fate)
            if self.explainer:
                self.explainer.keep(verdict, allowed_dips, fate)

    def keep(self, verdict, fate):
        """A set below its least loading stands in neither list."""
        if fate == Verdict.FATES[1]:
            self.rejected.append(verdict.record())
        elif fate == Verdict.FATES[0]:
            self.chosen.append(verdict.record())


def rating(record):
    return record["DeratedRating"]
