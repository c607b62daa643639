"""The JSON project of a `.prj` file, by the names that its members have there; codes stand as numbers."""

import json

from sizer.projectfile import PROJECT_FIELDS, SITE_FIELDS, ProjectFile

COMMON = ("name", "Description", "Quantity", "Phases")
# By the code of the kind: its name, and the members of its own. Where the second computation keeps a member under a name
# of its own, that stands behind a colon.
KINDS = (("AirConditioner", "DataEntryMethod"),
         ("BatteryCharger", "BatteryVoltage ChargeCurrent ChargerInput ChargerType"),
         ("Lighting", "LightType Ballast RunningRealPower:watts RunningPowerFactor StartingRealPower:starting_watts"
                      " StartingPowerFactor"),
         ("MedicalImaging", "ContVA PeakVA ContPowerFactor PeakPowerFactor MaxPeakDemandVoltDip InputType"),
         ("Miscellaneous", "RunningRealPower:watts RunningPowerFactor"),
         ("Motor", "DataEntryMethod CodeLetter StartingMethod StartsLoaded FirePump StartingAppPower:starting_va StartingPF"
                   " SolidStateCurrentLimit"),
         ("Office", "NumPCs NumPrinters NumFaxes NumCopiers"),
         ("UPS", "InputType Family OutputRating Loading Charging InputFilterInstalled"),
         ("Drive", "InputType MtrRating Efficiency KVALimit InputFilterInstalled"))
# The members that a size is entered by, by kind and entry method.
SIZES = {"AirConditioner": ("BTU:size", "Tonnage:size", "HP:size"),
         "Motor": ("HP", "RunningRealPower:watts", "RunningAmps StartingAmps")}


def members(holder, names):
    for name in names:
        member, _, attribute = name.partition(":")
        yield member, getattr(holder, attribute or member)


def load_object(load):
    kind, own = KINDS[load.LoadType]
    names = [*COMMON, *own.split()]
    if kind in SIZES:
        names += SIZES[kind][load.DataEntryMethod].split()
    return {"LoadType": kind, **dict(members(load, names))}


def step_object(step):
    return {**dict(members(step, ("Description", "MaxVoltageDipOverride"))),
            "Loads": [load_object(load) for load in step.Loads]}


def json_twin(data, database):
    """The bytes of a JSON project."""
    file = ProjectFile(data, database)
    twin = {"Format": "genvara-project", "Version": 1,
            "Project": dict(members(file.project, [name for name, _ in PROJECT_FIELDS])),
            "PowerSystem": dict(members(file.site, [name for name, _ in SITE_FIELDS])),
            "LoadProfile": [step_object(step) for step in file.steps]}
    return json.dumps(twin, ensure_ascii=False).encode("utf-8")
