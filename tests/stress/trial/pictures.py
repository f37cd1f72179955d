# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Small pictures in every kind of file that is taken in, and a judge of outputs that is not the program under test."""
import subprocess
from pathlib import Path

import numpy
from PIL import Image

EXTENSIONS = ('jpg', 'jpeg', 'png', 'gif', 'tif', 'tiff', 'bmp', 'heic', 'heif', 'webp')


def pattern(width, height, seed):
    """Soft colours with some noise: no row is like another, so that none can be lost unseen."""
    random = numpy.random.default_rng(seed)
    y, x = numpy.mgrid[0:height, 0:width]
    planes = [(x * (3 + seed % 5) + y * 2 + 40 * plane) % 256 for plane in range(3)]
    noise = random.integers(0, 40, (height, width, 3))
    return Image.fromarray(((numpy.stack(planes, axis=2) + noise) % 256).astype(numpy.uint8))


def write(file, width=96, height=64, seed=1):
    file, picture = Path(file), pattern(width, height, seed)
    extension = file.suffix[1:]
    if extension in ('heic', 'heif'):
        png = file.with_suffix('.heif-source.png')
        picture.save(png)
        subprocess.run(['heif-enc', '-q', '60', '-o', file, png], check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        png.unlink()
    elif extension in ('tif', 'tiff'):
        picture.save(file, compression='tiff_lzw' if extension == 'tif' else 'tiff_adobe_deflate')
    elif extension == 'gif':
        picture.quantize(64).save(file)
    else:
        picture.save(file)


def write_all(folder, **size):
    """One of each extension, with names that do not collide."""
    for number, extension in enumerate(EXTENSIONS):
        write(Path(folder) / f'{number}-{extension}.{extension}', seed=number, **size)


def size_of(file):
    """Width and height of a picture that another reader reads to its end; None for anything else."""
    if Path(file).suffix in ('.heic', '.heif'):
        return heif_size(file)
    try:
        with Image.open(file) as picture:
            picture.load()
            return picture.size
    except Exception:  # pylint: disable=broad-except  # the reader raises what it likes
        return None


def heif_size(file):
    png = Path(file).with_suffix('.judged.png')
    try:
        done = subprocess.run(['heif-convert', file, png], stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, check=False, timeout=60)
        return size_of(png) if done.returncode == 0 else None
    finally:
        png.unlink(missing_ok=True)


def is_whole(file):
    return size_of(file) is not None
