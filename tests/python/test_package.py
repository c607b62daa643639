"""Makes the package python3-genvara, and imports and sizes from it in an empty root.

    test_package.py BUILD-FOLDER SOURCE-FOLDER
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

BUILD, SOURCE = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
SKIPPED = 77
NEEDED = ("cpack", "dpkg-deb", "dpkg-shlibdeps", "lintian")
FILES = ["./usr/lib/python3/dist-packages/genvara/" + name
         for name in ("Genvara.db", "__init__.py", "__init__.pyi", "_copies.py", "_errors.py", "_pdf.py", "py.typed",
                      "fleet/__init__.py", "fleet/_workers.py")]
SCRIPT = """
import genvara
from genvara import fleet
result = genvara.read("hospital.prj").size(genvara.Catalogue())
assert fleet.size(["hospital.prj"])[0]["model_num"] == result.recommended[0].model
print(genvara.__file__, result.recommended[0].model)
"""


def run(*command, **options):
    """Standard output of a command that has to succeed."""
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, **options)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} ended with {done.returncode}:\n{done.stdout}{done.stderr}")
    return done.stdout


def expect(truth, text):
    if not truth:
        sys.exit(text)


def check(folder):
    run("cpack", "--config", BUILD / "CPackPythonConfig.cmake", "-B", folder, cwd=BUILD)
    package, = folder.glob("*.deb")
    expect(package.name.startswith("python3-genvara_"), package.name)
    depends = run("dpkg-deb", "-f", package, "Depends")
    for needed in ("genvara (= ", "python3 (>= 3.11)", "python3 (<< 3.12)", "libc6", "libsqlite3-0"):
        expect(needed in depends, f"the package does not depend on {needed}: {depends}")
    expect("libqt6" not in depends, f"the package depends on the window's libraries: {depends}")
    listed = run("dpkg-deb", "-c", package)
    for file in FILES:
        expect(file in listed, f"{file} is missing:\n{listed}")
    expect("__pycache__" not in listed, f"compiled files are in it:\n{listed}")
    expect("./usr/bin" not in listed, f"a program is in it:\n{listed}")
    run("lintian", "--fail-on", "error", "--allow-root", package)

    # The program's package brings the catalogue.
    root = folder / "root"
    run("dpkg-deb", "-x", package, root)
    (root / "usr/lib/genvara").mkdir()
    shutil.copy(BUILD / "bin/Genvara.db", root / "usr/lib/genvara")
    modules = root / "usr/lib/python3/dist-packages"
    told = run("/usr/bin/python3", "-B", "-c", SCRIPT, cwd=SOURCE / "samples", env={**os.environ, "PYTHONPATH": modules})
    expect(told == f"{modules}/genvara/__init__.py MV900D\n", told)


missing = [name for name in NEEDED if shutil.which(name) is None]
if missing:
    print(f"skipped: {', '.join(missing)} not installed")
    sys.exit(SKIPPED)
with tempfile.TemporaryDirectory() as temporary:
    check(pathlib.Path(temporary))
