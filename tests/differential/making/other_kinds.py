# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""GIF, BMP and WebP files."""
import struct

import numpy as np
from PIL import Image

from . import pattern, profiles
from .commands import imagemagick, run


def _indexed(count, size=pattern.SIZE):
    index, palette = pattern.few_colours(size, count)
    image = Image.fromarray(index, 'P')
    image.putpalette(palette.tobytes())
    return image


def _make_gif(folder):
    for count in (2, 4, 16, 256):
        _indexed(count).save(folder / f'gif-{count}.gif', interlace=False)
        _indexed(count, pattern.ODD_SIZE).save(folder / f'gif-{count}-interlaced.gif', interlace=True)
        _indexed(count).save(folder / f'gif-{count}-key.gif', transparency=1)
    Image.fromarray(pattern.eight_bits(pattern.greys()), 'L').save(folder / 'gif-grey.gif')
    frames = [_indexed(256), _indexed(256).transpose(Image.Transpose.ROTATE_180)]
    frames[0].save(folder / 'gif-animated.gif', save_all=True, append_images=frames[1:], duration=50, loop=0)
    _indexed(16).save(folder / 'gif-comment.gif', comment=b'a comment')
    # A first frame that is smaller than the canvas leaves the rest of it transparent.
    imagemagick(folder / 'gif-16.gif', '-repage', '80x64+9+7', folder / 'gif-frame-in-canvas.gif')


def _flipped(data):
    """The same picture with its rows from the top down."""
    start, width, height, bits = (struct.unpack_from('<I', data, 10)[0], *struct.unpack_from('<ii', data, 18),
                                  struct.unpack_from('<H', data, 28)[0])
    row = (width * bits + 31) // 32 * 4
    rows = [data[start + y * row:start + (y + 1) * row] for y in range(height)]
    head = data[:22] + struct.pack('<i', -height) + data[26:start]
    return head + b''.join(reversed(rows)) + data[start + row * height:]


def _make_bmp(folder):
    sources = {'rgb': Image.fromarray(pattern.eight_bits(pattern.colours()), 'RGB'),
               'odd': Image.fromarray(pattern.eight_bits(pattern.colours(pattern.ODD_SIZE)), 'RGB'),
               'grey': Image.fromarray(pattern.eight_bits(pattern.greys()), 'L'),
               'alpha': Image.fromarray(pattern.eight_bits(
                   np.concatenate([pattern.colours(), pattern.cover()[:, :, None]], axis=2)), 'RGBA'),
               '2': _indexed(2), '16': _indexed(16), '256': _indexed(256), '256-odd': _indexed(256, pattern.ODD_SIZE)}
    for name, image in sources.items():
        image.save(folder.parent / f'bmp-source-{name}.png')
    for name, source, words, version in (
            ('rgb-24', 'rgb', [], 'BMP3'), ('rgb-24-odd-size', 'odd', [], 'BMP3'), ('rgb-24-version-2', 'rgb', [], 'BMP2'),
            ('rgb-24-version-4', 'rgb', [], 'BMP'), ('alpha-32', 'alpha', [], 'BMP'), ('grey-8', 'grey', [], 'BMP3'),
            ('palette-1', '2', [], 'BMP3'), ('palette-4', '16', [], 'BMP3'), ('palette-8', '256', [], 'BMP3'),
            ('palette-8-run-length', '256', ['-compress', 'RLE'], 'BMP3'),
            ('palette-8-run-length-version-5', '256', ['-compress', 'RLE'], 'BMP'),
            ('palette-8-run-length-odd-size', '256-odd', ['-compress', 'RLE'], 'BMP3'),
            ('rgb-565', 'rgb', ['-define', 'bmp:subtype=RGB565'], 'BMP'),
            ('rgb-555', 'rgb', ['-define', 'bmp:subtype=RGB555'], 'BMP'),
            ('alpha-4444', 'alpha', ['-define', 'bmp:subtype=ARGB4444'], 'BMP'),
            ('alpha-1555', 'alpha', ['-define', 'bmp:subtype=ARGB1555'], 'BMP')):
        target = folder / f'bmp-{name}.bmp'
        imagemagick(folder.parent / f'bmp-source-{source}.png', *(words or ['-compress', 'None']), f'{version}:{target}')
    for name in ('rgb-24', 'palette-8', 'alpha-32'):
        (folder / f'bmp-{name}-top-down.bmp').write_bytes(_flipped((folder / f'bmp-{name}.bmp').read_bytes()))


def _make_webp(folder):
    rgb = Image.fromarray(pattern.eight_bits(pattern.colours()), 'RGB')
    straight = pattern.eight_bits(np.concatenate([pattern.colours(), pattern.cover()[:, :, None]], axis=2))
    source, alpha_source = folder.parent / 'webp-source.png', folder.parent / 'webp-source-alpha.png'
    rgb.save(source)
    Image.fromarray(straight, 'RGBA').save(alpha_source)
    for name, words in (('lossy', ['-q', '90']), ('lossless', ['-lossless']), ('lossless-exact', ['-lossless', '-exact']),
                        ('near-lossless', ['-near_lossless', '60']), ('sharp', ['-q', '90', '-sharp_yuv']),
                        ('partitions', ['-q', '60', '-partition_limit', '50', '-segments', '4'])):
        run('cwebp', '-quiet', *words, source, '-o', folder / f'webp-{name}.webp')
        run('cwebp', '-quiet', *words, alpha_source, '-o', folder / f'webp-{name}-alpha.webp')
    for name, profile in (('srgb', profiles.SRGB), ('wide', profiles.WIDE)):
        rgb.save(folder / f'webp-profile-{name}.webp', icc_profile=profile, lossless=True)
    Image.fromarray(straight, 'RGBA').save(folder / 'webp-alpha-profile-wide.webp', icc_profile=profiles.WIDE,
                                           quality=90)
    Image.fromarray(pattern.eight_bits(pattern.colours(pattern.ODD_SIZE)), 'RGB').save(
        folder / 'webp-odd-size.webp', quality=90)
    turned = rgb.transpose(Image.Transpose.ROTATE_180)
    rgb.save(folder / 'webp-animated.webp', save_all=True, append_images=[turned], duration=50, lossless=True)


def make(folder):
    _make_gif(folder)
    _make_bmp(folder)
    _make_webp(folder)
    return {}
