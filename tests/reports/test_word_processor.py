"""Opens the reports of every sample in an independent word processor and looks at its pages: each line of a report
is one line on the page, in order; figures stand under their headings; a sizing report is one page.

    test_word_processor.py GENVARA-CLI SOURCE-FOLDER

Ends with 77, which ctest counts as skipped, where the word processor is not installed or does not start, or where
there are no fonts whose letters are as wide as those that reports name.
"""
import html
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import rtf_text

WORD = re.compile(r'<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">(.*?)</word>')
SAME_LINE = 3.0    # points between the feet of two words of one line
SAME_COLUMN = 2.0  # points between a heading and what stands under it
RIGHT_EDGE = 612 - 54  # points: Letter, less the margin

# Families as wide as the two of the reports, letter by letter.
FONTS = {"Arial": ("Arial", "Liberation Sans", "Arimo", "Nimbus Sans", "Helvetica"),
         "Times New Roman": ("Times New Roman", "Liberation Serif", "Tinos", "Nimbus Roman", "Times")}

SKIPPED = 77
START_SECONDS, CONVERSION_SECONDS = 120, 600

# Distortions of three digits are the widest that the last column has to hold.
WIDEST = b"100.0%/100.0%/100.0%"


def visual_lines(pdf):
    """The lines on the pages from top to bottom, each as its words with their left and right edges."""
    text = subprocess.run(["pdftotext", "-bbox", pdf, "-"], check=True, capture_output=True, text=True).stdout
    pages = text.split("<page ")[1:]
    lines = []
    for page in pages:
        words = sorted((float(foot), float(left), float(right), html.unescape(word))
                       for left, _, right, foot, word in WORD.findall(page))
        last = None
        for foot, left, right, word in words:
            if last is None or foot - last > SAME_LINE:
                lines.append([])
                last = foot
            lines[-1].append((left, right, word))
    return len(pages), [sorted(line) for line in lines]


def without_blanks(text):
    return "".join(text.split())


def cell_edges(line, words):
    """Left edge of each cell of a line; None for an empty cell."""
    edges, words = [], list(words)
    for cell in line.split("\t"):
        wanted, found = without_blanks(cell), ""
        edges.append(words[0][0] if wanted else None)
        while len(found) < len(wanted):
            found += without_blanks(words.pop(0)[2])
    return edges


def column_faults(lines, visual):
    """Cells of the load table that do not stand under the heading of their column."""
    columns, faults = None, []
    for line, words in zip(lines, visual):
        if line.startswith("\tQty\t"):
            columns = cell_edges(line, words)
        is_total = line.startswith(("Step Totals\t", "Cum. Totals\t", "Grand Totals\t"))
        if columns is None or not (is_total or re.match(r"\t\d+\t", line)):
            continue
        # A total's label reaches beyond the quantity, so that its first tab leads to the next column.
        shift = 1 if is_total else 0
        for index, edge in enumerate(cell_edges(line, words)):
            if edge is not None and index > 0 and abs(edge - columns[index + shift]) > SAME_COLUMN:
                faults.append(f"{line!r}: cell {index} at {edge}, its heading at {columns[index + shift]}")
    return faults


def faults_of(name, rich, pdf):
    pages, visual = visual_lines(pdf)
    lines = [line for line in rtf_text.lines(rich) if line.strip()]
    for line, words in zip(lines + ["<end>"], visual + [[(0, 0, "<end>")]]):
        shown = "".join(word for _, _, word in words)
        if without_blanks(line) != without_blanks(shown):
            return [f"the report has {line!r}, the page has {shown!r}"]
    faults = column_faults(lines, visual)
    faults += [f"{words} leave the page" for words in visual if words[-1][1] > RIGHT_EDGE]
    if ".summary" not in name and pages != 1:
        faults.append(f"{pages} pages")
    return faults


def write_reports(program, source, folder):
    database = folder / "catalogue.db"
    subprocess.run([program, "catalog", "build", source / "data/catalog", "-o", database], check=True,
                   stdout=subprocess.DEVNULL)
    for sample in sorted((source / "samples").glob("*.prj")):
        size = subprocess.run([program, "size", sample, "--db", database, "--json"], check=True, capture_output=True)
        sets = (["--undersized", "0"],) if not json.loads(size.stdout)["ChosenSets"] else (["--set", "0"],
                                                                                          ["--undersized", "0"])
        for chosen in sets:
            for kind in ("sizing", "summary"):
                file = folder / f"{sample.stem}{chosen[0]}.{kind}.rtf"
                subprocess.run([program, "report", sample, "--db", database, "-o", file, "--type", kind, *chosen],
                               check=True)
        subprocess.run([program, "report", sample, "--db", database, "-o", folder / f"{sample.stem}.rtf",
                        "--no-match"], check=True)
    for file in folder.glob("*.summary.rtf"):
        wide = re.sub(rb"\d+\.\d%/\d+\.\d%/\d+\.\d%", WIDEST, file.read_bytes())
        (folder / f"wide-{file.name}").write_bytes(wide)


def convert(folder, files, seconds):
    """Has the word processor print files of rich text into PDF files beside them."""
    subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to", "pdf",
                    "--outdir", folder, *files], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                   timeout=seconds)


def starts():
    """Whether the word processor prints so much as a word; one that is there may lack half of what it needs."""
    with tempfile.TemporaryDirectory() as name:
        trial = pathlib.Path(name) / "trial.rtf"
        trial.write_text("{\\rtf1 trial}")
        try:
            convert(trial.parent, [trial], START_SECONDS)
        except (OSError, subprocess.SubprocessError):
            return False
        return trial.with_suffix(".pdf").exists()


def skip_reason():
    missing = [program for program in ("soffice", "pdftotext", "fc-match") if not shutil.which(program)]
    if missing:
        return f"{', '.join(missing)} not installed"
    for face, families in FONTS.items():
        family = subprocess.run(["fc-match", "--format=%{family[0]}", face], capture_output=True, text=True).stdout
        if family not in families:
            return f"{family} stands for {face}, and its letters are not as wide"
    return "" if starts() else "the word processor is installed and does not start"


def main():
    if reason := skip_reason():
        print(f"skipped: {reason}")
        sys.exit(SKIPPED)
    program, source = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        write_reports(program, source, folder)
        reports = sorted(folder.glob("*.rtf"))
        convert(folder, reports, CONVERSION_SECONDS)
        failures = 0
        for report in reports:
            for fault in faults_of(report.name, report.read_bytes(), report.with_suffix(".pdf")):
                print(f"{report.name}: {fault}")
                failures += 1
    print(f"{len(reports)} reports, {failures} failures")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
