"""Opens a report in an independent word processor and looks for every line of it, in order, in the pages.

    test_word_processor.py GENVARA-CLI SOURCE-FOLDER

Ends with 77, which ctest counts as skipped, where the word processor is not installed.
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile

import rtf_text


def main():
    if not shutil.which("soffice") or not shutil.which("pdftotext"):
        print("skipped: needs soffice and pdftotext")
        sys.exit(77)
    program, source = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        database, report = folder / "catalogue.db", folder / "report.rtf"
        subprocess.run([program, "catalog", "build", source / "data/catalog", "-o", database], check=True)
        for form in ([], ["--type", "summary"], ["--undersized", "0"]):
            subprocess.run([program, "report", source / "samples/hospital.prj", "--db", database, "-o", report, *form],
                           check=True)
            subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to",
                            "pdf", "--outdir", folder, report], check=True, stdout=subprocess.DEVNULL, timeout=120)
            pages = subprocess.run(["pdftotext", "-layout", folder / "report.pdf", "-"], check=True,
                                   capture_output=True, text=True).stdout
            text, at = " ".join(pages.split()), 0
            for line in rtf_text.lines(report.read_bytes()):
                wanted = " ".join(line.split())
                found = text.find(wanted, at)
                if found < 0:
                    print(f"{form}: {wanted!r} is not in the pages, or not in its place")
                    sys.exit(1)
                at = found + len(wanted)
    print("every line of three reports stands in the pages, in order")


if __name__ == "__main__":
    main()
