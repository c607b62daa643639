#!/usr/bin/env python3
"""Makes the Debian package, installs it into an empty root, starts both programs there, and removes it again.

    test_package.py BUILD_FOLDER SOURCE_FOLDER
"""

import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

BUILD, SOURCE = Path(sys.argv[1]), Path(sys.argv[2])
SKIPPED = 77
NEEDED = ("cpack", "dpkg", "dpkg-deb", "dpkg-shlibdeps", "lintian", "readelf", "desktop-file-validate", "appstreamcli", "man")


def run(*command, **options):
    """Standard output of a command that has to succeed."""
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, **options)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} ended with {done.returncode}:\n{done.stdout}{done.stderr}")
    return done.stdout


def expect(truth, text):
    if not truth:
        sys.exit(text)


def make_package(folder):
    run("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", folder, cwd=BUILD)
    packages = list(folder.glob("*.deb"))
    expect(len(packages) == 1, f"one package was to be made, not {packages}")
    return packages[0]


def check_control(package):
    depends = run("dpkg-deb", "-f", package, "Depends")
    for library in ("libc6", "libqt6widgets6", "libqt6printsupport6", "libqt6svg6", "libsqlite3-0"):
        expect(library in depends, f"the package does not depend on {library}: {depends}")


def check_style(package):
    run("lintian", "--fail-on", "error", "--allow-root", package)
    run("desktop-file-validate", SOURCE / "packaging/genvara.desktop")
    run("appstreamcli", "validate", "--no-net", *(SOURCE / "packaging").glob("*.metainfo.xml"))
    for page in ("genvara.1", "genvara-cli.1"):
        done = subprocess.run(["man", "--warnings", "-l", "-Tutf8", SOURCE / "packaging/man" / page],
                              capture_output=True, text=True, env={**os.environ, "LC_ALL": "C.UTF-8"})
        expect(done.returncode == 0 and not done.stderr, f"{page}: {done.stderr}")


def check_hardening(package, folder):
    """Programs that read files of strangers are built as Debian hardens its own."""
    run("dpkg-deb", "-x", package, folder)
    programs = [path for path in folder.rglob("*") if path.is_file() and path.read_bytes()[:4] == b"\x7fELF"]
    expect({"genvara", "genvara-cli"} <= {path.name for path in programs}, f"programs of the package: {programs}")
    for path in programs:
        headers = run("readelf", "--wide", "--file-header", "--program-headers", "--dynamic", path)
        symbols = run("readelf", "--wide", "--dyn-syms", path)
        for what, is_kept in (("its place in memory can be guessed", re.search(r"Type: +DYN", headers)),
                             ("its tables stay writable", "GNU_RELRO" in headers),
                             ("its calls are bound late", re.search(r"FLAGS.*NOW", headers)),
                             ("its stack may hold code", re.search(r"GNU_STACK.* RW ", headers)),
                             ("its stack is not guarded", "__stack_chk_fail" in symbols)):
            expect(is_kept, f"{path.name}: {what}")


def long_options(text):
    return set(re.findall(r"--[a-z][a-z-]+", text))


def check_options(cli):
    """What the console program offers stands in its manual page and in the completion, and nothing else does."""
    offered = long_options(run(cli, "--help"))
    for command in (["size"], ["explain"], ["sweep"], ["advise"], ["order"], ["import"], ["report"], ["export-spec"], ["check"],
                    ["convert"], ["describe"], ["catalog", "build"], ["catalog", "check"]):
        offered |= long_options(run(cli, *command, "--help"))
    page = (SOURCE / "packaging/man/genvara-cli.1").read_text().replace("\\-", "-")
    expect(long_options(page) == offered, f"manual page: {long_options(page) ^ offered}")
    completion = (SOURCE / "packaging/genvara-cli.bash").read_text()
    expect(long_options(completion) == offered, f"completion: {long_options(completion) ^ offered}")


