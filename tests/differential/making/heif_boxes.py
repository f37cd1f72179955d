# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Gives the picture of a HEIF file further properties, which the encoder's tool does not write."""
import struct

CONTAINERS = {b'meta': 4, b'iprp': 0}  # what stands before the first box inside

# Anticlockwise quarter turns, after a mirroring from left to right (1) or from top to bottom (0).
TURNS = {2: (1, 0), 3: (None, 2), 4: (0, 0), 5: (1, 1), 6: (None, 3), 7: (1, 3), 8: (None, 1)}


def box(name, content):
    return struct.pack('>I4s', 8 + len(content), name) + content


def boxes(data):
    at = 0
    while at < len(data):
        size, name = struct.unpack_from('>I4s', data, at)
        size = size or len(data) - at
        yield name, data[at + 8:at + size]
        at += size


def turning(orientation):
    """What shows a picture as one with this EXIF orientation is shown."""
    mirror, turns = TURNS[orientation]
    made = [] if mirror is None else [box(b'imir', bytes([mirror]))]
    return made + ([box(b'irot', bytes([turns]))] if turns else [])


def coded_colours(primaries, transfer):
    """What colours mean, by numbers; the matrix and the range are those of the encoder's default."""
    return [box(b'colr', b'nclx' + struct.pack('>HHHB', primaries, transfer, 6, 0x80))]


def _with_associations(content, item, indices):
    """`ipma` in its narrow form, which encoders of small files write."""
    version_and_flags, count = struct.unpack_from('>II', content)
    assert version_and_flags == 0
    out, at = content[:8], 8
    for _ in range(count):
        owner, associated = struct.unpack_from('>HB', content, at)
        own = content[at + 3:at + 3 + associated]
        at += 3 + associated
        if owner == item:
            own += bytes(0x80 | index for index in indices)  # a reader must know them
        out += struct.pack('>HB', owner, len(own)) + own
    return out


def _moved(content, distance):
    """`iloc` with everything that lies in the file so much further on: the base of its extents, or else each of them."""
    version, sizes = content[0], struct.unpack_from('>H', content, 4)[0]
    offset_size, length_size, base_size = sizes >> 12, sizes >> 8 & 15, sizes >> 4 & 15
    index_size = sizes & 15 if version == 1 else 0
    assert version < 2
    out, at = bytearray(content), 8

    def move(place, size):
        moved = int.from_bytes(out[place:place + size], 'big') + distance
        out[place:place + size] = moved.to_bytes(size, 'big')

    for _ in range(struct.unpack_from('>H', content, 6)[0]):
        is_in_file = version == 0 or struct.unpack_from('>H', content, at + 2)[0] & 15 == 0
        at += 6 if version == 1 else 4
        if base_size and is_in_file:
            move(at, base_size)
        extents = struct.unpack_from('>H', content, at + base_size)[0]
        at += base_size + 2
        for _ in range(extents):
            if not base_size and is_in_file:
                move(at + index_size, offset_size)
            at += index_size + offset_size + length_size
    return bytes(out)


def with_properties(data, properties):
    item = next(struct.unpack_from('>H', inner, 4)[0] for name, content in boxes(data) if name == b'meta'
                for box_name, inner in boxes(content[4:]) if box_name == b'pitm')

    def rebuilt(content, distance):
        out, known = b'', 0
        for name, inner in boxes(content):
            if name in CONTAINERS:
                skip = CONTAINERS[name]
                inner = inner[:skip] + rebuilt(inner[skip:], distance)
            elif name == b'ipco':
                known = sum(1 for _ in boxes(inner))
                inner += b''.join(properties)
            elif name == b'ipma':
                inner = _with_associations(inner, item, range(known + 1, known + 1 + len(properties)))
            elif name == b'iloc':
                inner = _moved(inner, distance)
            out += box(name, inner)
        return out

    return rebuilt(data, len(rebuilt(data, 0)) - len(data))
