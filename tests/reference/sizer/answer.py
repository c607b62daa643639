"""The whole answer for a project, in the shape and with the names of the program's JSON."""

from pathlib import Path

from sizer.database import Database
from sizer.designer import Designer, Limits, permitted_dip
from sizer.errors import NOTHING_TO_SIZE, Raised
from sizer.explanation import Explainer
from sizer.profile import PHASES
from sizer.projectfile import ProjectFile

PROJECT_FIELDS = ("ProjName", "Customer", "Description", "UserName", "Created", "LastModified")
SITE_FIELDS = ("Altitude", "AmbTemp", "Freq", "GensetsInParallel", "Phases", "Fuel", "RiseDutyCode", "Voltage",
               "ConnectCode", "MaxFreqDipEnabled", "MaxHarmonicsEnabled", "MaxVoltageDip", "MaxFreqDip", "MaxHarmonics")
POWERS = ("RunningRealPower", "RunningAppPower", "RunningImgPower",
          "StartingRealPower", "StartingAppPower", "StartingImgPower")
HARMONICS = ("ThreePhaseSixPulseRectPower", "ThreePhaseTwelvePulseRectPower", "ThreePhaseSixPulseRectFilteredPower",
             "ThreePhaseTwelvePulseRectFilteredPower", "ThreePhaseSixPulsePPCRectPower")
PHASE_HARMONICS = ("SinglePhaseRectPower", "SinglePhaseElectBallastPower", "SinglePhaseMagBallastPower")
STEP_POWERS = ("TotalRunningRealPower", "TotalRunningImgPower", "TotalRunningApparentPower",
               "TotalStartingRealPower", "TotalStartingImgPower", "TotalStartingApparentPower")
STEP_HARMONICS = ("TotalSixPulseRectPower", "TotalTwelvePulseRectPower", "TotalSixPulseRectFilteredPower",
                  "TotalTwelvePulseRectFilteredPower", "TotalSixPulsePPCPower")
STEP_PHASE_HARMONICS = ("TotalSinglePhaseRectPower", "TotalElectBallastRealPower", "TotalMagBallastRealPower")
STEP_FLAGS = ("HasFirePump", "HasLoadedMotor", "HasMedicalImageLoad", "HasLoadedMotorWithTap65")


def fields(holder, names):
    return {name: getattr(holder, name) for name in names}


def answers(holder, names):
    return {name: getattr(holder, name)() for name in names}


def answers_by_phase(holder, names, phases):
    return {name: [getattr(holder, name)(phase) for phase in phases] for name in names}


def load_object(load):
    return {**fields(load, ("ID", "LoadType", "name", "Description", "Quantity", "Phases")), "Summary": load.Summary(),
            **answers(load, POWERS + HARMONICS), **answers_by_phase(load, PHASE_HARMONICS, PHASES),
            "Props": [list(row) for row in load.GetProps()]}


def step_object(number, step, site):
    return {"StepNumber": number, **fields(step, ("Description", "MaxVoltageDipOverride")),
            "StepMaxVoltageDip": permitted_dip(step, site), **answers_by_phase(step, STEP_POWERS, (0, *PHASES)),
            **answers(step, STEP_HARMONICS), **answers_by_phase(step, STEP_PHASE_HARMONICS, PHASES),
            **answers(step, STEP_FLAGS), "GetSmallestMedicalDip": step.GetSmallestMedicalDip(),
            "Props": [list(row) for row in step.GetProps()], "Loads": [load_object(load) for load in step.Loads]}


def designer_object(designer, limits):
    return {**fields(designer, ("TotalRunningKW", "PeakStartingKVA", "VTHD_CalcsValid")),
            "DatabaseVersion": designer.database.version, "MinLoading": limits.min_loading,
            "MaxLoading": limits.max_loading, "MaxSetsRecommended": limits.max_chosen,
            "MaxSetsUndersized": limits.max_rejected, "NumChosenSets": len(designer.chosen),
            "NumRejectedSets": len(designer.rejected)}


def sized(path, database, limits, explainer):
    file = ProjectFile(Path(path).read_bytes(), database)
    if not file.steps or not file.steps[0].Loads:
        raise Raised(0, "", NOTHING_TO_SIZE)
    profile = [step_object(number, step, file.site) for number, step in enumerate(file.steps, 1)]
    designer = Designer(database, file.site, file.steps, limits, explainer)
    designer.run()
    return {"File": str(path), "Project": fields(file.project, PROJECT_FIELDS),
            "PowerSystem": fields(file.site, SITE_FIELDS), "LoadProfile": profile,
            "Designer": designer_object(designer, limits), "ChosenSets": designer.chosen,
            "RejectedSets": designer.rejected}


def answers_for(path, database_path, limits=Limits(), every=False):
    """The objects for a project: its sizing, and the explanation of the listed sets or of every candidate.

    An error takes the place of both where a figure cannot be worked out.
    """
    database = Database(database_path)
    try:
        explainer = Explainer(limits)
        return sized(path, database, limits, explainer), explainer.answer(path, every)
    except Raised as error:
        failure = {"File": str(path), "Error": {"Number": error.number, "Source": error.source,
                                                "Description": error.description}}
        return failure, failure
    finally:
        database.close()
