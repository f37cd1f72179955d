#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""bytes-chart.py TABLE SVG: draws the table that bytes.py writes as bars. The chart brings its own ground, so that it
reads on light and on dark pages."""
import csv
import sys
from xml.sax.saxutils import escape

WIDTH, LABELS, RIGHT = 760, 224, 728
TOP, GROUP, BAR, GAP = 92, 52, 17, 2
GROUND, INK, QUIET, LINE = "#ffffff", "#1f2328", "#59636e", "#d1d9e0"
# Of both scores: the product's, and those of others.
OURS, THEIRS = ("#1a7f5a", "#7cc4a4"), ("#636c76", "#b7bec6")


def text(x, y, words, size=14, colour=INK, anchor="start", weight="normal"):
    return (f'<text x="{x}" y="{y}" font-size="{size}" fill="{colour}" text-anchor="{anchor}" '
            f'font-weight="{weight}">{escape(words)}</text>')


def box(x, y, width, height, colour):
    return f'<rect x="{x}" y="{y}" width="{width}" height="{height}" rx="2" fill="{colour}"/>'


def chart(rows):
    longest = max(1.1, *(max(values) for _, values in rows))
    scale = (RIGHT - LABELS) / longest
    bottom = TOP + GROUP * len(rows)
    drawn = [text(24, 34, "Bytes at equal look", 19, weight="600"),
             text(24, 58, "relative to the plain library's JPEG; less is better", 14, QUIET)]
    for x, green, grey, words in zip((474, 608), OURS, THEIRS, ("butteraugli", "SSIMULACRA")):
        drawn += [box(x, 46, 12, 13, green), box(x + 14, 46, 12, 13, grey), text(x + 34, 58, words, 14, QUIET)]
    for share in (0, 0.25, 0.5, 0.75, 1):
        x = round(LABELS + share * scale, 1)
        colour = QUIET if share == 1 else LINE
        drawn.append(f'<path d="M{x} {TOP - 8}V{bottom}" stroke="{colour}"/>')
        drawn.append(text(x, bottom + 20, f"{share * 100:.0f} %", 13, QUIET, "middle"))
    for place, (name, values) in enumerate(rows):
        y = TOP + GROUP * place + (GROUP - 2 * BAR - GAP) // 2
        ours = name.startswith("Lumora")
        drawn.append(text(LABELS - 14, y + BAR + 6, name, 15, INK, "end", "600" if ours else "normal"))
        for step, (value, colour) in enumerate(zip(values, OURS if ours else THEIRS)):
            top = y + step * (BAR + GAP)
            width = round(value * scale, 1)
            drawn += [box(LABELS, top, width, BAR, colour),
                      text(LABELS + width - 7, top + 13, f"{value * 100:.0f} %", 13, GROUND if step == 0 else INK, "end")]
    height = bottom + 38
    head = (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" width="{WIDTH}" height="{height}" '
            'font-family="-apple-system, \'Segoe UI\', Inter, \'Noto Sans\', \'DejaVu Sans\', Arial, sans-serif" role="img">')
    title = "<title>Bytes at equal look, relative to the plain library's JPEG</title>"
    frame = f'<rect x="0.5" y="0.5" width="{WIDTH - 1}" height="{height - 1}" rx="8" fill="{GROUND}" stroke="{LINE}"/>'
    return "\n".join([head, title, frame, *drawn, "</svg>"]) + "\n"


def main(table, svg):
    with open(table, encoding="utf-8") as lines:
        _, *rows = csv.reader(lines, delimiter="\t")
    with open(svg, "w", encoding="utf-8") as out:
        out.write(chart([(row[0], [float(value) for value in row[1:3]]) for row in rows]))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
