# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""PNG files: every colour type, depth, interlace and transparency, and every way to say what colours mean."""
import struct

import numpy as np

from . import pattern, png_writer, profiles
from .png_writer import GREY, GREY_ALPHA, PALETTE, RGB, RGB_ALPHA


def _samples(colour_type, depth, size):
    picture = pattern.colours(size) if colour_type in (RGB, RGB_ALPHA) else pattern.greys(size)[:, :, None]
    if colour_type in (GREY_ALPHA, RGB_ALPHA):
        picture = np.concatenate([picture, pattern.cover(size)[:, :, None]], axis=2)
    return pattern.levels(picture, depth)


def _key_of(samples):
    """The colour of the corner as the one that means transparency."""
    return b''.join(struct.pack('>H', int(v)) for v in samples[1, 1])


def _plain_kinds(size):
    for depth in (1, 2, 4, 8, 16):
        samples = _samples(GREY, depth, size)
        yield f'grey-{depth}', samples, GREY, depth, {}
        yield f'grey-{depth}-key', samples, GREY, depth, {'transparency': _key_of(samples)}
    for depth in (8, 16):
        samples = _samples(RGB, depth, size)
        yield f'rgb-{depth}', samples, RGB, depth, {}
        yield f'rgb-{depth}-key', samples, RGB, depth, {'transparency': _key_of(samples)}
        yield f'grey-{depth}-alpha', _samples(GREY_ALPHA, depth, size), GREY_ALPHA, depth, {}
        yield f'rgb-{depth}-alpha', _samples(RGB_ALPHA, depth, size), RGB_ALPHA, depth, {}
    for depth in (1, 2, 4, 8):
        index, palette = pattern.few_colours(size, 2 ** depth)
        indexed = index[:, :, None]
        yield f'palette-{depth}', indexed, PALETTE, depth, {'palette': palette}
        cover = bytes([0, 128]) + bytes([255] * (2 ** depth - 2))
        yield f'palette-{depth}-alpha', indexed, PALETTE, depth, {'palette': palette, 'transparency': cover}


def _colour_chunks():
    wide = png_writer.chromaticity_chunk(profiles.D65, profiles.P3_PRIMARIES)
    srgb = png_writer.chromaticity_chunk(profiles.D65, profiles.SRGB_PRIMARIES)
    gamma = png_writer.gamma_chunk
    yield 'srgb-chunk', [(b'sRGB', b'\0'), gamma(0.45455), srgb]
    yield 'gamma-2.2', [gamma(0.45455)]
    yield 'gamma-1.8', [gamma(1 / 1.8)]
    yield 'gamma-1.0', [gamma(1.0)]
    yield 'wide-primaries', [gamma(0.45455), wide]
    yield 'wide-primaries-gamma-1.8', [gamma(1 / 1.8), wide]
    yield 'srgb-primaries-gamma-1.0', [gamma(1.0), srgb]
    yield 'cicp-srgb', [(b'cICP', bytes([1, 13, 0, 1]))]
    yield 'cicp-wide', [(b'cICP', bytes([12, 13, 0, 1]))]
    yield 'cicp-linear', [(b'cICP', bytes([1, 8, 0, 1]))]
    yield 'profile-srgb', [png_writer.profile_chunk(profiles.SRGB)]
    yield 'profile-wide', [png_writer.profile_chunk(profiles.WIDE)]
    yield 'profile-srgb-over-gamma', [gamma(1.0), png_writer.profile_chunk(profiles.SRGB)]


def _tagged_kinds(size):
    for name, chunks in _colour_chunks():
        yield f'rgb-8-{name}', _samples(RGB, 8, size), RGB, 8, {'chunks': chunks}
        if 'srgb' not in name:
            yield f'rgb-16-alpha-{name}', _samples(RGB_ALPHA, 16, size), RGB_ALPHA, 16, {'chunks': chunks}
    index, palette = pattern.few_colours(size)
    wide = [png_writer.profile_chunk(profiles.WIDE)]
    yield 'palette-8-profile-wide', index[:, :, None], PALETTE, 8, {'palette': palette, 'chunks': wide}
    linear = [png_writer.gamma_chunk(1.0)]
    yield 'palette-8-gamma-1.0', index[:, :, None], PALETTE, 8, {'palette': palette, 'chunks': linear}
    for depth in (8, 16):
        grey = _samples(GREY, depth, size)
        profile = [png_writer.profile_chunk(profiles.GREY)]
        yield f'grey-{depth}-profile-grey', grey, GREY, depth, {'chunks': profile}
        yield f'grey-{depth}-gamma-1.0', grey, GREY, depth, {'chunks': linear}
    alpha = _samples(GREY_ALPHA, 8, size)
    yield 'grey-8-alpha-profile-grey', alpha, GREY_ALPHA, 8, {'chunks': [png_writer.profile_chunk(profiles.GREY)]}


def _word_kinds(size):
    rgb = _samples(RGB, 8, size)
    yield 'text', rgb, RGB, 8, {'chunks': [(b'tEXt', b'Title\0a title')]}
    yield 'time', rgb, RGB, 8, {'chunks': [(b'tIME', struct.pack('>HBBBBB', 2011, 12, 13, 14, 15, 16))]}
    yield 'density', rgb, RGB, 8, {'chunks': [(b'pHYs', struct.pack('>IIB', 11811, 11811, 1))]}
    yield 'late-text', rgb, RGB, 8, {'late_chunks': [(b'tEXt', b'Author\0somebody')]}


def make(folder):
    kinds = [(f'{name}{ending}', *rest, interlaced) for interlaced in (False, True)
             for ending, size in (('-interlaced' if interlaced else '', pattern.ODD_SIZE),)
             for name, *rest in _plain_kinds(size)]
    kinds += [(*kind, False) for kind in [*_tagged_kinds(pattern.SIZE), *_word_kinds(pattern.SIZE)]]
    for name, samples, colour_type, depth, options, interlaced in kinds:
        png_writer.write(folder / f'png-{name}.png', samples, colour_type, depth, interlaced=interlaced, **options)
    return {}
