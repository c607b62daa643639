#!/usr/bin/python3
"""Makes the pictures of docs/fleet.md from real runs, and prints the figures that it tells.

    PYTHONPATH=build/release/python tools/fleet_pictures.py docs/pictures [--sites 50000] [--runs 20000]
"""
import argparse
import collections
import hashlib
import html
import pathlib
import re
import tempfile

import genvara
from genvara import fleet

ROOT = pathlib.Path(__file__).resolve().parent.parent
INK, MUTED, BAR = "#1f2933", "#6b7785", "#2f6f9f"
WIDTH, ROW, LEFT, RIGHT = 720, 26, 150, 190


def text(x, y, words, anchor="start", colour=INK, size=13):
    return f'<text x="{x:g}" y="{y:g}" text-anchor="{anchor}" fill="{colour}" font-size="{size}">{html.escape(words)}</text>'


def line(x1, y1, x2, y2, colour=INK, width=1.0):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}" stroke-width="{width:g}"/>'


def chart(title, rows, scale, ticks, draw):
    """A chart of rows: caption on the left, figure on the right, between them what `draw` makes of a row's value."""
    top, height = 44, 44 + ROW * len(rows) + 34
    plot = WIDTH - LEFT - RIGHT
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" width="{WIDTH}" height="{height}" '
             f'font-family="sans-serif" role="img" aria-label="{html.escape(title)}">',
             f'<rect width="{WIDTH}" height="{height}" fill="#ffffff"/>', text(12, 24, title, size=15)]
    for value, caption in ticks:
        x = LEFT + plot * value / scale
        parts += [line(x, top, x, height - 30, "#d8dde3"), text(x, height - 12, caption, "middle", MUTED, 12)]
    for place, (caption, figure, value) in enumerate(rows):
        y = top + ROW * place + ROW / 2
        parts += [text(LEFT - 10, y + 4, caption, "end"), *draw(value, y, lambda part: LEFT + plot * part / scale),
                  text(WIDTH - RIGHT + 14, y + 4, figure)]
    return "\n".join([*parts, "</svg>"]) + "\n"


def interval(share, y, at):
    low, high = at(share.low), at(share.high)
    return [line(low, y, high, y, BAR, 3), line(low, y - 6, low, y + 6, BAR, 1.5), line(high, y - 6, high, y + 6, BAR, 1.5),
            f'<circle cx="{at(share.share):.1f}" cy="{y:.1f}" r="4" fill="{INK}"/>']


def bar(value, y, at):
    return [f'<rect x="{at(0):.1f}" y="{y - 8:.1f}" width="{at(value) - at(0):.1f}" height="16" fill="{BAR}"/>']


def draw_chances(folder, catalogue, runs):
    project = genvara.read(ROOT / "samples/hospital.prj")
    study = fleet.chances(project, {"PowerSystem.AmbTemp": fleet.normal(35.0, 4.0),
                                    "Step[2].Load[1].RunningRealPower": fleet.normal(90_000.0, 15_000.0),
                                    "Step[3].Load[1].Quantity": fleet.integers(2, 5),
                                    "Step[5].Load[1].Quantity": fleet.integers(1, 3)},
                          runs=runs, seed=7, catalogue=catalogue)
    shares = sorted(study.sets(), key=lambda share: (share.share, share.model))[:8]
    rows = [(share.model, f"{100 * share.share:.2f} % ({100 * share.low:.2f} to {100 * share.high:.2f})", share)
            for share in sorted(shares, key=lambda share: kilowatts(share.model))]
    (folder / "chances.svg").write_text(chart(f"In how many of {runs:,} runs a set does the job for the hospital", rows, 1.0,
                                              [(part / 4, f"{25 * part} %") for part in range(5)], interval), encoding="utf-8")
    print(study)
    for share in study.sets():
        print(f"  {share}")


def kilowatts(model):
    """The rating that a model of the catalogue is named after."""
    return int(re.search(r"\d+", model).group())


def sites(folder, count):
    """Sites of a fleet: each a sample at another place, as files. Which place, their numbers decide."""
    samples = [(ROOT / "samples" / f"{name}.prj") for name in ("farm", "office", "telecom-shelter", "workshop")]
    for number in range(count):
        project = genvara.read(samples[number % len(samples)])
        word = int.from_bytes(hashlib.blake2b(str(number).encode(), digest_size=8).digest(), "big")
        project.power_system.altitude = float(word % 3000)
        project.power_system.amb_temp = 15.0 + word // 3000 % 31
        file = folder / f"{number:06}.json"
        file.write_text(project.dumps(), encoding="utf-8")
        yield file


def draw_sites(folder, catalogue, count):
    with tempfile.TemporaryDirectory() as temporary:
        table = fleet.size(sites(pathlib.Path(temporary), count), catalogue)
        models = collections.Counter(row["model_num"] or "no set does" for row in table)
    shown = models.most_common(12)
    rows = [(model, f"{number:,}", number) for model, number in shown]
    rest = count - sum(number for _, number in shown)
    if rest:
        rows.append((f"{len(models) - len(shown)} others", f"{rest:,}", rest))
    scale = max(value for *_, value in rows)
    (folder / "sites.svg").write_text(chart(f"First recommended set of {count:,} sites", rows, scale,
                                            [(0, "0"), (scale, f"{scale:,} sites")], bar), encoding="utf-8")
    print(f"{count} sites, {len(models)} answers, {models['no set does']} without a set")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--sites", type=int, default=50_000)
    parser.add_argument("--runs", type=int, default=20_000)
    arguments = parser.parse_args()
    catalogue = genvara.Catalogue()
    draw_chances(arguments.folder, catalogue, arguments.runs)
    draw_sites(arguments.folder, catalogue, arguments.sites)


if __name__ == "__main__":
    main()
