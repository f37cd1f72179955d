# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""A reader of TIFF: libtiff's `tiffcp` undoes the compression, what the samples mean is worked out here."""
import struct
import subprocess
import tempfile
from pathlib import Path

import numpy as np

from .picture import Picture, Unreadable, straight
from .programs import IMAGEMAGICK, output_of

LETTERS = {1: 'B', 2: 's', 3: 'H', 4: 'I', 5: 'II', 6: 'b', 7: 's', 8: 'h', 9: 'i', 11: 'f', 12: 'd', 16: 'Q'}
JPEG_COMPRESSIONS = (6, 7)


def _fields(data):
    """The numbers of each field of the first directory, or its bytes."""
    order = '<' if data[:2] == b'II' else '>'
    at = struct.unpack_from(order + 'I', data, 4)[0]
    fields = {}
    for number in range(struct.unpack_from(order + 'H', data, at)[0]):
        tag, kind, count = struct.unpack_from(order + 'HHI', data, at + 2 + 12 * number)
        letter = LETTERS.get(kind)
        if not letter or letter == 'II':
            continue
        size = struct.calcsize(letter) * count
        place = at + 10 + 12 * number
        if size > 4:
            place = struct.unpack_from(order + 'I', data, place)[0]
        fields[tag] = data[place:place + size] if letter == 's' else struct.unpack_from(f'{order}{count}{letter}', data, place)
    return order, fields


def _uncompressed(path):
    with tempfile.TemporaryDirectory() as folder:
        plain = Path(folder) / 'plain.tiff'
        done = subprocess.run(['tiffcp', '-c', 'none', '-s', '-f', 'msb2lsb', f'{path},0', plain],
                              stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False)
        if done.returncode != 0 or not plain.exists():
            raise Unreadable(done.stderr.decode(errors='replace').strip())
        return plain.read_bytes()


def _rows(data, fields, row_bytes, height):
    strips = b''.join(data[offset:offset + size] for offset, size in zip(fields[273], fields[279]))
    if len(strips) < row_bytes * height:
        raise Unreadable('too few rows')
    return np.frombuffer(strips, np.uint8)[:row_bytes * height].reshape(height, row_bytes)


def _numbers(packed, order, width, components, bits, sample_format):
    """Rows of bytes as height x width x components."""
    if bits in (8, 16, 32, 64):
        kind = {2: 'i', 3: 'f'}.get(sample_format, 'u')
        return packed.view(np.dtype(f'{order}{kind}{bits // 8}')).reshape(len(packed), width, components)
    digits = np.unpackbits(packed, axis=1)[:, :width * components * bits].reshape(len(packed), -1, bits)
    return (digits.astype(np.int64) @ (1 << np.arange(bits - 1, -1, -1, dtype=np.int64))).reshape(len(packed), width, components)


def _declared_range(fields, bits, sample_format):
    if 340 in fields and 341 in fields:
        return float(fields[340][0]), float(fields[341][0])
    if sample_format == 3:
        return 0.0, 1.0
    return (-2.0 ** (bits - 1), 2.0 ** (bits - 1) - 1) if sample_format == 2 else (0.0, 2.0 ** bits - 1)


def _lab(values, bits, is_icc):
    """Lightness is unsigned; the opponents are signed, or lie around the middle in the form that profiles use."""
    unit = 2.0 ** (bits - 8)
    lightness = values[:, :, :1] / ((255 * unit) if is_icc else (2.0 ** bits - 1)) * 100
    opponents = values[:, :, 1:3].astype(float)
    opponents = opponents - 128 * unit if is_icc else np.where(opponents >= 2 ** (bits - 1), opponents - 2 ** bits, opponents)
    return np.concatenate([lightness, opponents / unit], axis=2)


def _through_imagemagick(path):
    return np.frombuffer(output_of(IMAGEMAGICK, f'tiff:{path}[0]', '-depth', '8', 'rgb:-'), np.uint8) / 255


def read(path):
    data = _uncompressed(path)
    order, fields = _fields(data)
    width, height = fields[256][0], fields[257][0]
    bits, components = fields.get(258, (1,))[0], fields.get(277, (1,))[0]
    photometric, sample_format = fields[262][0], fields.get(339, (1,))[0]
    profile = bytes(fields.get(34675, b''))
    if photometric == 6:  # subsampled luma and chroma
        return Picture(_through_imagemagick(path).reshape(height, width, 3), 'rgb', 8, profile=profile)
    if photometric in (8, 9):
        sample_format = 1  # which of the components are signed is the model's to say
    is_planar = fields.get(284, (1,))[0] == 2 and components > 1
    together = 1 if is_planar else components
    packed = _rows(data, fields, (width * together * bits + 7) // 8, height * components // together)
    values = _numbers(packed, order, width, together, bits, sample_format)
    if is_planar:
        values = np.moveaxis(values.reshape(components, height, width), 0, 2)
    if photometric == 3:
        palette = np.array(fields[320]).reshape(3, -1).T
        scale = 65535 if palette.max() > 255 else 255  # some old writers put bytes there
        return Picture(palette[values[:, :, 0]] / scale, 'rgb', 8, profile=profile)
    if photometric in (8, 9):
        return Picture(_lab(values, bits, photometric == 9), 'lab', bits, profile=profile)
    low, high = _declared_range(fields, bits, sample_format)
    scaled = ((values.astype(float) - low) / (high - low)).clip(0, 1)
    model, count = {2: ('rgb', 3), 5: ('ink', 4)}.get(photometric, ('grey', 1))
    samples = 1 - scaled[:, :, :1] if photometric == 0 else scaled[:, :, :count]
    extra = fields.get(338, ())
    alpha = scaled[:, :, count] if components > count and extra and extra[0] in (1, 2) and model != 'ink' else None
    is_associated = alpha is not None and extra[0] == 1
    if is_associated:
        samples = straight(samples, alpha)
    return Picture(samples, model, bits, alpha, is_associated, profile)
