"""Reports of every sample: their paragraphs, with fonts and tab stops, against paragraphs put together here from
the JSON of the same sizing; and the same as readable text against files, so that a change is seen by eye.

    test_sample_reports.py GENVARA-CLI SOURCE-FOLDER [--update]
"""
import json
import math
import pathlib
import subprocess
import sys
import tempfile
from decimal import ROUND_HALF_UP, Decimal

import rtf_text

NOW = "2026-01-02 15:04:05"
RULE, TOTALS_RULE = "_" * 59, "_" * 68
FUELS = {1: "Diesel", 2: "Nat. Gas", 3: "L.P.", 4: "Gasoline"}
RISES = [80, 105, 125, 130, 150]
MONTHS = ("January February March April May June July August September October November December").split()
SUGGESTIONS = ["Check that the voltage/frequency/connection combination is available.",
               "Change the minimum/maximum allowed loading.", "Increase the allowed alternator temperature rise.",
               "Increase the maximum voltage or frequency dip.", "Increase the maximum Vthd."]


def fixed(value, places):
    """A pattern of zeros: half away from zero on the decimal form at 15 significant digits."""
    number = Decimal("%.14e" % value).quantize(Decimal(1).scaleb(-places), ROUND_HALF_UP)
    return str(abs(number) if number == 0 else number)


def date(iso):
    day, time = iso.replace(" ", "T").split("T")
    year, month, number = map(int, day.split("-"))
    hour, minute, second = map(int, time.split(":"))
    return (f"{MONTHS[month - 1]} {number}, {year:04}; {(hour + 11) % 12 + 1:02}:{minute:02}:{second:02} "
            f"{'AM' if hour < 12 else 'PM'}")


# Fonts as face, half points, bold, italic.
ARIAL, TIMES = 0, 1
TITLE, HEADING, RULE_FONT = (ARIAL, 40, True, True), (ARIAL, 28, True, True), (ARIAL, 28, True, False)
LABEL, VALUE = (TIMES, 24, True, False), (TIMES, 24, False, False)
COLUMN_HEAD, STEP_HEAD, CELL = (ARIAL, 20, True, False), (TIMES, 20, True, False), (TIMES, 20, False, False)
TOTALS_FONT = (ARIAL, 24, False, False)

SET_STOPS = ("1267", "4406")
SITE_STOPS = ("r2966", "3067", "4320", "dec6307", "6480")
RATING_STOPS = ("dec3787",)
TABLE_STOPS = ("907", "1627", "2520", "3427", "4320", "5227", "6120", "7027", "7920")
LIST_STOPS = ("2520",)


class Page:
    """Paragraphs as a report should have them, in the form in which the reader gives them."""

    def __init__(self, title):
        self.paragraphs, self.state = [], ("centre", ())
        self.ends = set()
        self.line((TITLE, "Genvara"))
        self.line((TITLE, title))
        self.line()

    def stops(self, *stops):
        self.state = ("left", stops)

    def line(self, *runs):
        """One paragraph; neighbouring runs of one font are one."""
        joined = []
        for font, text in runs:
            if joined and joined[-1][0] == font:
                joined[-1] = (font, joined[-1][1] + text)
            elif text:
                joined.append((font, text))
        self.paragraphs.append((self.state, joined))

    def row(self, *pieces):
        """Labels and values in turn."""
        self.line(*zip([LABEL, VALUE] * len(pieces), pieces))

    def section(self):
        """A rule; the page before it may end there."""
        self.may_end()
        self.line((RULE_FONT, RULE))

    def may_end(self):
        """A page may end behind the last paragraph."""
        self.ends.add(len(self.paragraphs) - 1)

    def kept(self):
        """As the reader gives it: whether each paragraph stays with the next one, and in one piece."""
        self.may_end()
        return [(index not in self.ends, True) for index in range(len(self.paragraphs))]

    def heading(self, text):
        self.line((HEADING, text))
        self.line()


def header(title, project):
    page = Page(title)
    page.stops()
    page.row("Project\t\t", project["ProjName"])
    page.row("Customer\t", project["Customer"])
    return page


def informational(page, result):
    project = result["Project"]
    page.section()
    page.heading("Informational")
    page.stops(*LIST_STOPS)
    page.row("Program Version\t", "8.0.0")
    page.row("Database Version\t", result["Designer"]["DatabaseVersion"])
    page.line()
    page.row("Project Created\t", date(project["Created"]))
    page.row("Project Last Saved\t", date(project["LastModified"]))
    page.row("Report Created\t", date(NOW))
    page.line()
    page.row("Project Created By\t", project["UserName"])
    return page


def generator_set(page, chosen, count):
    page.section()
    page.heading("Generator Set" if count == 1 else "Generator Sets")
    page.stops(*SET_STOPS)
    page.row("Model No.\t", f"{chosen['ModelNum']}\t", "Gensets\t", f"{count}")
    page.row("Engine\t", f"{chosen['EngineNum']} ({FUELS[chosen['FuelType']]})")
    page.row("Alternator\t", chosen["AltNum"])
    page.section()


