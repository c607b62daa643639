#!/usr/bin/python3
"""Holds the module for Python against a loop in C++, and fleets against one process; prints what docs/performance.md and
docs/fleet.md state.

    cmake --preset bench && cmake --build --preset bench
    bench/python_report.py build/bench [--runs 20000]

Ratios are medians of interleaved runs. Those of CPU time hold on a busy machine too; those of wall time want an idle one.
"""
import argparse
import os
import pathlib
import statistics
import subprocess
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
SIZINGS = 10_000

PYTHON_LOOP = f"""
import sys, time, genvara
catalogue = genvara.Catalogue()
project = genvara.read({str(ROOT / 'samples/hospital.prj')!r})
site = project.power_system
project.size(catalogue)
begun = time.process_time()
for i in range(int(sys.argv[1])):
    site.altitude = float(i % 3000)
    project.size(catalogue)
print(time.process_time() - begun)
"""

THREADS = f"""
import copy, sys, threading, time, genvara
catalogue = genvara.Catalogue()
project = genvara.read({str(ROOT / 'samples/hospital.prj')!r})
def work():
    own = copy.deepcopy(project)
    for i in range(3000):
        own.power_system.altitude = float(i)
        own.size(catalogue)
threads = [threading.Thread(target=work) for _ in range(int(sys.argv[1]))]
begun = time.monotonic()
for thread in threads: thread.start()
for thread in threads: thread.join()
print(time.monotonic() - begun)
"""

CHANCES = f"""
import sys, time, genvara
from genvara import fleet
runs, scheduler = int(sys.argv[1]), sys.argv[2]
catalogue = genvara.Catalogue()
project = genvara.read({str(ROOT / 'samples/hospital.prj')!r})
drawn = {{"PowerSystem.AmbTemp": fleet.normal(35.0, 4.0), "Step[5].Load[1].Quantity": fleet.integers(1, 3)}}
client = None
if scheduler:
    from distributed import Client
    client = Client(scheduler_file=scheduler)
    client.wait_for_workers(2)
    fleet.chances(project, drawn, runs=10, seed=1, client=client)
fleet.chances(project, drawn, runs=1, seed=1)
cpu, wall = time.process_time(), time.monotonic()
fleet.chances(project, drawn, runs=runs, seed=7, client=client)
print(time.process_time() - cpu, time.monotonic() - wall)
"""


def told(*command, **options):
    return [float(word) for word in subprocess.run([str(word) for word in command], check=True, capture_output=True, text=True,
                                                    **options).stdout.split()]


def cpu_of(pid):
    """CPU seconds of a process so far."""
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def python(code, *arguments):
    return told("/usr/bin/python3", "-B", "-c", code, *arguments)


def import_cpu():
    """CPU milliseconds of `import genvara` beyond those of an interpreter that imports nothing, the least of ten."""
    code = "import time; begun = time.process_time(); import genvara; print(1000 * (time.process_time() - begun))"
    return min(python(code)[0] for _ in range(10))


def two_processes():
    """Wall seconds that each of two processes takes side by side for what a thread does, on average. Whatever else the machine
    does, it does to them as it does to two threads."""
    processes = [subprocess.Popen(["/usr/bin/python3", "-B", "-c", THREADS, "1"], stdout=subprocess.PIPE, text=True) for _ in range(2)]
    return statistics.fmean(float(process.communicate()[0]) for process in processes)


def report_loops(folder):
    ratios = []
    for _ in range(5):
        ours = python(PYTHON_LOOP, SIZINGS)[0]
        theirs = told(folder / "bin/changed_sizings", SIZINGS)[0]
        ratios.append(ours / theirs)
    print(f"{SIZINGS} sizings of a changed sample in Python / the same in C++, CPU: {statistics.median(ratios):.2f}")
    print(f"import genvara: {import_cpu():.0f} ms of CPU")
    rounds = [(python(THREADS, 1)[0], python(THREADS, 2)[0], two_processes()) for _ in range(5)]
    print(f"two threads of Python / one, sizings a second: {statistics.median(2 * one / two for one, two, _ in rounds):.2f}")
    print(f"two threads / two processes, sizings a second: {statistics.median(apart / two for _, two, apart in rounds):.2f}")


def start(folder, log, program, *arguments):
    return subprocess.Popen(["/usr/bin/python3", f"/usr/bin/{program}", *map(str, arguments)], cwd=folder, stdout=log, stderr=log,
                            start_new_session=True)


def report_fleet(runs):
    for count in (1, 1000, runs):
        cpu, wall = python(CHANCES, count, "")
        print(f"one process, {count} runs: {1e6 * cpu / count:.0f} us of CPU a sizing; {count / cpu:.0f} a second and core")
    with tempfile.TemporaryDirectory() as temporary, open(os.path.join(temporary, "log"), "wb") as log:
        scheduler = os.path.join(temporary, "scheduler.json")
        processes = [start(temporary, log, "dask-scheduler", "--host", "127.0.0.1", "--port", "0", "--no-dashboard",
                           "--scheduler-file", scheduler)]
        processes += [start(temporary, log, "dask-worker", "--scheduler-file", scheduler, "--no-nanny", "--nthreads", 1,
                            "--no-dashboard", "--local-directory", temporary) for _ in range(2)]
        try:
            while not os.path.exists(scheduler):
                time.sleep(0.1)
            compare(processes, runs, scheduler)
        finally:
            for process in processes:
                process.terminate()
                process.wait()


def two_halves(runs):
    """Wall seconds of two processes that do half of the runs each, side by side and without a scheduler: what the machine allows."""
    halves = [subprocess.Popen(["/usr/bin/python3", "-B", "-c", CHANCES, str(runs // 2), ""], stdout=subprocess.PIPE, text=True) for _ in range(2)]
    return max(float(half.communicate()[0].split()[1]) for half in halves)


def compare(processes, runs, scheduler):
    walls, work, bare = [], [], []
    for _ in range(5):
        alone_cpu, alone = python(CHANCES, runs, "")
        apart = two_halves(runs)
        python(CHANCES, 1, scheduler)
        before = [cpu_of(process.pid) for process in processes]
        client, shared = python(CHANCES, runs, scheduler)
        # What the start of another client costs comes on top, in the scheduler and the workers.
        spent = [cpu_of(process.pid) - old for process, old in zip(processes, before)]
        walls.append(alone / shared / 2.0)
        bare.append(apart / shared)
        work.append(alone_cpu / (sum(spent) + client))
        print(f"  CPU of one process {alone_cpu:.1f} s; of scheduler {spent[0]:.1f}, workers {spent[1]:.1f} and {spent[2]:.1f}, "
              f"client {client:.1f} s", flush=True)
    print(f"two workers against two processes without a scheduler: {statistics.median(bare):.2f} by wall")
    print(f"two workers against one process: efficiency {statistics.median(walls):.2f} by wall, {statistics.median(work):.2f} by CPU")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", type=pathlib.Path, nargs="?", default=ROOT / "build/bench")
    parser.add_argument("--runs", type=int, default=20_000)
    arguments = parser.parse_args()
    os.environ["PYTHONPATH"] = str(arguments.folder.resolve() / "python")
    report_loops(arguments.folder)
    report_fleet(arguments.runs)


if __name__ == "__main__":
    main()
