"""Plants small slips in the sources, one at a time, and lists those that no test notices.

    python3 tools/slips src/model                 a sample of a folder's (or a file's) slips
    python3 tools/slips --since main              those of what changed since a commit
    python3 tools/slips src/loads --count 0       all of them
    python3 tools/slips --score                   what was found so far, by folder
    python3 tools/slips --unnoticed src/model     the slips that nobody noticed

The sources themselves are never touched: copies stand below build/slips, and are built there. What was judged is kept
there too; what nobody noticed is judged again with --again."""

import argparse
import collections
import concurrent.futures
import json
import pathlib
import random
import subprocess
import sys
import threading
import time

from planting import Slip, slips_of
from workshop import Workshop, folder_of

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDER = ROOT / "build" / "slips"
RESULTS = FOLDER / "judged.jsonl"


def arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="slips", description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("paths", nargs="*", help="folders or files below src")
    parser.add_argument("--since", metavar="COMMIT", help="only lines that changed since a commit")
    parser.add_argument("--count", type=int, default=100, help="how many, drawn at random; 0 for all (%(default)s)")
    parser.add_argument("--seed", type=int, default=1, help="of the draw (%(default)s)")
    parser.add_argument("--copies", type=int, default=2, help="copies that work side by side (%(default)s)")
    parser.add_argument("--again", action="store_true", help="judge again those that nobody noticed")
    parser.add_argument("--score", action="store_true", help="only tell what was found so far")
    parser.add_argument("--unnoticed", action="store_true", help="only list what nobody noticed so far")
    return parser.parse_args()


def sources(paths: list[str]) -> list[str]:
    """Sources and headers below the paths, by their names from the root."""
    listed = subprocess.run(["git", "ls-files", "--", *(paths or ["src"])], cwd=ROOT, check=True, capture_output=True, text=True)
    return [name for name in listed.stdout.splitlines() if name.startswith("src/") and name.endswith((".cpp", ".h"))]


def changed_lines(commit: str, file: str) -> set[int]:
    """Lines of a file that differ from a commit's."""
    found = subprocess.run(["git", "diff", "-U0", commit, "--", file], cwd=ROOT, check=True, capture_output=True, text=True)
    lines: set[int] = set()
    for row in found.stdout.splitlines():
        if row.startswith("@@"):
            first, _, count = row.split("+")[1].split(" ")[0].partition(",")
            lines.update(range(int(first), int(first) + int(count or 1)))
    return lines


def all_slips(options: argparse.Namespace) -> list[Slip]:
    slips = []
    for file in sources(options.paths):
        found = slips_of(file, (ROOT / file).read_text(encoding="utf-8"))
        if options.since:
            lines = changed_lines(options.since, file)
            found = [slip for slip in found if slip.line in lines]
        slips += found
    return slips


def judged() -> dict[str, dict]:
    """What was judged so far, by the slip's key; the last word counts."""
    if not RESULTS.exists():
        return {}
    rows = [json.loads(line) for line in RESULTS.read_text(encoding="utf-8").splitlines()]
    return {row["key"]: row for row in rows}


def tell_score(rows: list[dict]) -> None:
    counts: dict[str, collections.Counter] = collections.defaultdict(collections.Counter)
    for row in rows:
        if row["by"] != "compiler":
            counts[folder_of(row["file"])]["noticed" if row["by"] else "unnoticed"] += 1
    for folder, count in sorted(counts.items()):
        total = count["noticed"] + count["unnoticed"]
        print(f"{folder:12} {count['noticed']:5} of {total:5} noticed  {100 * count['noticed'] / total:5.1f} %")


def tell_unnoticed(rows: list[dict]) -> None:
    for row in sorted(rows, key=lambda row: (row["file"], row["line"])):
        if not row["by"]:
            print(f"{row['file']}:{row['line']} {row['kind']}")
            print("".join(f"  - {line.strip()}\n" for line in row["before"]) + "".join(f"  + {line.strip()}\n" for line in row["after"]), end="")


def judge_all(slips: list[Slip], copies: int) -> list[dict]:
    """Judges slips on several copies; neighbours in a file on the same one, which compiles less."""
    workshops = [Workshop(ROOT, FOLDER / str(i), max(1, 2 // copies)) for i in range(copies)]
    print(f"Building {copies} copies ...", flush=True)
    for workshop in workshops:
        workshop.prepare({folder_of(slip.file) for slip in slips})
    waiting = collections.deque(sorted(slips, key=lambda slip: (slip.file, slip.line)))
    total, began, rows, lock = len(waiting), time.monotonic(), [], threading.Lock()

    def work(workshop: Workshop) -> None:
        while True:
            with lock:
                if not waiting:
                    return
                slip = waiting.popleft() if workshop is workshops[0] else waiting.pop()
            by = workshop.judge(slip)
            row = {"key": slip.key, "file": slip.file, "line": slip.line, "kind": slip.kind, "before": slip.before, "after": slip.after, "by": by}
            with lock:
                rows.append(row)
                with RESULTS.open("a", encoding="utf-8") as file:
                    file.write(json.dumps(row) + "\n")
                minutes = (time.monotonic() - began) / 60
                print(f"{len(rows)} of {total}, {minutes:.0f} min  {slip.file}:{slip.line} {slip.kind}: {by or 'NOBODY'}", flush=True)

    with concurrent.futures.ThreadPoolExecutor(copies) as pool:
        for done in [pool.submit(work, workshop) for workshop in workshops]:
            done.result()
    return rows


def main() -> int:
    options = arguments()
    FOLDER.mkdir(parents=True, exist_ok=True)
    slips, known = all_slips(options), judged()
    if options.score or options.unnoticed:
        rows = [known[slip.key] for slip in slips if slip.key in known]
        tell_score(rows) if options.score else tell_unnoticed(rows)
        return 0
    chosen = slips if options.count == 0 else random.Random(options.seed).sample(slips, min(options.count, len(slips)))
    left = [slip for slip in chosen if slip.key not in known or (options.again and not known[slip.key]["by"])]
    print(f"{len(slips)} slips can be planted, {len(chosen)} are chosen, {len(left)} are not judged yet.")
    if left:
        judge_all(left, options.copies)
    known = judged()
    rows = [known[slip.key] for slip in chosen]
    tell_unnoticed(rows)
    tell_score(rows)
    return 0


if __name__ == "__main__":
    sys.exit(main())