def sizing(result, chosen, undersized, metric):
    site, designer = result["PowerSystem"], result["Designer"]
    count = site["GensetsInParallel"]
    neutral = site["Voltage"] / (math.sqrt(3) if site["ConnectCode"] == 1 else 2)
    altitude = site["Altitude"] * (1 if metric else 3.28084)
    temperature = site["AmbTemp"] if metric else (9 / 5) * site["AmbTemp"] + 32
    run, peak = designer["TotalRunningKW"], designer["PeakStartingKVA"]
    valid = designer["VTHD_CalcsValid"] if not undersized or result["ChosenSets"] else True

    def allowed(enabled, limit):
        return f"( {limit}% allowed )" if enabled else "( no restriction )"

    per_set = "" if count == 1 else " per set"
    page = header("Undersized Generator Set" if undersized else "Generator Set Sizing", result["Project"])
    generator_set(page, chosen, count)
    page.heading("Performance Summary")
    page.stops(*SITE_STOPS)
    page.row("LN / LL Voltage\t", f"{fixed(neutral, 0)}/{site['Voltage']}\tvolts\t",
             "Altitude\t\t", f"{fixed(altitude, 0)}\t{'meters' if metric else 'feet'}")
    page.row("Frequency\t", f"{site['Freq']}\thertz\t",
             "Ambient Temp.\t", f"{fixed(temperature, 0)}\t{'C' if metric else 'F'}")
    page.row("Phase(s)\t", f"{site['Phases']}\tphase")
    page.line()
    page.stops(*RATING_STOPS)
    page.row(f"Genset Rating @ {RISES[site['RiseDutyCode']]}C Rise\t", f"{fixed(chosen['NominalRating'], 2)} kW")
    page.row("Genset Derated Rating\t", f"{fixed(chosen['DeratedRating'], 2)} kW")
    page.row("Total Running Power\t", f"{fixed(run / count, 2)} kW{per_set}")
    page.row("Percent of Available kW Used\t", f"{fixed(run * 100 / (count * chosen['DeratedRating']), 2)} %")
    page.line()
    page.row("Alternator Starting kVA\t", f"{fixed(chosen['StartKVA35'], 2)} kVA @ 35% dip")
    page.row("Peak Starting kVA\t", f"{fixed(peak / count, 2)} kVA{per_set}")
    page.row("Percent of Available kVA Used\t", f"{fixed(peak * 100 / (count * chosen['StartKVA35']), 2)} %")
    page.line()
    page.row("Maximum Voltage Dip\t", f"{fixed(chosen['MaxStepVoltDip'], 2)} %")
    page.row("Maximum Frequency Dip\t", f"{fixed(chosen['MaxStepFreqDip'], 2)} %\t"
             f"{allowed(site['MaxFreqDipEnabled'], site['MaxFreqDip'])}")
    page.row("Voltage THD\t", f"{fixed(chosen['MaxStepVTHD'], 2)} %\t"
             f"{allowed(site['MaxHarmonicsEnabled'], site['MaxHarmonics'])}" if valid else "N/A")
    if undersized:
        page.section()
        page.heading("Reasons for Rejection")
        page.stops(*LIST_STOPS)
        for reason in chosen["Reasons"]:
            page.line((VALUE, reason))
    return informational(page, result)


def torque(load, dip):
    """Percent of the torque of a motor, from the texts of its properties; nothing unless it starts loaded."""
    props = dict(load["Props"])
    if load["LoadType"] != 5 or props["Starts Loaded"] != "YES":
        return []
    factors = {"Across the Line": 1.0, "80% Tapped Autotransformer": 0.8, "65% Tapped Autotransformer": 0.65,
               "Part Winding": 0.84, "Wye-Delta": 0.577,
               "Solid State": math.sqrt(1 / (int(props["SS Start Current Limit"]) / 100))}
    share = ((1 - dip / 100) * factors[props["Starting Method"]]) ** 2
    return [f"   Rated motor torque from full voltage starting = {fixed(100 * share, 1)}%"]


