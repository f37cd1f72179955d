#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""heic-quality.py [--each] FOLDER [LUMORA_CLI]: whether a HEIC of a quality looks as the JPEG of the same quality does.

Every JPEG and PNG photograph of the folder, reduced to a width of 1200, is written at qualities 30 to 95 as JPEG
and as HEIC and scored by butteraugli (its 3-norm: 0 is no difference, less is better). Printed for each quality,
over all photographs: the mean scores, the bytes of the HEIC as a share of those of the JPEG, the quality at which
the HEIC scores as the JPEG does, and the share of bytes there. Scores and sizes do not depend on the load of the
machine; the seconds are those of the processor for all HEIC files of a quality.

With --each the pictures are at most 2560 wide, so that most keep their size, and a line for each tells the bytes of its
HEIC as a share of those of the JPEG of some qualities, at the score of that JPEG.
"""
import math
import os
import pathlib
import resource
import subprocess
import sys
import tempfile

QUALITIES = range(30, 100, 5)
EACH_AT = (60, 75, 82, 88, 92)
EACH_QUALITIES = (50, *EACH_AT, 95)
ROOT = pathlib.Path(__file__).resolve().parent.parent


def run(*command):
    return subprocess.run([str(word) for word in command], check=True, capture_output=True, text=True).stdout


def score(reference, picture):
    for line in run("butteraugli_main", reference, picture, "--pnorm", "3").splitlines():
        if line.startswith("3-norm:"):
            return float(line.split(":")[1])
    raise RuntimeError("no score")


def encoded(cli, reference, file_format, quality, folder):
    before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
    run(cli, "-f", file_format, "-q", quality, "--resize", "none", "--quiet", "-o", folder, reference)
    seconds = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before
    (picture,) = folder.iterdir()
    size = picture.stat().st_size
    shown = picture
    if file_format == "heic":
        shown = folder / "shown.png"
        run("heif-convert", picture, shown)
    result = (score(reference, shown), size, seconds)
    for file in folder.iterdir():
        file.unlink()
    return result


def at_score(curve, wanted):
    """Quality and logarithm of the size where the falling curve of a photograph has the wanted score."""
    points = sorted((point[0], quality, math.log(point[1])) for quality, point in curve.items())
    for low, high in zip(points, points[1:]):
        if low[0] <= wanted <= high[0]:
            share = (wanted - low[0]) / (high[0] - low[0]) if high[0] > low[0] else 0
            return tuple(a + (b - a) * share for a, b in zip(low[1:], high[1:]))
    return None


def mean(values):
    values = list(values)
    return sum(values) / len(values) if values else math.nan


def row(quality, jpegs, heics):
    pairs = [(jpeg[quality], heic[quality]) for jpeg, heic in zip(jpegs, heics)]
    equal = [(at_score(heic, jpeg[quality][0]), jpeg[quality]) for jpeg, heic in zip(jpegs, heics)]
    equal = [(found, jpeg) for found, jpeg in equal if found]
    return (
        quality,
        mean(jpeg[0] for jpeg, _ in pairs),
        mean(heic[0] for _, heic in pairs),
        math.exp(mean(math.log(heic[1] / jpeg[1]) for jpeg, heic in pairs)),
        mean(found[0] for found, _ in equal),
        math.exp(mean(found[1] - math.log(jpeg[1]) for found, jpeg in equal)),
        len(equal),
        sum(heic[2] for _, heic in pairs),
    )


def line(name, jpeg, heic):
    found = [at_score(heic, jpeg[quality][0]) for quality in EACH_AT]
    shares = ["%.2f" % (math.exp(at[1]) / jpeg[quality][1]) if at else "-" for quality, at in zip(EACH_AT, found)]
    return f"{name}: " + ", ".join(f"{share} at {quality}" for quality, share in zip(EACH_AT, shares))


def main(folder, cli=ROOT / "build/release/Lumora/Contents/MacOS/lumora-cli", is_each=False):
    photographs = sorted(p for p in pathlib.Path(folder).iterdir() if p.suffix.lower() in (".jpg", ".jpeg", ".png"))
    width, qualities = (2560, EACH_QUALITIES) if is_each else (1200, QUALITIES)
    run(ROOT / "packaging/install-dependencies.sh", "bench")
    jpegs, heics = [], []
    with tempfile.TemporaryDirectory() as work:
        reference = pathlib.Path(work) / "reference.png"
        out = pathlib.Path(work) / "out"
        out.mkdir()
        for photograph in photographs:
            try:
                run("convert", photograph, "-auto-orient", "-resize", f"{width}x>", "-strip", "-depth", "8", f"PNG24:{reference}")
            except subprocess.CalledProcessError:
                print(f"{photograph.name}: left out, for it cannot be read whole", file=sys.stderr)
                continue
            jpegs.append({q: encoded(cli, reference, "jpeg", q, out) for q in qualities})
            heics.append({q: encoded(cli, reference, "heic", q, out) for q in qualities})
            if is_each:
                print(line(photograph.name, jpegs[-1], heics[-1]), flush=True)
            else:
                print(photograph.name, file=sys.stderr)
    if is_each:
        return
    print("quality  JPEG   HEIC  bytes  equal look at  bytes  of photographs  s")
    for quality in QUALITIES:
        print("%7d %5.3f  %5.3f  %5.2f %14.1f  %5.2f %15d %5.1f" % row(quality, jpegs, heics))


if __name__ == "__main__":
    os.environ["LC_ALL"] = "C"
    words = sys.argv[1:]
    main(*(word for word in words if word != "--each"), is_each="--each" in words)
