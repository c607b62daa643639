"""Reports of every sample: their lines against lines put together here from the JSON of the same sizing, and
their formatting against files reviewed by eye.

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


def header(title, project):
    return ["Genvara", title, "", f"Project\t\t{project['ProjName']}", f"Customer\t{project['Customer']}"]


def informational(result):
    project = result["Project"]
    return [RULE, "Informational", "", "Program Version\t8.0.0",
            f"Database Version\t{result['Designer']['DatabaseVersion']}", "",
            f"Project Created\t{date(project['Created'])}", f"Project Last Saved\t{date(project['LastModified'])}",
            f"Report Created\t{date(NOW)}", "", f"Project Created By\t{project['UserName']}"]


def generator_set(chosen, count):
    return [RULE, "Generator Set" if count == 1 else "Generator Sets", "",
            f"Model No.\t{chosen['ModelNum']}\tGensets\t{count}",
            f"Engine\t{chosen['EngineNum']} ({FUELS[chosen['FuelType']]})", f"Alternator\t{chosen['AltNum']}"]


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
    lines = header("Undersized Generator Set" if undersized else "Generator Set Sizing", result["Project"])
    lines += generator_set(chosen, count) + [RULE, "Performance Summary", ""]
    lines += [f"LN / LL Voltage\t{fixed(neutral, 0)}/{site['Voltage']}\tvolts\tAltitude\t\t{fixed(altitude, 0)}\t"
              f"{'meters' if metric else 'feet'}",
              f"Frequency\t{site['Freq']}\thertz\tAmbient Temp.\t{fixed(temperature, 0)}\t{'C' if metric else 'F'}",
              f"Phase(s)\t{site['Phases']}\tphase", "",
              f"Genset Rating @ {RISES[site['RiseDutyCode']]}C Rise\t{fixed(chosen['NominalRating'], 2)} kW",
              f"Genset Derated Rating\t{fixed(chosen['DeratedRating'], 2)} kW",
              f"Total Running Power\t{fixed(run / count, 2)} kW{per_set}",
              f"Percent of Available kW Used\t{fixed(run * 100 / (count * chosen['DeratedRating']), 2)} %", "",
              f"Alternator Starting kVA\t{fixed(chosen['StartKVA35'], 2)} kVA @ 35% dip",
              f"Peak Starting kVA\t{fixed(peak / count, 2)} kVA{per_set}",
              f"Percent of Available kVA Used\t{fixed(peak * 100 / (count * chosen['StartKVA35']), 2)} %", "",
              f"Maximum Voltage Dip\t{fixed(chosen['MaxStepVoltDip'], 2)} %",
              f"Maximum Frequency Dip\t{fixed(chosen['MaxStepFreqDip'], 2)} %\t"
              f"{allowed(site['MaxFreqDipEnabled'], site['MaxFreqDip'])}",
              f"Voltage THD\t{fixed(chosen['MaxStepVTHD'], 2)} %\t"
              f"{allowed(site['MaxHarmonicsEnabled'], site['MaxHarmonics'])}" if valid else "Voltage THD\tN/A"]
    if undersized:
        lines += [RULE, "Reasons for Rejection", ""] + chosen["Reasons"]
    return lines + informational(result)


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

    lines = header(("Undersized " if undersized else "") + "Generator Load Profile", result["Project"])
    lines += generator_set(chosen, result["PowerSystem"]["GensetsInParallel"]) + [RULE, "Load Profile", ""]
    lines += ["\t\tRun\tRun\tRun\tStart\tStart\tVolt\tFreq\tVolt (L-N)", "\tQty\tkW\tkVA\tpF\tkW\tkVA\tDip\tDip\tTHD", ""]
    total_kw = total_kva = 0.0
    for index, step in enumerate(result["LoadProfile"]):
        lines.append(f"Step #{index + 1}\t{step['Description']}")
        for load in step["Loads"]:
            count = load["Quantity"]
            lines.append(f"   {load['name']}  ({load['Summary']})")
            lines += torque(load, chosen["VoltageDips"][index])
            figures = [fixed(load[key] * count / 1000, 2) for key in
                       ("RunningRealPower", "RunningAppPower", "StartingRealPower", "StartingAppPower")]
            figures.insert(2, factor(load["RunningRealPower"], load["RunningAppPower"]))
            lines.append("\t".join(["", str(count)] + figures))
        kw, kva, start_kw, start_kva = (step[f"Total{key}Power"][0] / 1000 for key in
                                        ("RunningReal", "RunningApparent", "StartingReal", "StartingApparent"))
        total_kw, total_kva = total_kw + kw, total_kva + kva
        totals = ["Step Totals", fixed(kw, 2), fixed(kva, 2), factor(kw, kva), fixed(start_kw, 2),
                  fixed(start_kva, 2), fixed(chosen["VoltageDips"][index], 2), fixed(chosen["FreqDips"][index], 2)]
        lines += [TOTALS_RULE, "\t".join(totals + ([distortion(index)] if valid or undersized else []))]
        lines += [f"Cum. Totals\t{fixed(total_kw, 2)}\t{fixed(total_kva, 2)}\t{factor(total_kw, total_kva)}", ""]
    grand = f"Grand Totals\t{fixed(total_kw, 2)}\t{fixed(total_kva, 2)}\t{factor(total_kw, total_kva)}"
    if valid or undersized:
        grand += "\t" * 5 + distortion(len(result["LoadProfile"]) - 1)
    lines += [TOTALS_RULE, grand, ""]
    if not chosen["FreqDipAvail"]:
        lines += ["", "*Contact the factory for frequency dip information."]
    if not valid and not undersized:
        lines += [""] if chosen["FreqDipAvail"] else []
        lines.append("*Contact the factory for single phase Vthd information.")
    return lines + informational(result)


def search_failure(result):
    lines = header("Search Failure Report", result["Project"]) + [RULE, "Suggestions", ""]
    lines.append("No Generator Sets were found that meet your requirements.")
    lines += [f"({index}) {text}" for index, text in enumerate(SUGGESTIONS, 1)]
    return lines + informational(result)


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
                found = rtf_text.lines(rich)
                expected = [line.replace("\r\n", "\n") for line in expected]
                for number, (want, got) in enumerate(zip(expected + ["<end>"], found + ["<end>"]), 1):
                    if want != got:
                        print(f"{sample.name} {form}, line {number}:\n  expected {want!r}\n  found    {got!r}")
                        failures += 1
                        break
                file = golden / f"{sample.stem}.{form}.txt"
                text = rtf_text.shown(rich)
                if "--update" in sys.argv:
                    file.write_text(text, encoding="utf-8")
                elif not file.exists() or file.read_text(encoding="utf-8") != text:
                    print(f"{file.name} differs from what the report shows")
                    failures += 1
    print(f"{reports} reports, {failures} failures")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
