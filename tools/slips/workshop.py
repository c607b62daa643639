"""A copy of the sources in which slips are planted, built and tested, one at a time."""

import os
import pathlib
import re
import shutil
import subprocess

from planting import Slip, planted

# Folders of src/ from the lowest layer up, each with the test programs and tests that look at it and no lower one.
NEAREST = {
    "base": ["base_tests"],
    "loads": ["loads_tests"],
    "model": ["model_tests"],
    "entry": ["entry_tests"],
    "sizing": ["engine_tests", "database_tests"],
    "study": ["study_tests"],
    "reports": ["reports_tests"],
    "document": ["document_tests"],
    "app": ["app_tests"],
    "ui/kit": ["kit_tests"],
    "ui/chart": ["chart_tests"],
    "ui/report": ["richtext_tests", "reportview_tests"],
    "ui/forms": ["forms_tests"],
    "ui/analysis": ["analysis_tests"],
    "ui/window": ["window_tests", "openclose_tests"],
}
# What needs the console program: tests of ctest, the quick ones first.
OF_THE_CONSOLE = "^(reports.samples|cli.json_projects|cli.console|cli.order|cli.explain|cli.sweep|cli.advise|Reference.comparison|Catalogue)$"
OF_WINDOWS = ("app", "ui/")
# How long a test program may take before it counts as one that does not end.
SECONDS, SECONDS_OF_WINDOWS = 60, 300


class Workshop:
    """One copy with a build of its own; several stand side by side."""

    def __init__(self, sources: pathlib.Path, folder: pathlib.Path, jobs: int):
        self.sources = sources
        self.copy = folder / "source"
        self.build = folder / "build"
        self.jobs = jobs

    def prepare(self, folders: set[str]) -> None:
        """Brings the copy up to date, file by file so that only what differs is built, and builds what looks at some folders."""
        listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=self.sources, check=True, capture_output=True,
                                text=True).stdout.splitlines()
        wanted = {name for name in listed if (self.sources / name).is_file()}
        for path in [path for path in self.copy.rglob("*") if path.is_file()]:
            if str(path.relative_to(self.copy)) not in wanted:
                path.unlink()
        for name in wanted:
            source, target = self.sources / name, self.copy / name
            if not target.exists() or target.read_bytes() != source.read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, target)
        # Warnings are no news here: a slip that leaves a variable unused is to be tested, not refused.
        subprocess.run(["cmake", "-S", self.copy, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug", "-DBUILD_TESTING=ON",
                        "-DCMAKE_CXX_FLAGS=-w -O0 -g0", "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld"], check=True, stdout=subprocess.DEVNULL)
        programs = {program for folder in folders for program in programs_for(folder)}
        subprocess.run(["ninja", "-C", self.build, f"-j{self.jobs}", "genvara-cli", "genset_database", *sorted(programs)], check=True,
                       stdout=subprocess.DEVNULL)

    def judge(self, slip: Slip) -> str:
        """Who noticed a slip: "compiler", the name of a test, or nobody: an empty text."""
        file = self.copy / slip.file
        text = file.read_text(encoding="utf-8")
        file.write_text(planted(text, slip), encoding="utf-8")
        try:
            return self._noticed_by(folder_of(slip.file))
        finally:
            file.write_text(text, encoding="utf-8")

    def _noticed_by(self, folder: str) -> str:
        for program in programs_for(folder):
            if not self._builds(program):
                return "compiler"
            failed = self._failed(program)
            if failed:
                return failed
        if folder.startswith("ui/"):
            return ""
        if not self._builds("genvara-cli"):
            return "compiler"
        done = self._run(["ctest", "--test-dir", str(self.build), "-R", OF_THE_CONSOLE, "--stop-on-failure"], 900)
        found = re.search(r"\d+ - (\S+) \(", done.stdout) if done else None
        return found.group(1) if found else "" if done and done.returncode == 0 else "a test that did not end"

    def _builds(self, target: str) -> bool:
        return subprocess.run(["ninja", "-C", self.build, f"-j{self.jobs}", target], stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode == 0

    def _failed(self, program: str) -> str:
        """The first test of a program that fails."""
        seconds = SECONDS_OF_WINDOWS if any(program in NEAREST[name] for name in NEAREST if name.startswith(OF_WINDOWS)) else SECONDS
        done = self._run([str(self.build / "bin" / program), "--gtest_fail_fast", "--gtest_brief=1"], seconds)
        if done is None:
            return f"{program}, which did not end"
        if done.returncode == 0:
            return ""
        found = re.search(r"\[  FAILED  \] ([\w/.]+)", done.stdout)
        return found.group(1) if found else program

    def _run(self, command: list[str], seconds: int) -> subprocess.CompletedProcess | None:
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
        try:
            return subprocess.run(command, cwd=self.build, env=environment, capture_output=True, text=True, errors="replace", timeout=seconds)
        except subprocess.TimeoutExpired:
            return None


def folder_of(file: str) -> str:
    """The layer of a source below src/: "loads", "ui/forms"."""
    parts = pathlib.PurePosixPath(file).parts
    return "/".join(parts[1:3]) if parts[1] == "ui" else parts[1]


def programs_for(folder: str) -> list[str]:
    """The test programs that may notice a slip in a folder, the nearest first."""
    names = list(NEAREST)
    first = names.index(folder) if folder in names else 0
    windows = folder.startswith(OF_WINDOWS)
    return [program for name in names[first:] if windows or not name.startswith(OF_WINDOWS) for program in NEAREST[name]]
