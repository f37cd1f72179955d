#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""bytes.py FOLDER TABLE: bytes at equal look of the product's formats and of other programs' JPEG.

The photographs of the folder are reduced to a width of 1200, and the middles (480 x 480) of them are written by every
encoder at some qualities. The means of their bytes over those of the plain library's JPEG (progressive, optimised
codes, as vipsthumbnail writes it) at the same butteraugli 3-norm and at the same SSIMULACRA, and what they are at
quality 82, are printed as a table for docs/performance.md and written to TABLE for bytes-chart.py. Sizes and scores do
not depend on the load of the machine. lumora-cli has to be built.
"""
import math
import os
import pathlib
import subprocess
import sys
import tempfile

from equal_look import BUTTERAUGLI, SSIMULACRA, WORKERS, curves_of, mean, measured, middles, run, savings

PEER = pathlib.Path(__file__).resolve().parent / "peer.sh"
QUALITIES = (60, 75, 82, 90)
ENCODERS = {
    "Lumora HEIC": ("product", "heic"),
    "Lumora WebP": ("product", "webp"),
    "Lumora JPEG": ("product", "jpeg"),
    "sharp JPEG, trellis": ("trellis", "jpeg"),
    "sharp JPEG": ("sharp", "jpeg"),
    "mogrify JPEG": ("mogrify", "jpeg"),
}
LIBRARY = "vipsthumbnail JPEG"


def is_here(program):
    if subprocess.run([PEER, "has", program], check=False).returncode == 0:
        return True
    print(f"Left out, not found: {program}\n")
    return False


def pictures_of(folder, work):
    reduced = pathlib.Path(work) / "reduced"
    reduced.mkdir()
    for number, photograph in enumerate(sorted(pathlib.Path(folder).iterdir())):
        run("vipsthumbnail", photograph, "--size", "1200x2000>", "--eprofile", "srgb", "-o", f"{reduced}/{number}.png[strip]")
    pictures = pathlib.Path(work) / "pictures"
    pictures.mkdir()
    return list(middles(reduced, pictures, 480))


def scored(reference, file):
    shown = file
    if file.suffix in (".webp", ".heic"):
        shown = file.with_suffix(".png")
        run(*(("dwebp", file, "-o", shown) if file.suffix == ".webp" else ("heif-convert", file, shown)))
    return (file.stat().st_size, *measured(reference, shown)[1:])


def results_of(program, task, pictures):
    """Bytes and scores by picture and quality."""
    results = {}
    for quality in QUALITIES:
        with tempfile.TemporaryDirectory() as out:
            os.environ["QUALITY"] = str(quality)
            run(PEER, program, task, pictures[0].parent, out)
            written = {file.name.split(".")[0]: file for file in pathlib.Path(out).iterdir()}
            for picture, score in zip(pictures, WORKERS.map(lambda p: scored(p, written[p.stem]), pictures)):
                results[picture, quality] = score
    return results


def row(curves, results):
    first, second = savings(curves, results, BUTTERAUGLI), savings(curves, results, SSIMULACRA)
    at = {picture: result for (picture, quality), result in results.items() if quality == 82}
    return (
        math.exp(mean(first.values())),
        math.exp(mean(second.values())),
        math.exp(mean(math.log(result[0] / curves[picture][82][0]) for picture, result in at.items())),
        mean(result[BUTTERAUGLI] for result in at.values()),
        mean(result[SSIMULACRA] for result in at.values()),
    )


def main(folder, table):
    with tempfile.TemporaryDirectory() as work:
        pictures = pictures_of(folder, work)
        curves = curves_of(pictures)
        rows = {name: row(curves, results_of(*how, pictures)) for name, how in ENCODERS.items() if is_here(how[0])}
        rows[LIBRARY] = row(curves, {(p, quality): curves[p][quality] for p in pictures for quality in (82, 90)})
    print(f"Bytes at equal look, {len(pictures)} photographs, qualities {', '.join(map(str, QUALITIES))}\n")
    print("| | at equal butteraugli | at equal SSIMULACRA | bytes at 82 | butteraugli at 82 | SSIMULACRA at 82 |")
    print("|---|---|---|---|---|---|")
    with open(table, "w", encoding="utf-8") as lines:
        lines.write("encoder\tbutteraugli\tSSIMULACRA\n")
        for name, values in rows.items():
            print("| %s | %.2f | %.2f | %.2f | %.3f | %.4f |" % (name, *values))
            lines.write("%s\t%.4f\t%.4f\n" % (name, *values[:2]))


if __name__ == "__main__":
    os.environ["LC_ALL"] = "C"
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
