# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Running the writers that are programs."""
import subprocess

from reading.programs import IMAGEMAGICK


def run(*words):
    done = subprocess.run([str(word) for word in words], stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    if done.returncode != 0:
        raise RuntimeError(f'{" ".join(map(str, words))}: {done.stderr.decode(errors="replace").strip()}')
    return done.stdout


def imagemagick(*words):
    return run(IMAGEMAGICK, *words)
