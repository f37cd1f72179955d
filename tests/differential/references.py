# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""What each output has to show: the input as independent readers see it, upright, in sRGB, in the output's size."""
from dataclasses import dataclass, field
from pathlib import Path

import numpy as np

from product import SETTINGS
from reading import appearance, readers
from reading.picture import Picture, Unreadable, upright
from reading.programs import IMAGEMAGICK, run_quietly


@dataclass
class Reference:
    """Of one input; the pixels lie in files, so that many can be known at once."""
    name: str
    path: Path
    kind: str = 'other'
    reason: str = ''  # why it cannot be read; empty when it can
    model: str = ''
    bits: int = 8
    has_alpha: bool = False
    profile: bytes = b''
    is_uncertain: bool = False
    is_associated: bool = False
    is_converted: bool = False  # its colours are not stored as sRGB
    is_light: bool = False
    size: tuple = (0, 0)
    pixels: dict = field(default_factory=dict)  # size to file


def _turned(picture, colours, orientation):
    rgba = np.ones((*colours.shape[:2], 4), dtype=np.float32)
    rgba[:, :, :3] = colours
    if picture.alpha is not None:
        rgba[:, :, 3] = picture.alpha
    return upright(rgba, orientation)


def shown(picture: Picture, orientation):
    """Height x width x 4: straight sRGB and alpha, 0 to 1, upright."""
    return _turned(picture, appearance.colours_of(picture), orientation)


def _write_pam(path, rgba):
    height, width, _ = rgba.shape
    head = f'P7\nWIDTH {width}\nHEIGHT {height}\nDEPTH 4\nMAXVAL 65535\nTUPLTYPE RGB_ALPHA\nENDHDR\n'
    path.write_bytes(head.encode() + np.rint(rgba * 65535).astype('>u2').tobytes())


def make(name, path, orientation, folder):
    """`orientation` is what the file's EXIF says; readers of HEIF have to ignore it."""
    reference = Reference(name, path, readers.kind_of(path))
    try:
        picture = readers.read(path)
    except Unreadable as reason:
        reference.reason = str(reason) or 'unreadable'
        return reference
    colours = appearance.colours_of(picture)
    rgba = _turned(picture, colours, 1 if reference.kind == 'heif' else orientation)
    reference.model, reference.bits, reference.profile = picture.model, picture.bits, picture.profile
    reference.is_uncertain = appearance.is_uncertain(picture)
    reference.is_associated = picture.is_associated
    reference.is_light = appearance.is_light(picture)
    reference.is_converted = appearance.is_converted(picture, colours)
    reference.has_alpha = bool((rgba[:, :, 3] < 1).any())
    reference.size = (rgba.shape[1], rgba.shape[0])
    reference.pixels[reference.size] = folder / f'{name}.npy'
    np.save(reference.pixels[reference.size], rgba)
    if any(setting.size_of(*reference.size) != reference.size for setting in SETTINGS):
        _write_pam(folder / f'{name}.pam', rgba)
    return reference


def reduce_all(references):
    """Adds the smaller sizes, by ImageMagick's Lanczos; one process does many, most of whose time is its start."""
    steps = []
    for reference in references:
        sizes = {setting.size_of(*reference.size) for setting in SETTINGS if not reference.reason}
        for width, height in sizes - {reference.size}:
            source = reference.pixels[reference.size].with_suffix('.pam')
            target = source.with_suffix(f'.{width}x{height}.pam')
            steps.append(['(', source, '-filter', 'Lanczos', '-resize', f'{width}x{height}!', '-write', target, '+delete', ')'])
            reference.pixels[width, height] = target
    at_once = 100
    for first in range(0, len(steps), at_once):
        run_quietly(IMAGEMAGICK, *(word for step in steps[first:first + at_once] for word in step), 'xc:black', 'null:')


def pixels_of(reference, size):
    file = reference.pixels[size]
    if file.suffix == '.npy':
        return np.load(file)
    body = file.read_bytes().partition(b'ENDHDR\n')[2]
    return (np.frombuffer(body, '>u2').reshape(size[1], size[0], -1) / np.float32(65535))
