# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""TIFF files: models, depths, kinds of samples, alpha, layouts and compressions."""
import numpy as np

from . import pattern, profiles
from . import tiff_writer as tiff
from .commands import run

UNUSUAL_SAMPLES = 'samples that few programs scale alike may be refused'


def _whole(values, bits):
    values = values if values.ndim == 3 else values[:, :, None]
    return pattern.levels(values, bits)


def _lab(size, bits, photometric):
    """The pattern in L*a*b*, as libtiff's two forms of it store it."""
    matrix = profiles.adaptation(profiles.xyz_of(profiles.D65), profiles.D50_XYZ) @ profiles.rgb_to_xyz(
        profiles.SRGB_PRIMARIES, profiles.D65)
    lab = profiles.lab_of(profiles.srgb_decoded(pattern.colours(size)) @ matrix.T)
    unit = 2 ** (bits - 8)
    lightness = np.rint(lab[..., :1] / 100 * (2 ** bits - 1))
    opponents = np.clip(np.rint(lab[..., 1:] * unit), -128 * unit, 128 * unit - 1)
    if photometric == tiff.ICC_LAB:
        lightness = np.rint(lab[..., :1] / 100 * 255 * unit)
        opponents = opponents + 128 * unit
    return (np.concatenate([lightness, opponents], axis=2).astype(np.int64) % 2 ** bits).astype(np.uint64)


def _whole_kinds():
    rgb, grey, ink = pattern.colours(), pattern.greys(), pattern.inks()
    for bits in (1, 2, 4, 8, 16):
        yield f'grey-{bits}', _whole(grey, bits), tiff.GREY, bits, {}
        yield f'grey-{bits}-white-is-zero', _whole(1 - grey, bits), tiff.GREY_WHITE_IS_ZERO, bits, {}
    for bits in (8, 16):
        for planar in (False, True):
            ending = '-planar' if planar else ''
            yield f'rgb-{bits}{ending}', _whole(rgb, bits), tiff.RGB, bits, {'planar': planar}
            yield f'ink-{bits}{ending}', _whole(ink, bits), tiff.INK, bits, {'planar': planar}
        yield f'rgb-{bits}-big-endian', _whole(rgb, bits), tiff.RGB, bits, {'order': '>'}
        yield f'rgb-{bits}-bigtiff', _whole(rgb, bits), tiff.RGB, bits, {'is_big': True}
        for name, form in (('lab', tiff.LAB), ('icc-lab', tiff.ICC_LAB)):
            yield f'{name}-{bits}', _lab(pattern.SIZE, bits, form), form, bits, {}
    for bits in (1, 2, 4, 8):
        index, palette = pattern.few_colours(count=2 ** bits)
        yield f'palette-{bits}', index[:, :, None].astype(np.uint64), tiff.PALETTE, bits, {'palette': palette}
    yield 'rgb-odd-size', _whole(pattern.colours(pattern.ODD_SIZE), 8), tiff.RGB, 8, {}
    yield 'grey-1-odd-size', _whole(pattern.greys(pattern.ODD_SIZE), 1), tiff.GREY, 1, {}


def _alpha_kinds():
    cover = pattern.cover()[:, :, None]
    for name, picture, form in (('grey', pattern.greys()[:, :, None], tiff.GREY), ('rgb', pattern.colours(), tiff.RGB)):
        for bits in (8, 16):
            straight = _whole(np.concatenate([picture, cover], axis=2), bits)
            mixed = _whole(np.concatenate([picture * cover, cover], axis=2), bits)
            yield f'{name}-{bits}-alpha-straight', straight, form, bits, {'extra': tiff.STRAIGHT}
            yield f'{name}-{bits}-alpha-associated', mixed, form, bits, {'extra': tiff.ASSOCIATED}
    planar = _whole(np.concatenate([pattern.colours(), cover], axis=2), 8)
    yield 'rgb-8-alpha-straight-planar', planar, tiff.RGB, 8, {'extra': tiff.STRAIGHT, 'planar': True}


