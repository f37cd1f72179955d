# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""HEIC files, and HEIF files whose picture is coded with AV1."""
import numpy as np

from . import heif_boxes, pattern, png_writer, profiles
from .commands import run


def _sources(folder):
    """Pictures for the encoder, by name."""
    rgb, cover = pattern.colours(), pattern.cover()[:, :, None]
    straight = np.concatenate([rgb, cover], axis=2)
    write = png_writer.write
    kinds = {'rgb': (rgb, png_writer.RGB, 8, ()), 'grey': (pattern.greys()[:, :, None], png_writer.GREY, 8, ()),
             'alpha': (straight, png_writer.RGB_ALPHA, 8, ()), 'deep': (rgb, png_writer.RGB, 16, ()),
             'odd': (pattern.colours(pattern.ODD_SIZE), png_writer.RGB, 8, ())}
    for name, profile in (('srgb', profiles.SRGB), ('wide', profiles.WIDE)):
        kinds[f'profile-{name}'] = (rgb, png_writer.RGB, 8, [png_writer.profile_chunk(profile)])
    paths = {}
    for name, (samples, colour_type, depth, chunks) in kinds.items():
        paths[name] = folder / f'heif-source-{name}.png'
        write(paths[name], pattern.levels(samples, depth), colour_type, depth, chunks=chunks)
    return paths


def _kinds():
    fine = ['-q', '90']
    yield 'rgb-420', 'rgb', fine
    yield 'rgb-422', 'rgb', [*fine, '-p', 'chroma=422']
    yield 'rgb-444', 'rgb', [*fine, '-p', 'chroma=444']
    yield 'rgb-lossless', 'rgb', ['-L', '-p', 'chroma=444', '--matrix_coefficients=0']
    yield 'rgb-odd-size', 'odd', fine
    yield 'grey', 'grey', fine
    yield 'alpha', 'alpha', fine
    yield 'ten-bits', 'deep', [*fine, '-b', '10']
    yield 'twelve-bits', 'deep', [*fine, '-b', '12']
    yield 'thumbnail', 'rgb', [*fine, '-t', '16']
    yield 'profile-srgb', 'profile-srgb', fine
    yield 'profile-wide', 'profile-wide', fine
    yield 'limited-range', 'rgb', [*fine, '--full_range_flag=0']
    yield 'matrix-709', 'rgb', [*fine, '--matrix_coefficients=1']


def make(folder):
    sources = _sources(folder.parent)
    for prefix, ending, coding in (('heic', 'heic', []), ('av1', 'heif', ['-A'])):
        for name, source, words in _kinds():
            if source == 'deep' and coding:
                continue  # heif-enc 1.15 crashes on deep pictures for AV1
            run('heif-enc', *coding, *words, sources[source], '-o', folder / f'{prefix}-{name}.{ending}')
        plain = (folder / f'{prefix}-rgb-444.{ending}').read_bytes()
        for orientation in heif_boxes.TURNS:
            turned = folder / f'{prefix}-orientation-{orientation}.{ending}'
            turned.write_bytes(heif_boxes.with_properties(plain, heif_boxes.turning(orientation)))
        for name, primaries in (('srgb', 1), ('wide', 12)):
            # The encoder may have put such a property there, which says nothing.
            unsaid = plain.replace(b'colrnclx', b'freenclx')
            coded = heif_boxes.with_properties(unsaid, heif_boxes.coded_colours(primaries, 13))
            (folder / f'{prefix}-coded-{name}.{ending}').write_bytes(coded)
    return {}


def make_described(folder):
    """From JPEG files; the orientation that EXIF speaks of is not for readers of HEIF."""
    for source, name in (('jpeg-words-all.jpg', 'described'), ('jpeg-444-orientation-6.jpg', 'exif-orientation-6')):
        run('heif-enc', '-q', '90', folder / source, '-o', folder / f'heic-{name}.heic')
        run('heif-enc', '-A', '-q', '90', folder / source, '-o', folder / f'av1-{name}.heif')
    return {}
