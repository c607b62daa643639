"""Prints the reports of every sample from the view and compares the pages with those of an independent word processor:
the same lines on the same pages, and each text between tabs in the same place.

    test_printed_reports.py GENVARA-CLI REPORTVIEW-TESTS SOURCE-FOLDER

Ends with 77, which ctest counts as skipped, where the word processor is not installed, or no fonts whose letters
are as wide as those that reports name.
"""
import os
import pathlib
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


def differences(rich, ours, theirs):
    lines = [line for line in rtf_text.lines(rich) if line.strip()]
    our_pages, our_lines = word_processor.visual_lines(ours)
    their_pages, their_lines = word_processor.visual_lines(theirs)
    if our_pages != their_pages:
        yield f"{our_pages} pages, not {their_pages}"
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


def main():
    if reason := word_processor.skip_reason():
        print(f"skipped: {reason}")
        sys.exit(77)
    program, tests, source = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        word_processor.write_reports(program, source, folder)
        reports = sorted(folder.glob("*.rtf"))
        print_from_view(tests, folder)
        theirs = folder / "theirs"
        subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to",
                        "pdf", "--outdir", theirs, *reports], check=True, stdout=subprocess.DEVNULL, timeout=300)
        failures = 0
        for report in reports:
            rich, ours = report.read_bytes(), report.with_suffix(".pdf")
            faults = word_processor.faults_of(report.name, rich, ours)
            faults = faults or list(differences(rich, ours, theirs / ours.name))
            for fault in faults:
                print(f"{report.name}: {fault}")
            failures += len(faults)
    print(f"{len(reports)} reports, {failures} failures")
    sys.exit(1 if failures or not reports else 0)


if __name__ == "__main__":
    main()
