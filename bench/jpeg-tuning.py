#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""How small the product's JPEG files are at the same look, and the search for the numbers of its encoder.

  jpeg-tuning.py compare FOLDER [LUMORA_CLI]
      Every PNG of the folder at qualities 50 to 95, beside the library's file: bytes at the same butteraugli
      3-norm and SSIMULACRA score, and the scores at the same quality.
  jpeg-tuning.py search FOLDER half|full SCALE[,SCALE]... MINUTES
      Changes the numbers of tuned_coding.cpp one after another and keeps what makes the middles of the pictures
      smaller at the same scores; prints each set that is better than the one before.
  jpeg-tuning.py scales FOLDER half|full
      For each quality the scale at which the middles of the pictures score as the library's do.

FOLDER comes from jpeg-corpus.sh; search and scales must not see its proof half. jpeg_coding has to be built. Nothing
depends on the load of the machine.
"""
import concurrent.futures
import json
import math
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build/release"
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


def by_product(reference, quality, cli):
    with tempfile.TemporaryDirectory() as work:
        run(cli, "-f", "jpeg", "-q", quality, "--resize", "none", "--quiet", "-o", work, reference)
        (jpeg,) = pathlib.Path(work).iterdir()
        return measured(reference, jpeg)


def by_numbers(reference, scale, chroma, numbers):
    with tempfile.TemporaryDirectory() as work:
        jpeg = pathlib.Path(work) / "a.jpg"
        given = [f"{name}={','.join(str(value) for value in values)}" for name, values in numbers.items()]
        run(BUILD / "bench/jpeg_coding", reference, jpeg, scale, chroma, *given)
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


def compare(folder, cli):
    pictures = sorted(pathlib.Path(folder).glob("*.png"))
    curves = curves_of(pictures)
    print("quality  bytes at butteraugli  at SSIMULACRA  butteraugli at the number  worse in both")
    for quality in (50, 60, 70, 78, 82, 86, 90, 95):
        same = dict(zip(pictures, WORKERS.map(lambda p: by_library(p, quality), pictures)))
        results = dict(zip(((p, quality) for p in pictures), WORKERS.map(lambda p: by_product(p, quality, cli), pictures)))
        first, second = savings(curves, results, BUTTERAUGLI), savings(curves, results, SSIMULACRA)
        look = mean(math.log(results[p, quality][1] / same[p][1]) for p in pictures)
        worse = [key[0].stem for key in first if first[key] > 0 and second.get(key, 0) > 0]
        print("%7d %21.3f %14.3f %26.3f  %s" % (
            quality, math.exp(mean(first.values())), math.exp(mean(second.values())), math.exp(look), " ".join(worse)))


def middles(folder, work):
    for picture in sorted(pathlib.Path(folder).glob("*.png")):
        target = pathlib.Path(work) / picture.name
        run("convert", picture, "-gravity", "center", "-crop", "320x320+0+0", "+repage", "-strip", f"PNG24:{target}")
        yield target


def product_numbers(chroma):
    lines = (line.split(maxsplit=1) for line in run(BUILD / "bench/jpeg_coding").splitlines())
    named = (rest.split("=") for kind, rest in lines if kind == chroma)
    return {name: [float(value) for value in values.split(",")] for name, values in named}


def moves_of(numbers):
    """Which values move together, and by how much at first."""
    moves = {}
    for name, values in numbers.items():
        if len(values) == 1:
            moves[name, (0,)] = 0.04
        else:
            step = 0.12 if name.endswith("steps") else 0.04
            for first in [0] + list(range(1, len(values), 2)):
                moves[name, tuple(range(first, min(first + (2 if first else 1), len(values))))] = step
            moves[name, tuple(range(len(values)))] = step
    return moves


def search(folder, chroma, scales, minutes):
    with tempfile.TemporaryDirectory() as work:
        pictures = list(middles(folder, work))
        curves = curves_of(pictures)

        def judged(numbers):
            keys = [(picture, scale) for picture in pictures for scale in scales]
            results = dict(zip(keys, WORKERS.map(lambda key: by_numbers(*key, chroma, numbers), keys)))
            first = savings(curves, results, BUTTERAUGLI).values()
            second = savings(curves, results, SSIMULACRA).values()
            # No picture's luck may pay for the others, and a loss counts more than a gain.
            capped = [[max(-0.45, value) for value in values] for values in (first, second)]
            losses = mean(max(0, value) for value in first) + mean(max(0, value) for value in second)
            return 0.55 * mean(capped[0]) + 0.45 * mean(capped[1]) + 0.3 * losses, mean(first), mean(second)

        numbers = product_numbers(chroma)
        moves = moves_of(numbers)
        best = judged(numbers)
        print("start %.4f, butteraugli %.4f, SSIMULACRA %.4f" % best, flush=True)
        end = time.time() + 60 * minutes
        while time.time() < end:
            for move in random.sample(list(moves), len(moves)):
                for sign in (1, -1):
                    tried = json.loads(json.dumps(numbers))
                    for place in move[1]:
                        tried[move[0]][place] = round(tried[move[0]][place] + sign * moves[move], 4)
                    result = judged(tried)
                    if result[0] < best[0] - 1e-5:
                        best, numbers = result, tried
                        moves[move] *= 1.3
                        print("%.4f, %.4f, %.4f" % best, json.dumps(numbers), flush=True)
                        break
                else:
                    moves[move] /= 2
                if time.time() > end:
                    return


def scales_of(folder, chroma):
    qualities = (90, 92, 95, 97, 99) if chroma == "full" else (10, 20, 30, 40, 50, 60, 70, 75, 80, 85, 89)
    scales = [(0.8 if chroma == "full" else 4) * 1.32**step for step in range(9 if chroma == "full" else 13)]
    with tempfile.TemporaryDirectory() as work:
        pictures = list(middles(folder, work))

        def loss(encode, setting):
            return mean(WORKERS.map(lambda picture: math.log(encode(picture, setting)[1]), pictures))

        own = [(loss(lambda picture, scale: by_numbers(picture, scale, chroma, {}), scale), scale) for scale in scales]
        for quality in qualities:
            wanted = loss(by_library, quality)
            for low, high in zip(own, own[1:]):
                if low[0] <= wanted <= high[0]:
                    share = (wanted - low[0]) / (high[0] - low[0])
                    print("%d: %.2f" % (quality, low[1] * (high[1] / low[1]) ** share), flush=True)


def main(action, folder, *rest):
    run(ROOT / "packaging/install-dependencies.sh", "bench")
    if action == "compare":
        compare(folder, rest[0] if rest else BUILD / "Lumora/Contents/MacOS/lumora-cli")
    elif action == "search":
        search(folder, rest[0], [float(scale) for scale in rest[1].split(",")], float(rest[2]))
    else:
        scales_of(folder, rest[0])


if __name__ == "__main__":
    os.environ["LC_ALL"] = "C"
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
