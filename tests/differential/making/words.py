# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Orientations and metadata, which exiftool writes into copies of files that are there already."""
import shutil
import struct

from .commands import run
from .jpeg_kinds import with_segment

GROUPS = {
    'exif': ['-EXIF:Make=Maker', '-EXIF:Model=Model', '-EXIF:ImageDescription=Described', '-EXIF:Artist=Somebody',
             '-EXIF:DateTimeOriginal=2011:12:13 14:15:16', '-EXIF:ExposureTime=0.01', '-EXIF:FNumber=2.8',
             '-EXIF:ISO=200', '-EXIF:UserComment=said', '-EXIF:LensModel=a lens', '-EXIF:ColorSpace#=1'],
    'gps': ['-GPSLatitude=48.1', '-GPSLatitudeRef=N', '-GPSLongitude=11.5', '-GPSLongitudeRef=E', '-GPSAltitude=520',
            '-GPSDateStamp=2011:12:13'],
    'iptc': ['-IPTC:Headline=A headline', '-IPTC:Keywords=one', '-IPTC:Keywords=two', '-IPTC:City=Town'],
    'xmp': ['-XMP-dc:Title=A title', '-XMP-dc:Subject=one', '-XMP-dc:Subject=two', '-XMP-xmp:Rating=4',
            '-XMP-photoshop:City=Town'],
}
CARRIERS = {'jpeg': ('jpeg-444.jpg', list(GROUPS)), 'png': ('png-rgb-8-profile-wide.png', list(GROUPS)),
            'tiff': ('tiff-rgb-8-lzw.tiff', list(GROUPS)), 'webp': ('webp-lossless.webp', ['exif', 'gps', 'xmp'])}
TURNED = ['jpeg-444.jpg', 'jpeg-420-progressive.jpg', 'jpeg-ink-profile-ink.jpg', 'png-grey-16.png', 'tiff-rgb-8.tiff',
          'tiff-grey-1-g4.tiff', 'webp-lossless.webp', 'webp-lossy-alpha.webp']


class _Exiftool:
    """Collects what to do, so that one process does it all."""

    def __init__(self):
        self._words = []

    def copy(self, source, target, words):
        shutil.copyfile(source, target)
        self._words += [*words, '-overwrite_original', '-q', '-codedcharacterset=utf8', str(target), '-execute']

    def run(self, folder):
        file = folder.parent / 'exiftool-words'
        file.write_text('\n'.join(self._words) + '\n', encoding='utf8')
        run('exiftool', '-@', file)


def _field(tag, kind, content, place):
    """A field of a directory and what it puts behind the directory, which begins at `place`."""
    count = len(content) // {2: 1, 3: 2, 4: 4, 7: 1}[kind]
    if len(content) <= 4:
        return struct.pack('<HHI', tag, kind, count) + content.ljust(4, b'\0'), b''
    return struct.pack('<HHII', tag, kind, count, place), content + bytes(len(content) % 2)


def _directory(fields, start):
    """Little-endian; `start` is its distance from where offsets count."""
    place = start + 2 + 12 * len(fields) + 4
    entries, behind = b'', b''
    for tag, kind, content in fields:
        entry, more = _field(tag, kind, content, place + len(behind))
        entries, behind = entries + entry, behind + more
    return struct.pack('<H', len(fields)) + entries + bytes(4) + behind


def _exif_with_maker_note(maker, note_of):
    """`note_of`, given its distance from the start, makes the note."""
    first_fields = [(0x010F, 2, maker + b'\0'), (0x0110, 2, b'Test camera\0')]
    length = len(_directory([*first_fields, (0x8769, 4, bytes(4))], 8))
    first = _directory([*first_fields, (0x8769, 4, struct.pack('<I', 8 + length))], 8)
    date = (0x9003, 2, b'2011:12:13 14:15:16\0')
    # The note is the last of what stands behind its directory.
    note_at = 8 + length + 2 + 12 * 2 + 4 + len(date[2])
    note = note_of(note_at)
    return b'Exif\0\0II*\0\x08\0\0\0' + first + _directory([date, (0x927C, 7, note)], 8 + length)


def _own_header_note(_):
    fields = [(0x0001, 7, b'0210'), (0x0002, 3, struct.pack('<HH', 0, 400)), (0x0004, 2, b'FINE   \0'),
              (0x0007, 2, b'AF-S    \0')]
    return b'Nikon\0\x02\x10\0\0II*\0\x08\0\0\0' + _directory(fields, 8)


def _counting_from_outside_note(at):
    fields = [(0x0006, 2, b'Test image type\0'), (0x0007, 2, b'Firmware 1.0.0\0'), (0x0009, 2, b'An owner of it\0')]
    return _directory(fields, at)


def _make_maker_notes(folder):
    plain = (folder / 'jpeg-444.jpg').read_bytes()
    for name, maker, note_of in (('own-header', b'NIKON CORPORATION', _own_header_note),
                                 ('counting-from-outside', b'Canon', _counting_from_outside_note)):
        exif = _exif_with_maker_note(maker, note_of)
        (folder / f'jpeg-maker-note-{name}.jpg').write_bytes(with_segment(plain, 0xE1, exif))


def make(folder):
    tool = _Exiftool()
    for carrier, (source, groups) in CARRIERS.items():
        ending = source.rpartition('.')[2]
        for group in groups:
            tool.copy(folder / source, folder / f'{carrier}-words-{group}.{ending}', GROUPS[group])
        together = [word for group in groups for word in GROUPS[group]]
        tool.copy(folder / source, folder / f'{carrier}-words-all.{ending}', together)
    long_text = '-XMP-dc:Description=' + 'A long description. ' * 4000
    tool.copy(folder / 'jpeg-444.jpg', folder / 'jpeg-extended-xmp.jpg', [*GROUPS['xmp'], long_text])
    tool.copy(folder / 'gif-16.gif', folder / 'gif-xmp.gif', GROUPS['xmp'])
    tool.copy(folder / 'heic-rgb-444.heic', folder / 'heic-words-all.heic', [*GROUPS['exif'], *GROUPS['gps'], *GROUPS['xmp']])
    for source in TURNED:
        stem, _, ending = source.rpartition('.')
        for orientation in range(1, 9):
            target = folder / f'{stem}-orientation-{orientation}.{ending}'
            tool.copy(folder / source, target, [f'-IFD0:Orientation#={orientation}'])
    tool.run(folder)
    _make_maker_notes(folder)
    return {}