def complete(*words):
    script = (f'source {SOURCE}/packaging/genvara-cli.bash; compopt() {{ :; }}; COMP_WORDS=(genvara-cli "$@"); '
              'COMP_CWORD=$(( ${#COMP_WORDS[@]} - 1 )); _genvara_cli; printf "%s\\n" "${COMPREPLY[@]}"')
    return run("bash", "-c", script, "bash", *words, cwd=SOURCE / "samples").split()


def check_completion():
    expect(complete("expo") == ["export-spec"], complete("expo"))
    expect(complete("catalog", "") == ["build", "check", "--help"], complete("catalog", ""))
    expect("farm.prj" in complete("size", "fa"), complete("size", "fa"))
    expect(complete("report", "--type", "s") == ["sizing", "summary"], complete("report", "--type", "s"))
    expect(complete("size", "--jo") == ["--jobs"], complete("size", "--jo"))
    expect(complete("explain", "--st") == ["--steps"], complete("explain", "--st"))
    expect("farm.prj" in complete("explain", "fa"), complete("explain", "fa"))


def dpkg(root, *arguments):
    # Dependencies and scripts are those of the machine around the empty root.
    return run("dpkg", f"--root={root}", "--force-depends", "--force-script-chrootless", "--no-triggers", *arguments)


def make_root(root):
    for folder in ("var/lib/dpkg/info", "var/lib/dpkg/updates", "var/log"):
        (root / folder).mkdir(parents=True)
    (root / "var/lib/dpkg/status").touch()
    (root / "var/lib/dpkg/available").touch()


def installed_files(root):
    return sorted(str(path.relative_to(root)) for path in root.rglob("*")
                  if not str(path.relative_to(root)).startswith("var"))


def check_console(root):
    schema = (root / "usr/share/doc/genvara/project.schema.json").read_text()
    expect(run(root / "usr/bin/genvara-cli", "describe", "--schema") == schema,
           "the installed schema is not that of the installed program")
    out = run(root / "usr/bin/genvara-cli", "size", "--json", SOURCE / "samples/farm.prj")
    expect(json.loads(out)["ChosenSets"], "the installed program recommends nothing for the farm")
    pdf = root / "farm.pdf"
    run(root / "usr/bin/genvara-cli", "report", SOURCE / "samples/farm.prj", "-o", pdf)
    expect(pdf.read_bytes().startswith(b"%PDF-"), "the installed program makes no PDF file")
    pdf.unlink()


def check_window(root, home):
    environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "HOME": str(home),
                   "XDG_CONFIG_HOME": str(home / "config"), "XDG_RUNTIME_DIR": str(home)}
    window = subprocess.Popen([root / "usr/bin/genvara", SOURCE / "samples/farm.prj"], env=environment,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    time.sleep(3)
    if window.poll() is not None:
        sys.exit(f"the window ended by itself: {window.stdout.read()}")
    window.send_signal(signal.SIGTERM)
    window.wait(timeout=20)
    expect(run(root / "usr/bin/genvara", "--version", env=environment).strip() == "genvara 8.0.0", "version")


def main():
    missing = [tool for tool in NEEDED if shutil.which(tool) is None]
    if missing:
        print("skipped: not installed:", *missing)
        sys.exit(SKIPPED)
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        package = make_package(folder / "package")
        check_control(package)
        check_style(package)
        check_hardening(package, folder / "unpacked")
        check_options(BUILD / "bin/genvara-cli")
        check_completion()
        if os.geteuid() != 0:
            print("skipped: only root installs packages; the rest was checked")
            sys.exit(SKIPPED)
        root = folder / "root"
        make_root(root)
        dpkg(root, "--install", package)
        expect("usr/bin/genvara" in installed_files(root), installed_files(root))
        check_console(root)
        check_window(root, folder)
        dpkg(root, "--purge", "genvara")
        expect(not installed_files(root), f"left behind: {installed_files(root)}")


main()
