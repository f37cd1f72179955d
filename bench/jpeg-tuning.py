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
import json
import math
import os
import pathlib
import random
import sys
import tempfile
import time

from equal_look import BUTTERAUGLI, SSIMULACRA, WORKERS, by_library, curves_of, mean, measured, middles, run, savings

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build/release"


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
        pictures = list(middles(folder, work, 320))
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
        pictures = list(middles(folder, work, 320))

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
