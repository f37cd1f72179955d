# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""JPEG files: models, subsamplings, orders of coding, profiles, comments and damage."""
import io

import numpy as np
from PIL import Image

from . import pattern, profiles
from .commands import imagemagick

SUBSAMPLINGS = {'444': 0, '422': 1, '420': 2}
UNCOMMON_SUBSAMPLINGS = {'440': '1x2,1x1,1x1', '411': '4x1,1x1,1x1', '410': '4x2,1x1,1x1'}


def _segments_end(data):
    """Where the application segments stop."""
    at = 2
    while data[at] == 0xFF and 0xE0 <= data[at + 1] <= 0xEF:
        at += 2 + int.from_bytes(data[at + 2:at + 4], 'big')
    return at


def with_segment(data, marker, content):
    at = _segments_end(data)
    return data[:at] + bytes([0xFF, marker]) + (len(content) + 2).to_bytes(2, 'big') + content + data[at:]


def _encoded(image, **options):
    out = io.BytesIO()
    image.save(out, 'JPEG', quality=90, **options)
    return out.getvalue()


def _picture(mode, size=pattern.SIZE):
    samples = {'RGB': pattern.colours, 'L': pattern.greys, 'CMYK': pattern.inks}[mode](size)
    return Image.fromarray(pattern.eight_bits(samples), mode)


def _stored_rgb():
    """Components named R, G and B instead of the usual ones: no conversion lies between."""
    planes = pattern.eight_bits(pattern.colours())
    data = bytearray(_encoded(Image.fromarray(planes, 'YCbCr'), subsampling=0))
    del data[2:2 + 2 + int.from_bytes(data[4:6], 'big')]  # JFIF would say otherwise
    for marker, first, step in ((b'\xff\xc0', 10, 3), (b'\xff\xda', 5, 2)):
        at = data.index(marker)
        for number, letter in enumerate(b'RGB'):
            data[at + first + number * step] = letter
    return bytes(data)


def _converted_ink():
    """Inks whose first three components are stored as luma and chroma, as most programs write them."""
    inks = pattern.eight_bits(pattern.inks())
    converted = Image.fromarray(inks[:, :, :3], 'RGB').convert('YCbCr')
    planes = np.concatenate([255 - np.asarray(converted), inks[:, :, 3:]], axis=2)
    data = bytearray(_encoded(Image.fromarray(planes, 'CMYK')))
    data[data.index(b'Adobe') + 11] = 2
    return bytes(data)


def _colour_kinds():
    for size_name, size in (('', pattern.SIZE), ('-odd-size', pattern.ODD_SIZE)):
        for progressive in (False, True):
            ending = ('-progressive' if progressive else '') + size_name
            for name, code in SUBSAMPLINGS.items():
                yield f'{name}{ending}', _encoded(_picture('RGB', size), subsampling=code, progressive=progressive)
            yield f'grey{ending}', _encoded(_picture('L', size), progressive=progressive)
            yield f'ink{ending}', _encoded(_picture('CMYK', size), progressive=progressive)


def _profile_kinds():
    for name, profile in (('srgb', profiles.SRGB), ('wide', profiles.WIDE)):
        for subsampling in ('444', '420'):
            data = _encoded(_picture('RGB'), subsampling=SUBSAMPLINGS[subsampling], icc_profile=profile)
            yield f'{subsampling}-profile-{name}', data
    yield 'grey-profile-grey', _encoded(_picture('L'), icc_profile=profiles.GREY)
    yield 'ink-profile-ink', _encoded(_picture('CMYK'), icc_profile=profiles.INK)
    yield 'ink-progressive-profile-ink', _encoded(_picture('CMYK'), icc_profile=profiles.INK, progressive=True)
    yield 'grey-profile-of-rgb', _encoded(_picture('L'), icc_profile=profiles.WIDE)
    # Longer than one segment, so that it comes in pieces.
    padded = profiles.rgb_profile('x' * 70000, profiles.P3_PRIMARIES)
    yield '444-profile-in-pieces', _encoded(_picture('RGB'), subsampling=0, icc_profile=padded)


def make(folder):
    for kind, data in [*_colour_kinds(), *_profile_kinds()]:
        (folder / f'jpeg-{kind}.jpg').write_bytes(data)
    (folder / 'jpeg-stored-rgb.jpg').write_bytes(_stored_rgb())
    (folder / 'jpeg-ink-converted.jpg').write_bytes(_converted_ink())
    source = folder.parent / 'jpeg-source.png'
    _picture('RGB').save(source)
    for name, factors in UNCOMMON_SUBSAMPLINGS.items():
        imagemagick(source, '-quality', '90', '-sampling-factor', factors, folder / f'jpeg-{name}.jpg')

    plain = _encoded(_picture('RGB'), subsampling=0)
    (folder / 'jpeg-comment.jpg').write_bytes(with_segment(plain, 0xFE, b'a comment'))
    (folder / 'jpeg-bytes-after-end.jpg').write_bytes(plain + b'something else' * 10)
    (folder / 'jpeg-one-pixel.jpg').write_bytes(_encoded(_picture('RGB').crop((0, 0, 1, 1))))
    baseline, progressive = plain, _encoded(_picture('RGB'), subsampling=0, progressive=True)
    notes = {}
    for name, data in (('', baseline), ('-progressive', progressive)):
        whole = folder / f'jpeg-whole{name}.jpg'
        whole.write_bytes(data)
        (folder / f'jpeg-no-end-marker{name}.jpg').write_bytes(data[:-2])
        notes[f'jpeg-no-end-marker{name}.jpg'] = {'like': whole.name}
        (folder / f'jpeg-half{name}.jpg').write_bytes(data[:len(data) * 2 // 3])
        notes[f'jpeg-half{name}.jpg'] = {'refuse': 'a third of the coded picture is missing'}
    return notes
