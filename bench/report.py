#!/usr/bin/env python3
"""Runs the benchmarks and prints the ratios that docs/performance.md states.

    cmake --preset bench && cmake --build --preset bench
    bench/report.py build/bench/bin
"""
import json
import math
import os
import pathlib
import resource
import subprocess
import sys
import tempfile
import time


def runs_of(program):
    """Medians of a program's benchmarks by their names: times in each one's own unit, and what it counts."""
    output = subprocess.run(
        # Interleaved, so that what else the machine does falls on both sides of a ratio.
        [program, "--benchmark_format=json", "--benchmark_repetitions=9", "--benchmark_min_time=0.1",
         "--benchmark_enable_random_interleaving=true", "--benchmark_report_aggregates_only=true"],
        check=True, capture_output=True, text=True).stdout
    rows = json.loads(output)["benchmarks"]
    return {row["run_name"]: row for row in rows if row.get("aggregate_name") == "median"}


def medians(program):
    """Median CPU times by the benchmarks' names."""
    return {name: row["cpu_time"] for name, row in runs_of(program).items()}


def exponent(points):
    """Slope of the line through the logarithms: the power with which the time grows."""
    logs = [(math.log(size), math.log(value)) for size, value in points]
    mean_x = sum(x for x, _ in logs) / len(logs)
    mean_y = sum(y for _, y in logs) / len(logs)
    return sum((x - mean_x) * (y - mean_y) for x, y in logs) / sum((x - mean_x) ** 2 for x, _ in logs)


def cpu_of(command):
    """CPU time [ms] of a whole process, the least of twenty runs."""
    best = math.inf
    for _ in range(20):
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        best = min(best, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)
    return best * 1000.0


def wall_of(command):
    """Wall time [s] of a whole process, the least of three runs."""
    best = math.inf
    for _ in range(3):
        start = time.monotonic()
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        best = min(best, time.monotonic() - start)
    return best


def report_studies(program):
    """Variations and orders against a bare run, all of one program. Times of whole studies are in ms, of a run in µs."""
    studies = runs_of(program)
    bare, every = (studies[name]["cpu_time"] for name in ("BareRun", "EveryCandidate"))

    def piece(name, counter="variations"):
        return 1000.0 * studies[name]["cpu_time"] / studies[name][counter]

    for name in ("Power/4000/1", "Motor/800/1", "Limit/35/1", "Altitude/4000/1/process_time/real_time"):
        one = piece(f"SweepPoints/{name}")
        print(f"a variation, {name.split('/')[0]} / bare run in memory: {one / bare:.2f};"
              f" / every candidate through every step: {one / every:.2f}")
    points = [(n, studies[f"SweepPoints/Power/{n}/1"]["cpu_time"]) for n in (1000, 4000, 16000)]
    print(f"a sweep, exponent over 1,000 to 16,000 points: {exponent(points):.3f}")
    one, two = (studies[f"SweepPoints/Altitude/4000/{jobs}/process_time/real_time"] for jobs in (1, 2))
    print(f"a sweep on one thread / on two: {one['real_time'] / two['real_time']:.2f} of the time,"
          f" {one['cpu_time'] / two['cpu_time']:.2f} of the CPU time")
    print(f"advise on the hospital, a variation / bare run: {piece('AdviseHospital') / bare:.2f};"
          f" {studies['AdviseHospital']['cpu_time']:.0f} ms in all")
    order = piece("OrderTwentyLoads", "orders")
    print(f"order of 20 loads in 6 steps: {1e6 / order:,.0f} orders a second, {bare / order:.1f} in the time of a bare run")


def report_profile(program):
    """Clicks in a load profile of 256 steps with 50 loads each, on the window's thread."""
    clicks = medians(program)
    totals = clicks.pop("TotalsOfAllSteps")
    longest = max(clicks, key=clicks.get)
    print(f"a click in a profile of 256 steps with 50 loads each, the longest ({longest.split('/')[0]}):"
          f" {clicks[longest]:.1f} ms; / reading every total once: {clicks[longest] / totals:.0f}")


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build/bench/bin")
    times = medians(folder / "sizing_bench")
    run = times["WholeRun/10000/16"]
    print(f"whole run over 10,000 candidates and 16 steps / reading them bare: {run / times['ReadBare/10000']:.2f}")
    print(f"the same / reading them through the program's layer: {run / times['ReadCandidates/10000']:.2f}")
    keys, bare = times["ReadKeysOfSmallSite"], times["ReadKeysOfSmallSiteBare"]
    print(f"keys of a small site: {keys:.3f} ms; a query a key, bare / that: {bare / keys:.1f}")
    report_studies(folder / "study_bench")
    report_profile(folder / "profile_bench")
    candidates = [(n, times[f"EngineAlone/{n}/16"]) for n in (100, 1000, 10000, 100000)]
    print(f"engine alone, exponent over 100 to 100,000 candidates: {exponent(candidates):.3f}")
    steps = [(n, times[f"EngineAlone/10000/{n}"]) for n in (1, 4, 16, 64, 256)]
    print(f"engine alone, exponent over 1 to 256 steps: {exponent(steps):.3f}")
    reports = medians(folder / "reports_bench")
    ratio = reports["BuildReport/256"] / reports["CopyReportAHundredTimes/256"]
    print(f"report of 256 steps with 257 loads each / copying its bytes 100 times: {ratio:.2f}")
    steps = [(n, reports[f"BuildReport/{n}"]) for n in (4, 16, 64, 256)]
    print(f"report, exponent over 4 to 256 steps: {exponent(steps):.3f}")
    cli = folder / "genvara-cli"
    samples = pathlib.Path(__file__).resolve().parent.parent / "samples"
    print(f"size on a sample, whole process: {cpu_of([cli, 'size', samples / 'hospital.prj']):.1f} ms of CPU")
    with tempfile.TemporaryDirectory() as temporary:
        projects = []
        sources = sorted(samples.glob("*.prj"))
        for i in range(1000):
            link = pathlib.Path(temporary) / f"{i}.prj"
            os.symlink(sources[i % len(sources)], link)
            projects.append(str(link))
        one = wall_of([cli, "size", "--json", "--jobs", "1", *projects])
        two = wall_of([cli, "size", "--json", "--jobs", "2", *projects])
        print(f"1,000 projects, --jobs 1 / --jobs 2: {one / two:.2f}")


if __name__ == "__main__":
    main()
