# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""A reader of BMP: ImageMagick, but for 16 bits a pixel, whose alpha it takes by half, and the unused bytes of 32."""
import struct

import numpy as np

from .pam import pam_picture
from .picture import Picture
from .programs import IMAGEMAGICK, output_of

PLAIN, MASKS = 0, 3  # ways to store; by masks, the file says which bits are which component


def _profile(data):
    header, = struct.unpack_from('<I', data, 14)
    if header < 124 or data[14 + 56:14 + 60] != b'DEBM':
        return b''
    start, size = struct.unpack_from('<II', data, 14 + 112)
    return data[14 + start:14 + start + size]


def _by_masks(data):
    start, header, width, height = struct.unpack_from('<IIii', data, 10)
    masks = struct.unpack_from('<4I' if header >= 56 else '<3I', data, 54)
    row_bytes = (width * 2 + 3) // 4 * 4
    rows = np.frombuffer(data, np.uint8, row_bytes * abs(height), start).reshape(abs(height), row_bytes)
    pixels = rows.copy().view('<u2')[:, :width].astype(np.int64)
    if height > 0:
        pixels = pixels[::-1]
    components = [(pixels & mask) / mask for mask in masks if mask]
    return Picture(np.dstack(components[:3]), 'rgb', 5, components[3] if len(components) > 3 else None)


def read(path):
    data = path.read_bytes()
    bits, compression = struct.unpack_from('<HI', data, 28)
    if bits == 16 and compression == MASKS:
        picture = _by_masks(data)
    else:
        picture = pam_picture(output_of(IMAGEMAGICK, f'bmp:{path}[0]', '-depth', '8', 'pam:-'))
        if bits == 32 and compression == PLAIN:
            picture.alpha = None
    picture.profile = _profile(data)
    return picture