def summary(result, chosen, undersized):
    valid = result["Designer"]["VTHD_CalcsValid"]

    def factor(real, apparent):
        return fixed(real / apparent, 2) if apparent else "?.??"

    def distortion(step):
        return "/".join(fixed(chosen[f"StepVTHD_{phase}"][step], 1) + "%" for phase in "ABC")

    page = header(("Undersized " if undersized else "") + "Generator Load Profile", result["Project"])
    generator_set(page, chosen, result["PowerSystem"]["GensetsInParallel"])
    page.heading("Load Profile")
    page.stops(*TABLE_STOPS)
    page.line((COLUMN_HEAD, "\t\tRun\tRun\tRun\tStart\tStart\tVolt\tFreq\tVolt (L-N)"))
    page.line((COLUMN_HEAD, "\tQty\tkW\tkVA\tpF\tkW\tkVA\tDip\tDip\tTHD"))
    page.line()
    total_kw = total_kva = 0.0
    for index, step in enumerate(result["LoadProfile"]):
        page.line((STEP_HEAD, f"Step #{index + 1}\t{step['Description']}"))
        for load in step["Loads"]:
            count = load["Quantity"]
            page.line((CELL, f"   {load['name']}  ({load['Summary']})"))
            for line in torque(load, chosen["VoltageDips"][index]):
                page.line((CELL, line))
            figures = [fixed(load[key] * count / 1000, 2) for key in
                       ("RunningRealPower", "RunningAppPower", "StartingRealPower", "StartingAppPower")]
            figures.insert(2, factor(load["RunningRealPower"], load["RunningAppPower"]))
            page.line((CELL, "\t".join(["", str(count)] + figures)))
        kw, kva, start_kw, start_kva = (step[f"Total{key}Power"][0] / 1000 for key in
                                        ("RunningReal", "RunningApparent", "StartingReal", "StartingApparent"))
        total_kw, total_kva = total_kw + kw, total_kva + kva
        totals = ["Step Totals", fixed(kw, 2), fixed(kva, 2), factor(kw, kva), fixed(start_kw, 2),
                  fixed(start_kva, 2), fixed(chosen["VoltageDips"][index], 2), fixed(chosen["FreqDips"][index], 2)]
        page.line((TOTALS_FONT, TOTALS_RULE))
        page.line((CELL, "\t".join(totals + ([distortion(index)] if valid or undersized else []))))
        page.line((CELL, f"Cum. Totals\t{fixed(total_kw, 2)}\t{fixed(total_kva, 2)}\t{factor(total_kw, total_kva)}"))
        page.may_end()
        page.line()
        page.may_end()
    grand = f"Grand Totals\t{fixed(total_kw, 2)}\t{fixed(total_kva, 2)}\t{factor(total_kw, total_kva)}"
    if valid or undersized:
        grand += "\t" * 5 + distortion(len(result["LoadProfile"]) - 1)
    page.line((TOTALS_FONT, TOTALS_RULE))
    page.line((CELL, grand))
    if chosen["FreqDipAvail"] and (valid or undersized):
        page.may_end()  # no note follows
    page.line()
    if not chosen["FreqDipAvail"]:
        page.line()
        page.line((CELL, "*Contact the factory for frequency dip information."))
    if not valid and not undersized:
        if chosen["FreqDipAvail"]:
            page.line()
        page.line((CELL, "*Contact the factory for single phase Vthd information."))
    return informational(page, result)


def search_failure(result):
    page = header("Search Failure Report", result["Project"])
    page.section()
    page.heading("Suggestions")
    page.line((LABEL, "No Generator Sets were found that meet your requirements."))
    for index, text in enumerate(SUGGESTIONS, 1):
        page.line((VALUE, f"({index}) {text}"))
    return informational(page, result)


def main():
    program, source = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    golden = source / "tests/golden"
    failures = reports = 0
    with tempfile.TemporaryDirectory() as folder:
        database = pathlib.Path(folder) / "catalogue.db"
        subprocess.run([program, "catalog", "build", source / "data/catalog", "-o", database], check=True,
                       stdout=subprocess.DEVNULL)

        def run(command, sample, *arguments):
            done = subprocess.run([program, command, sample, "--db", database, *arguments], capture_output=True)
            assert done.returncode == 0, (sample, arguments, done.stderr)
            return done.stdout

        for sample in sorted((source / "samples").glob("*.prj")):
            result = json.loads(run("size", sample, "--json"))
            forms = {"no-match": (["--no-match"], search_failure(result))}
            if result["ChosenSets"]:
                first, last = result["ChosenSets"][0], result["ChosenSets"][-1]
                forms["sizing"] = ([], sizing(result, first, False, False))
                forms["summary"] = (["--type", "summary"], summary(result, first, False))
                index = str(len(result["ChosenSets"]) - 1)
                forms["metric"] = (["--metric", "--set", index], sizing(result, last, False, True))
            first = result["RejectedSets"][0]
            forms["undersized"] = (["--undersized", "0"], sizing(result, first, True, False))
            forms["undersized-summary"] = (["--undersized", "0", "--type", "summary"], summary(result, first, True))
            for form, (arguments, expected) in forms.items():
                rich = run("report", sample, "--now", NOW, "-o", "-", *arguments)
                reports += 1
                found = rtf_text.paragraphs(rich)
                wanted = list(zip(expected.paragraphs, expected.kept())) + ["<end>"]
                there = list(zip(found, rtf_text.kept(rich))) + ["<end>"]
                for number, (want, got) in enumerate(zip(wanted, there), 1):
                    if want != got:
                        print(f"{sample.name} {form}, paragraph {number}:\n  expected {want!r}\n  found    {got!r}")
                        failures += 1
                        break
                file = golden / f"{sample.stem}.{form}.txt"
                text = rtf_text.shown(found)
                if "--update" in sys.argv:
                    file.write_text(text, encoding="utf-8")
                elif not file.exists() or file.read_text(encoding="utf-8") != text:
                    print(f"{file.name} differs from what the report shows")
                    failures += 1
    print(f"{reports} reports, {failures} failures")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
