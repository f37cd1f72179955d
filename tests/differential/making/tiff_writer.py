# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Uncompressed TIFF files of any samples; libtiff's tools compress them."""
import struct

import numpy as np

GREY_WHITE_IS_ZERO, GREY, RGB, PALETTE, INK, LAB, ICC_LAB = 0, 1, 2, 3, 5, 8, 9
UNSPECIFIED, ASSOCIATED, STRAIGHT = 0, 1, 2
UNSIGNED, SIGNED, FLOAT = 1, 2, 3

_SHORT, _LONG, _DOUBLE, _UNDEFINED, _LONG8 = 3, 4, 12, 7, 16
_LETTER = {_SHORT: 'H', _LONG: 'I', _DOUBLE: 'd', _LONG8: 'Q'}


def packed_rows(samples, bits, order):
    """Rows of height x width x components, packed to bytes; whole numbers unless they are floats."""
    height = samples.shape[0]
    flat = samples.reshape(height, -1)
    if bits in (8, 16, 32, 64):
        kind = {'f': 'f', 'i': 'i', 'u': 'u'}[samples.dtype.kind]
        return flat.astype(np.dtype(f'{order}{kind}{bits // 8}')).view(np.uint8).reshape(height, -1)
    shifts = np.arange(bits - 1, -1, -1, dtype=np.uint64)
    single = ((flat.astype(np.uint64)[:, :, None] >> shifts) & 1).astype(np.uint8)
    return np.packbits(single.reshape(height, -1), axis=1)


class _Directory:
    def __init__(self, order, is_big):
        self.order, self.is_big, self.entries = order, is_big, []

    def add(self, tag, kind, values):
        content = values if isinstance(values, bytes) else struct.pack(
            self.order + str(len(values)) + _LETTER[kind], *values)
        self.entries.append((tag, kind, len(values), content))

    def packed(self, start):
        room, wide = (8, 'Q') if self.is_big else (4, 'I')
        size = len(self.entries) * (12 + 2 * (room - 4)) + (16 if self.is_big else 6)
        head = struct.pack(self.order + ('Q' if self.is_big else 'H'), len(self.entries))
        tail = b''
        for tag, kind, count, content in sorted(self.entries):
            head += struct.pack(self.order + 'HH' + wide, tag, kind, count)
            if len(content) <= room:
                head += content.ljust(room, b'\0')
            else:
                head += struct.pack(self.order + wide, start + size + len(tail))
                tail += content + bytes(len(content) % 2)
        return head + bytes(room) + tail


def write(path, samples, photometric, bits, *, sample_format=UNSIGNED, order='<', planar=False, extra=None,
          palette=None, profile=b'', is_big=False, declared_range=None, rows_per_strip=16):
    """`samples`: height x width x components. `palette`: colours x 3 of 8 bits. `extra`: the kind of the last one."""
    height, width, components = samples.shape
    planes = [samples[:, :, c:c + 1] for c in range(components)] if planar else [samples]
    strips = []
    for plane in planes:
        rows = packed_rows(plane, bits, order)
        strips += [rows[top:top + rows_per_strip].tobytes() for top in range(0, height, rows_per_strip)]
    position = 16 if is_big else 8
    body, offsets = b''.join(strips), []
    for strip in strips:
        offsets.append(position)
        position += len(strip)
    body += bytes(position % 2)
    position += position % 2

    directory = _Directory(order, is_big)
    for tag, kind, values in [(256, _LONG, [width]), (257, _LONG, [height]), (258, _SHORT, [bits] * components),
                              (259, _SHORT, [1]), (262, _SHORT, [photometric]),
                              (273, _LONG8 if is_big else _LONG, offsets), (277, _SHORT, [components]),
                              (278, _LONG, [rows_per_strip]), (279, _LONG, [len(strip) for strip in strips]),
                              (284, _SHORT, [2 if planar else 1])]:
        directory.add(tag, kind, values)
    if sample_format != UNSIGNED:
        directory.add(339, _SHORT, [sample_format] * components)
    if extra is not None:
        directory.add(338, _SHORT, [extra])
    if palette is not None:
        table = np.zeros((2 ** bits, 3), dtype=np.uint32)
        table[:len(palette)] = palette
        directory.add(320, _SHORT, [int(v) * 257 for v in table.T.ravel()])
    if declared_range:
        directory.add(340, _DOUBLE, [declared_range[0]] * components)
        directory.add(341, _DOUBLE, [declared_range[1]] * components)
    if profile:
        directory.add(34675, _UNDEFINED, profile)
    magic = b'II' if order == '<' else b'MM'
    head = struct.pack(order + 'HHHQ', 43, 8, 0, position) if is_big else struct.pack(order + 'HI', 42, position)
    path.write_bytes(magic + head + body + directory.packed(position))
