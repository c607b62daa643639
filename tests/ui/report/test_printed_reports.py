"""Prints the reports of every sample and of long projects from the view and compares the pages with those of an
independent word processor: the same lines on the same pages, and each text between tabs in the same place. No page ends
where the rich text keeps it from doing so.

    test_printed_reports.py GENVARA-CLI REPORTVIEW-TESTS SOURCE-FOLDER

Ends with 77, which ctest counts as skipped, where the word processor is not installed, or no fonts whose letters
are as wide as those that reports name.
"""
import os
import pathlib
import random
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "reports"))
import rtf_text  # noqa: E402
import test_word_processor as word_processor  # noqa: E402

# Points. The word processor draws pairs of letters closer, so that texts which end at their stop begin a little later.
SAME_PLACE = 2.0


def print_from_view(tests, folder):
    """Prints each rich text of a folder to a PDF beside it."""
    environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "GENVARA_REPORT_PICTURES": str(folder)}
    subprocess.run([tests, "--gtest_filter=ReportPictures.ArePrintedOnDemand"], env=environment, check=True,
                   stdout=subprocess.DEVNULL)


def cell_edges(line, words):
    """Left edge of each text between tabs; none for an empty one, and none for one that touches the text before it."""
    edges, words, carried = [], list(words), ""
    for cell in line.split("\t"):
        wanted, found = word_processor.without_blanks(cell), carried
        edges.append(words[0][0] if wanted and not carried else None)
        while len(found) < len(wanted):
            found += word_processor.without_blanks(words.pop(0)[2])
        carried = found[len(wanted):]
    return edges


def page_faults(rich, ours, theirs):
    """Pages that end elsewhere than those of the word processor, or where they may not."""
    our_pages, their_pages = ([len(page) for page in word_processor.visual_pages(pdf)] for pdf in (ours, theirs))
    if our_pages != their_pages:
        yield f"pages of {our_pages} lines, not {their_pages}"
    shown = [(line, kept) for line, (kept, _) in zip(rtf_text.lines(rich), rtf_text.kept(rich)) if line.strip()]
    end = 0
    for count in our_pages[:-1]:
        end += count
        if end <= len(shown) and shown[end - 1][1]:
            yield f"a page ends behind {shown[end - 1][0]!r}"


def place_faults(rich, ours, theirs):
    lines = [line for line in rtf_text.lines(rich) if line.strip()]
    our_lines, their_lines = (word_processor.visual_lines(pdf)[1] for pdf in (ours, theirs))
    for line, our_words, their_words in zip(lines, our_lines, their_lines):
        # Where a label ends plays no part: only where each text between tabs begins.
        our_edges = cell_edges(line, our_words)
        their_edges = cell_edges(line, their_words)
        for cell, (our_edge, their_edge) in enumerate(zip(our_edges, their_edges)):
            # Blanks in front of a text are no places: the word processor draws several of them wider than one.
            is_indented = line.split("\t")[cell].startswith(" ")
            is_placed = our_edge is not None and their_edge is not None and not is_indented
            if is_placed and abs(our_edge - their_edge) > SAME_PLACE:
                yield f"{line!r}: cell {cell} at {our_edge}, not {their_edge}"


def long_project(dice):
    """Steps of a few loads, or of more than a page holds; between them lies what a word processor cannot move as a
    whole, and the view can."""
    counts = [dice.choice([1, 2, 3, 5, 8, 10, 60]) for _ in range(12)]
    lines = ["8,0,0,1", '#2025-02-03 13:10:00#,"Client","",#2025-02-27 18:22:50#,"Long","Me"', "0,25,1,60,1,1",
             "20,#FALSE#,15,#FALSE#", "20,3,3,480", str(len(counts))]
    lines += [f'"Step {number} of the site",25' for number, _ in enumerate(counts, 1)]
    for number, count in enumerate(counts, 1):
        lines.append(str(count))
        for load in range(count):
            if dice.random() < 0.3:
                lines += [f'{number},5,"Pump {load}","",1,0', '0,"F",5,#TRUE#,#FALSE#', "1", "1000,0.5,300"]
            else:
                lines += [f'{number},4,"Heater {load}","",1,0', f"{dice.randint(100, 900)},0.9"]
    return "\r\n".join(lines) + "\r\n"


def write_long_reports(program, folder):
    """Load summaries of many pages. The long lines of a test of places are those of the samples."""
    for number in range(5):
        project = folder / f"long{number}.prj"
        project.write_text(long_project(random.Random(number)), encoding="cp1252", newline="")
        subprocess.run([program, "report", project, "--db", folder / "catalogue.db", "--type", "summary", "-o",
                        folder / f"long{number}.summary.rtf"], check=True)


def main():
    if reason := word_processor.skip_reason():
        print(f"skipped: {reason}")
        sys.exit(77)
    program, tests, source = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        word_processor.write_reports(program, source, folder)
        write_long_reports(program, folder)
        reports = sorted(folder.glob("*.rtf"))
        print_from_view(tests, folder)
        theirs = folder / "theirs"
        subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to",
                        "pdf", "--outdir", theirs, *reports], check=True, stdout=subprocess.DEVNULL, timeout=300)
        failures = 0
        for report in reports:
            rich, ours = report.read_bytes(), report.with_suffix(".pdf")
            faults = word_processor.faults_of(report.name, rich, ours)
            faults = faults or [*page_faults(rich, ours, theirs / ours.name), *place_faults(rich, ours, theirs / ours.name)]
            for fault in faults:
                print(f"{report.name}: {fault}")
            failures += len(faults)
    print(f"{len(reports)} reports, {failures} failures")
    sys.exit(1 if failures or not reports else 0)


if __name__ == "__main__":
    main()
