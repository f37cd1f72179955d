# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Colour profiles made from nothing: two RGB spaces, a grey one and one of printing inks."""
import struct

import numpy as np

SRGB_PRIMARIES = ((0.64, 0.33), (0.30, 0.60), (0.15, 0.06))
P3_PRIMARIES = ((0.680, 0.320), (0.265, 0.690), (0.150, 0.060))
D65 = (0.3127, 0.3290)
D50_XYZ = np.array([0.9642, 1.0, 0.8249])
BRADFORD = np.array([[0.8951, 0.2664, -0.1614], [-0.7502, 1.7135, 0.0367], [0.0389, -0.0685, 1.0296]])


def xyz_of(point):
    x, y = point
    return np.array([x / y, 1, (1 - x - y) / y])


def adaptation(white, target):
    """The matrix that brings colours seen under one white to those under another."""
    gains = (BRADFORD @ target) / (BRADFORD @ white)
    return np.linalg.inv(BRADFORD) @ np.diag(gains) @ BRADFORD


def rgb_to_xyz(primaries, white):
    columns = np.stack([xyz_of(point) for point in primaries], axis=1)
    return columns * np.linalg.solve(columns, xyz_of(white))


def srgb_decoded(v):
    return np.where(v <= 0.04045, v / 12.92, ((np.maximum(v, 0) + 0.055) / 1.055) ** 2.4)


def srgb_encoded(v):
    v = np.clip(v, 0, 1)
    return np.where(v <= 0.0031308, v * 12.92, 1.055 * v ** (1 / 2.4) - 0.055)


def _fixed(values):
    return b''.join(struct.pack('>i', round(float(v) * 65536)) for v in values)


def _xyz(values):
    return b'XYZ \0\0\0\0' + _fixed(values)


def _curve(function):
    table = np.rint(function(np.linspace(0, 1, 1024)) * 65535).astype('>u2')
    return b'curv\0\0\0\0' + struct.pack('>I', table.size) + table.tobytes()


def _text(words):
    return b'text\0\0\0\0' + words.encode() + b'\0'


def _description(words):
    ascii_words = words.encode() + b'\0'
    return b'desc\0\0\0\0' + struct.pack('>I', len(ascii_words)) + ascii_words + bytes(4 + 4 + 2 + 1 + 67)


def _profile(kind, space, connection, name, tags):
    tags = {b'desc': _description(name), b'cprt': _text('none'), b'wtpt': _xyz(D50_XYZ), **tags}
    table, body = b'', b''
    start = 128 + 4 + 12 * len(tags)
    for signature, content in tags.items():
        table += signature + struct.pack('>II', start + len(body), len(content))
        body += content + bytes(-len(content) % 4)
    header = struct.pack('>I4sI4s4s4s6H4s', start + len(body), b'\0\0\0\0', 0x02400000, kind, space, connection,
                         2000, 1, 1, 0, 0, 0, b'acsp')
    header = header.ljust(64, b'\0') + bytes(4) + _fixed(D50_XYZ)
    return header.ljust(128, b'\0') + struct.pack('>I', len(tags)) + table + body


def rgb_profile(name, primaries, decoding=srgb_decoded):
    matrix = adaptation(xyz_of(D65), D50_XYZ) @ rgb_to_xyz(primaries, D65)
    tags = {b'%cXYZ' % letter: _xyz(matrix[:, at]) for at, letter in enumerate(b'rgb')}
    tags |= {b'%cTRC' % letter: _curve(decoding) for letter in b'rgb'}
    return _profile(b'mntr', b'RGB ', b'XYZ ', name, tags)


def grey_profile(name, gamma):
    return _profile(b'mntr', b'GRAY', b'XYZ ', name, {b'kTRC': _curve(lambda v: v ** gamma)})


def lab_of(xyz):
    ratio = xyz / D50_XYZ
    f = np.where(ratio > 216 / 24389, np.cbrt(ratio), (24389 / 27 * ratio + 16) / 116)
    return np.stack([116 * f[..., 1] - 16, 500 * (f[..., 0] - f[..., 1]), 200 * (f[..., 1] - f[..., 2])], axis=-1)


def ink_profile(name, grid=7):
    """Inks that are somewhat duller than the complements of red, green and blue."""
    axis = np.linspace(0, 1, grid)
    c, m, y, k = np.meshgrid(axis, axis, axis, axis, indexing='ij')
    linear = np.stack([(1 - 0.95 * c) * (1 - 0.10 * m), (1 - 0.25 * c) * (1 - 0.90 * m) * (1 - 0.05 * y),
                       (1 - 0.05 * c) * (1 - 0.30 * m) * (1 - 0.90 * y)], axis=-1) * (1 - 0.97 * k)[..., None]
    matrix = adaptation(xyz_of(D65), D50_XYZ) @ rgb_to_xyz(SRGB_PRIMARIES, D65)
    lab = lab_of(np.maximum(linear ** 1.6, 0) @ matrix.T)
    scaled = np.stack([lab[..., 0] / 100 * 65280, (lab[..., 1] + 128) * 256, (lab[..., 2] + 128) * 256], axis=-1)
    straight = np.array([0, 65535], dtype='>u2').tobytes()
    table = b'mft2\0\0\0\0' + bytes([4, 3, grid, 0]) + _fixed(np.eye(3).ravel()) + struct.pack('>HH', 2, 2)
    table += straight * 4 + np.rint(np.clip(scaled, 0, 65535)).astype('>u2').tobytes() + straight * 3
    return _profile(b'prtr', b'CMYK', b'Lab ', name, {b'A2B0': table})


SRGB = rgb_profile('Test sRGB', SRGB_PRIMARIES)
WIDE = rgb_profile('Test wide gamut', P3_PRIMARIES)
GREY = grey_profile('Test grey 1.8', 1.8)
INK = ink_profile('Test inks')
