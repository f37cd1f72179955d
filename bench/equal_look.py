# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""How many bytes an encoder takes at the look that the image library's JPEG has: its scores lie on the library's curve of
each picture, and the bytes there are what its own are compared with."""
import concurrent.futures
import math
import pathlib
import subprocess
import tempfile

CURVE = [10, 20, 30, 40, 50, 58, 66, 72, 78, 82, 86, 89, 90, 92, 94, 96, 98]
WORKERS = concurrent.futures.ThreadPoolExecutor(2)
BUTTERAUGLI, SSIMULACRA = 1, 2


def run(*command):
    return subprocess.run([str(word) for word in command], check=True, capture_output=True, text=True).stdout


def measured(reference, jpeg):
    """Bytes, butteraugli 3-norm, SSIMULACRA."""
    norm = run("butteraugli_main", reference, jpeg, "--pnorm", "3").split("3-norm:")[1]
    return jpeg.stat().st_size, float(norm), float(run("ssimulacra_main", reference, jpeg).split()[0])


def by_library(reference, quality):
    with tempfile.TemporaryDirectory() as work:
        jpeg = pathlib.Path(work) / "a.jpg"
        run("vips", "jpegsave", reference, jpeg, "--Q", quality, "--optimize-coding", "--interlace", "--strip",
            "--subsample-mode", "off" if quality >= 90 else "on")
        return measured(reference, jpeg)


def library_bytes(curve, score, wanted):
    """Logarithm of the library's fewest bytes at the wanted score, None beyond its curve."""
    found = []
    points = [curve[quality] for quality in sorted(curve)]
    for low, high in zip(points, points[1:]):
        if min(low[score], high[score]) <= wanted <= max(low[score], high[score]) and low[score] != high[score]:
            share = (wanted - low[score]) / (high[score] - low[score])
            found.append(math.log(low[0]) + share * (math.log(high[0]) - math.log(low[0])))
    return min(found, default=None)


def curves_of(pictures):
    jobs = [(picture, quality) for picture in pictures for quality in CURVE]
    results = WORKERS.map(lambda job: by_library(*job), jobs)
    curves = {picture: {} for picture in pictures}
    for (picture, quality), result in zip(jobs, results):
        curves[picture][quality] = result
    return curves


def savings(curves, results, score):
    """Logarithms of bytes over the library's at the same score, by picture and setting."""
    found = {}
    for key, result in results.items():
        bytes_there = library_bytes(curves[key[0]], score, result[score])
        if bytes_there is not None:
            found[key] = math.log(result[0]) - bytes_there
    return found


def mean(values):
    values = list(values)
    return sum(values) / len(values) if values else math.nan


def middles(folder, work, size):
    """The middles of the PNG files of a folder, as files of their names in another."""
    for picture in sorted(pathlib.Path(folder).glob("*.png")):
        target = pathlib.Path(work) / picture.name
        run("convert", picture, "-gravity", "center", "-crop", f"{size}x{size}+0+0", "+repage", "-strip", f"PNG24:{target}")
        yield target
