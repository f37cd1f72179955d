# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""A reader of PNG that shares nothing with anybody's; of large ones only what their chunks say, for it is slow."""
import struct
import zlib

import numpy as np

from .pam import pam_picture
from .picture import ColourTags, Picture, Unreadable
from .programs import IMAGEMAGICK, output_of

LARGE = 200_000  # pixels
COMPONENTS = {0: 1, 2: 3, 3: 1, 4: 2, 6: 4}
ADAM7 = [(0, 0, 8, 8), (4, 0, 8, 8), (0, 4, 4, 8), (2, 0, 4, 4), (0, 2, 2, 4), (1, 0, 2, 2), (0, 1, 1, 2)]


def _chunks(data):
    at, found = 8, {}
    while at + 12 <= len(data):
        size, name = struct.unpack_from('>I4s', data, at)
        content = data[at + 8:at + 8 + size]
        if len(content) < size or zlib.crc32(name + content) != struct.unpack_from('>I', data, at + 8 + size)[0]:
            raise Unreadable('a damaged chunk')
        found.setdefault(name, []).append(content)
        at += 12 + size
    return {name: b''.join(parts) if name == b'IDAT' else parts[0] for name, parts in found.items()}


def _paeth(left, above, corner):
    guess = left + above - corner
    by_left, by_above, by_corner = abs(guess - left), abs(guess - above), abs(guess - corner)
    if by_left <= by_above and by_left <= by_corner:
        return left
    return above if by_above <= by_corner else corner


def _row_by_row(kind, row, above, step):
    """The filters whose bytes depend on the one before."""
    out = bytearray(row)
    before = bytes(step)
    for at, value in enumerate(row):
        left, up = (out[at - step], above[at]) if at >= step else (before[0], above[at])
        corner = above[at - step] if at >= step else 0
        out[at] = (value + (left, None, (left + up) // 2, _paeth(left, up, corner))[kind - 1]) & 255
    return bytes(out)


def _unfiltered(data, height, row_bytes, step):
    if len(data) < height * (row_bytes + 1):
        raise Unreadable('too few rows')
    out = np.zeros((height, row_bytes), dtype=np.uint8)
    above = bytes(row_bytes)
    for y in range(height):
        start = y * (row_bytes + 1)
        kind, row = data[start], data[start + 1:start + 1 + row_bytes]
        if kind == 2:
            row = (np.frombuffer(row, np.uint8) + np.frombuffer(above, np.uint8)).astype(np.uint8).tobytes()
        elif kind == 1 and step < row_bytes and row_bytes % step == 0:
            row = np.cumsum(np.frombuffer(row, np.uint8).reshape(-1, step), axis=0, dtype=np.uint8).tobytes()
        elif kind:
            row = _row_by_row(kind, row, above, step)
        out[y] = np.frombuffer(row, np.uint8)
        above = row
    return out


def _samples(rows, width, components, depth):
    if depth == 16:
        return rows.copy().view('>u2').reshape(len(rows), width, components).astype(np.int64)
    if depth == 8:
        return rows.reshape(len(rows), width, components).astype(np.int64)
    bits = np.unpackbits(rows, axis=1)[:, :width * depth].reshape(len(rows), width, depth)
    return (bits @ (1 << np.arange(depth - 1, -1, -1)))[:, :, None]


def _pixels(data, width, height, components, depth, interlaced):
    step = max(1, components * depth // 8)
    out = np.zeros((height, width, components), dtype=np.int64)
    for x, y, dx, dy in ADAM7 if interlaced else [(0, 0, 1, 1)]:
        columns, rows = len(range(x, width, dx)), len(range(y, height, dy))
        if columns and rows:
            row_bytes = (columns * components * depth + 7) // 8
            part = _unfiltered(data, rows, row_bytes, step)
            data = data[rows * (row_bytes + 1):]
            out[y::dy, x::dx] = _samples(part, columns, components, depth)
    return out


def _tags(chunks):
    tags = ColourTags()
    if b'cICP' in chunks:
        tags.coded = tuple(chunks[b'cICP'][:2])
    elif b'sRGB' in chunks or b'iCCP' in chunks:
        return tags
    if b'gAMA' in chunks:
        tags.gamma = struct.unpack('>I', chunks[b'gAMA'])[0] / 100000
    if b'cHRM' in chunks:
        values = [v / 100000 for v in struct.unpack('>8I', chunks[b'cHRM'])]
        tags.white, *tags.primaries = [(values[at], values[at + 1]) for at in range(0, 8, 2)]
    return tags


def _indexed(index, chunks):
    palette = np.frombuffer(chunks[b'PLTE'], np.uint8).reshape(-1, 3) / 255
    if index.max() >= len(palette):
        palette = np.concatenate([palette, np.zeros((256, 3))])
    cover = np.ones(len(palette))
    given = np.frombuffer(chunks.get(b'tRNS', b''), np.uint8)[:len(palette)]
    cover[:len(given)] = given / 255
    return palette[index], cover[index] if b'tRNS' in chunks else None


def _through_imagemagick(path, depth, is_colour):
    # The colour space is set lest it converts what it takes for linear.
    picture = pam_picture(output_of(IMAGEMAGICK, path, '-set', 'colorspace', 'sRGB', '-depth', depth, 'pam:-'))
    return picture.samples if is_colour else picture.samples[:, :, :1], picture.alpha


def _decoded(chunks, width, height, depth, colour_type, interlace):
    try:
        packed = zlib.decompressobj().decompress(chunks[b'IDAT'])
    except zlib.error as error:
        raise Unreadable(str(error)) from error
    values = _pixels(packed, width, height, COMPONENTS[colour_type], depth, interlace)
    if colour_type == 3:
        return _indexed(values[:, :, 0], chunks)
    colours, top = (3 if colour_type in (2, 6) else 1), 2 ** depth - 1
    alpha = None
    if values.shape[2] > colours:
        alpha = values[:, :, colours] / top
    elif b'tRNS' in chunks:
        key = np.frombuffer(chunks[b'tRNS'], '>u2')[:colours]
        alpha = (values[:, :, :colours] != key).any(axis=2).astype(float)
    return values[:, :, :colours] / top, alpha


def read(path):
    chunks = _chunks(path.read_bytes())
    if b'IHDR' not in chunks or b'IDAT' not in chunks:
        raise Unreadable('no picture')
    width, height, depth, colour_type, _, _, interlace = struct.unpack('>IIBBBBB', chunks[b'IHDR'])
    bits = 8 if colour_type == 3 else depth
    is_colour = colour_type in (2, 3, 6)
    if width * height > LARGE:
        samples, alpha = _through_imagemagick(path, bits, is_colour)
    else:
        samples, alpha = _decoded(chunks, width, height, depth, colour_type, interlace)
    profile = b''
    if b'iCCP' in chunks:
        profile = zlib.decompress(chunks[b'iCCP'][chunks[b'iCCP'].index(b'\0') + 2:])
    return Picture(samples, 'rgb' if is_colour else 'grey', bits, alpha, profile=profile, tags=_tags(chunks))
