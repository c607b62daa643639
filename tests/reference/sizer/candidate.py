"""What a set of the database gives at a site, before any load is looked at."""

from types import SimpleNamespace

from sizer.database import number, text, whole
from sizer.errors import failing_as, finite

# By the code of temperature rise and duty.
RATING_COLUMNS = ("Rating80C", "Rating105C", "Rating125C", "Rating130C", "Rating150C")
DIP_COLUMNS = ("BaseFreqDipKW", "BaseFreqDip", "ExpC")
NATURAL_GAS = 2
# Share of its starting power that an engine keeps at a site that asks for natural gas.
NATURAL_GAS_SHARE = 0.9


def nominal_rating(row, site):
    """kW of one set; 0 for a code that no column has."""
    if not 0 <= site.RiseDutyCode < len(RATING_COLUMNS):
        return 0.0
    return number(row, RATING_COLUMNS[site.RiseDutyCode], "CDesigner::NominalRating")


def derating(value, base, slope):
    """Factor above the base, the slope in percent per unit of the value."""
    return (100 - (value - base) * slope) / 100 if value > base else 1.0


def derated_rating(nominal, code, database, site):
    """kW of one set at the site's altitude and temperature."""
    source = "CDesigner::DeratedRating"
    row = database.only_row("Derate Codes", code)
    altitude = [number(row, name, source) for name in ("AltDerateBase", "AltDerateSlope")]
    temperature = [number(row, name, source) for name in ("TempDerateBase", "TempDerateSlope")]
    with failing_as(source):
        return finite(derating(site.AmbTemp, temperature[0], temperature[1] / 10) * nominal
                      * derating(site.Altitude, altitude[0], altitude[1] / 100))


def starting_kw(row, site):
    """Of one engine; the fuel that counts is the site's, not the set's."""
    kw = number(row, "StartingPower", "CDesigner::EngineStartingPower")
    return kw * NATURAL_GAS_SHARE if site.Fuel == NATURAL_GAS else kw


def read_alternator(key, database):
    """BasekW in kW, BaseVolts in V, SubtransReact per unit of both; the model number up to its first dash."""
    source = "CDesigner::ReadAlternator"
    row = database.only_row("Alternators", key)
    return SimpleNamespace(ModelNum=text(row, "ModelNum", source).split("-", 1)[0],
                           **{name: number(row, name, source) for name in ("BasekW", "BaseVolts", "SubtransReact")})


class Candidate:
    """Ratings in kW, locked-rotor power in kVA; those of the site are those of all sets in parallel.

    The frequency dips by base_dip percent when a step of base_dip_kw switches on, whatever runs in parallel.
    """

    def __init__(self, row, database, site):
        source = "CDesigner::ChooseSets"
        derate_code = whole(row, "DerateCode", source)
        self.nominal = nominal_rating(row, site)
        self.derated = derated_rating(self.nominal, derate_code, database, site)
        self.site_rating = finite(site.GensetsInParallel * self.derated)
        self.locked_rotor_kva = number(row, "LRkVA", source)
        self.site_locked_rotor_kva = finite(site.GensetsInParallel * self.locked_rotor_kva)
        self.site_starting_kw = finite(site.GensetsInParallel * starting_kw(row, site))
        self.base_dip_kw = self.base_dip = self.dip_exponent = 0.0
        if all(row[column] is not None for column in DIP_COLUMNS):
            self.base_dip_kw, self.base_dip, self.dip_exponent = (number(row, column, source) for column in DIP_COLUMNS)
        self.alternator = read_alternator(whole(row, "AltModel", source), database)
        self.texts = {"ModelNum": text(row, "GensetModel", source), "AltNum": self.alternator.ModelNum,
                      "EngineNum": text(row, "EngineModel", source), "FuelType": whole(row, "Fuel", source)}

    def has_frequency_dip(self):
        return self.base_dip_kw > 0
