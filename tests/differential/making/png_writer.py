# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""PNG files of every colour type, depth and interlace, with any chunks."""
import struct
import zlib

import numpy as np

GREY, RGB, PALETTE, GREY_ALPHA, RGB_ALPHA = 0, 2, 3, 4, 6
ADAM7 = [(0, 0, 8, 8), (4, 0, 8, 8), (0, 4, 4, 8), (2, 0, 4, 4), (0, 2, 2, 4), (1, 0, 2, 2), (0, 1, 1, 2)]


def _chunk(name, content):
    return struct.pack('>I', len(content)) + name + content + struct.pack('>I', zlib.crc32(name + content))


def _packed(samples, depth):
    height = samples.shape[0]
    flat = samples.reshape(height, -1)
    if depth == 16:
        return flat.astype('>u2').view(np.uint8).reshape(height, -1)
    if depth == 8:
        return flat.astype(np.uint8)
    shifts = np.arange(depth - 1, -1, -1)
    bits = (flat.astype(np.uint8)[:, :, None] >> shifts) & 1
    return np.packbits(bits.reshape(height, -1), axis=1)


def _filtered(rows, step):
    """Each row by another of the simple filters: as it is, against the left, against the one above."""
    out = b''
    above = np.zeros(rows.shape[1], dtype=np.uint8)
    for number, row in enumerate(rows):
        kind = number % 3
        before = np.concatenate([np.zeros(min(step, row.size), dtype=np.uint8), row[:-step]])
        out += bytes([kind]) + (row - (0, before, above)[kind]).astype(np.uint8).tobytes()
        above = row
    return out


def write(path, samples, colour_type, depth, *, interlaced=False, chunks=(), palette=None, transparency=b'',
          late_chunks=()):
    """`samples`: height x width x components. `chunks`: pairs of name and content that stand before the palette."""
    height, width, components = samples.shape
    step = max(1, components * depth // 8)
    passes = [samples[y::dy, x::dx] for x, y, dx, dy in ADAM7] if interlaced else [samples]
    pixels = b''.join(_filtered(_packed(part, depth), step) for part in passes if part.size)
    data = b'\x89PNG\r\n\x1a\n'
    data += _chunk(b'IHDR', struct.pack('>IIBBBBB', width, height, depth, colour_type, 0, 0, int(interlaced)))
    data += b''.join(_chunk(name, content) for name, content in chunks)
    if palette is not None:
        data += _chunk(b'PLTE', np.asarray(palette, dtype=np.uint8).tobytes())
    if transparency:
        data += _chunk(b'tRNS', transparency)
    data += _chunk(b'IDAT', zlib.compress(pixels))
    data += b''.join(_chunk(name, content) for name, content in late_chunks)
    path.write_bytes(data + _chunk(b'IEND', b''))


def profile_chunk(profile):
    return b'iCCP', b'profile\0\0' + zlib.compress(profile)


def gamma_chunk(gamma):
    return b'gAMA', struct.pack('>I', round(gamma * 100000))


def chromaticity_chunk(white, primaries):
    points = [white, *primaries]
    return b'cHRM', struct.pack('>8I', *(round(v * 100000) for point in points for v in point))
