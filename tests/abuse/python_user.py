"""A script that works with the module while the machine fails it; the library of FailingCalls.cpp may be preloaded.

    python_user.py TASK FILE SOURCE-FOLDER

Faults begin with the task, and not while the interpreter starts. Prints what the task comes to; a failure is told as the
console program tells it, with status 3.
"""
import ctypes
import json
import sys

import genvara
from genvara import fleet

UNREADABLE = 3


def read(file, source):
    return [step.description for step in genvara.read(file).steps]


def size(file, source):
    result = genvara.read(file).size(genvara.Catalogue())
    return [(found.model, found.alt_num, found.voltage_dips, found.freq_dips) for found in result.recommended]


def explain(file, source):
    result = genvara.read(file).size(genvara.Catalogue())
    is_whole = result.report().rstrip().endswith(b"}")  # it has the time of the day in it
    return [result.spec().decode("latin-1"), is_whole, len(result.explain(all=True)), result._repr_html_()]


def tables(file, source):
    catalogue = genvara.Catalogue(file)
    return [genvara.Catalogue.check(file), {name: len(catalogue.table(name)) for name in catalogue.tables}]


def save(file, source):
    genvara.read(f"{source}/samples/hospital.prj").save(file)


def build(file, source):
    genvara.Catalogue.build(f"{source}/data/catalog", file)


def chances(file, source, resume=False):
    project = genvara.read(f"{source}/samples/studio.prj")
    study = fleet.chances(project, {"PowerSystem.AmbTemp": fleet.normal(35.0, 4.0)}, runs=200, seed=7, piece=50, out=file,
                          resume=resume)
    return [study.runs, study.without_set, [(found.model, found.alt_num, found.count) for found in study.sets()]]


def resume(file, source):
    return chances(file, source, resume=True)


TASKS = {task.__name__: task for task in (read, size, explain, tables, save, build, chances, resume)}


def main():
    task, file, source = TASKS[sys.argv[1]], *sys.argv[2:]
    begin_faults = getattr(ctypes.CDLL(None), "genvara_fail_from_now", lambda: None)
    try:
        begin_faults()
        print(json.dumps(task(file, source)))
    except genvara.RaisedError as failure:
        sys.exit(told(f"error {failure.number} from {failure.source or 'genvara'}: {failure.description}"))
    except Exception as failure:
        sys.exit(told(f"error: {type(failure).__name__} {failure}"))


def told(failure):
    print(f"python_user: {failure}", file=sys.stderr)
    return UNREADABLE


if __name__ == "__main__":
    main()