def _unusual_kinds():
    for name, picture, form in (('grey', pattern.greys()[:, :, None], tiff.GREY), ('rgb', pattern.colours(), tiff.RGB)):
        yield f'{name}-12', _whole(picture, 12), form, 12, {}
        yield f'{name}-32', _whole(picture, 32), form, 32, {}
        for bits in (16, 32, 64):
            samples = picture.astype(f'f{bits // 8}')
            yield f'{name}-float-{bits}', samples, form, bits, {'sample_format': tiff.FLOAT}
        declared = {'sample_format': tiff.FLOAT, 'declared_range': (0, 255)}
        yield f'{name}-float-32-of-255', (picture * 255).astype('f4'), form, 32, declared
        declared = {'sample_format': tiff.FLOAT, 'declared_range': (0, 1)}
        yield f'{name}-float-32-declared', picture.astype('f4'), form, 32, declared
        signed = (_whole(picture, 16).astype(np.int64) - 2 ** 15).astype('i2')
        yield f'{name}-signed-16', signed, form, 16, {'sample_format': tiff.SIGNED, 'declared_range': (-2**15, 2**15-1)}
    yield 'ink-32', _whole(pattern.inks(), 32), tiff.INK, 32, {}


def _profile_kinds():
    rgb = pattern.colours()
    for bits in (8, 16):
        yield f'rgb-{bits}-profile-srgb', _whole(rgb, bits), tiff.RGB, bits, {'profile': profiles.SRGB}
        yield f'rgb-{bits}-profile-wide', _whole(rgb, bits), tiff.RGB, bits, {'profile': profiles.WIDE}
        yield f'grey-{bits}-profile-grey', _whole(pattern.greys(), bits), tiff.GREY, bits, {'profile': profiles.GREY}
        yield f'ink-{bits}-profile-ink', _whole(pattern.inks(), bits), tiff.INK, bits, {'profile': profiles.INK}
    index, palette = pattern.few_colours()
    wide = {'palette': palette, 'profile': profiles.WIDE}
    yield 'palette-8-profile-wide', index[:, :, None].astype(np.uint64), tiff.PALETTE, 8, wide


def _compressions():
    """From a file that is there already, to which compression; libtiff's own tool writes them."""
    for source in ('rgb-8', 'rgb-16', 'grey-8', 'ink-8', 'rgb-8-alpha-straight', 'palette-8', 'grey-float-32'):
        for name, words in (('lzw', ['-c', 'lzw:2']), ('deflate', ['-c', 'zip']), ('packbits', ['-c', 'packbits']),
                            ('tiled', ['-t', '-w', '32', '-l', '16', '-c', 'lzw'])):
            if name != 'lzw' or source in ('rgb-8', 'rgb-16', 'grey-8', 'ink-8'):
                yield source, name, words
    for name, words in (('g3', ['-c', 'g3']), ('g3-2d', ['-c', 'g3:2d']), ('g4', ['-c', 'g4']),
                        ('packbits', ['-c', 'packbits']), ('lsb-first', ['-c', 'none', '-f', 'lsb2msb'])):
        yield 'grey-1', name, words
        yield 'grey-1-white-is-zero', name, words
    yield 'rgb-8', 'jpeg', ['-c', 'jpeg:95']
    yield 'rgb-8', 'jpeg-rgb', ['-c', 'jpeg:r:95']
    yield 'grey-8', 'jpeg', ['-c', 'jpeg:95']
    yield 'rgb-float-32', 'predicted', ['-c', 'zip:3']
    yield 'rgb-16', 'predicted', ['-c', 'zip:2']
    yield 'rgb-16', 'big-endian-lzw', ['-B', '-c', 'lzw:2']


def make(folder):
    notes = {}
    unusual = list(_unusual_kinds())
    for name, samples, form, bits, options in [*_whole_kinds(), *_alpha_kinds(), *unusual, *_profile_kinds()]:
        tiff.write(folder / f'tiff-{name}.tiff', samples, form, bits, **options)
    unusual_names = {name for name, *_ in unusual}
    for source, name, words in _compressions():
        target = folder / f'tiff-{source}-{name}.tiff'
        run('tiffcp', *words, folder / f'tiff-{source}.tiff', target)
        unusual_names |= {f'{source}-{name}'} if source in unusual_names else set()
    pages = [folder / 'tiff-rgb-8.tiff', folder / 'tiff-grey-8.tiff']
    run('tiffcp', *pages, folder / 'tiff-pages.tiff')
    for bits in (8, 16):
        notes[f'tiff-icc-lab-{bits}.tiff'] = {'may refuse': 'a kind of L*a*b* that next to no program writes'}
    for name in unusual_names:
        notes[f'tiff-{name}.tiff'] = {'may refuse': UNUSUAL_SAMPLES}
    return notes
