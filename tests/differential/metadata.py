# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Metadata as exiftool reads it: what an input has, what of it an output must have, and what it must not have."""
import json
import subprocess
from concurrent.futures import ThreadPoolExecutor

GROUPS_OF_FORMAT = {
    'jpeg': {'EXIF', 'GPS', 'IPTC', 'XMP', 'MakerNotes'}, 'png': {'EXIF', 'GPS', 'IPTC', 'XMP', 'MakerNotes'},
    'tiff': {'EXIF', 'GPS', 'IPTC', 'XMP', 'MakerNotes'}, 'heif': {'EXIF', 'GPS', 'XMP', 'MakerNotes'},
    'gif': set(),
    'webp': set(),  # its encoder is given the bare pixels
    'bmp': set(),
}
# Words that only files of the same kind have a place for.
GROUPS_OF_ITS_OWN = {'jpeg': {'Comment'}, 'gif': {'Comment', 'XMP'}, 'png': {'PNG text'}}

# How the pixels lie in the file, or what is made from them: the new file has its own.
ABOUT_THE_PIXELS = {
    'ImageWidth', 'ImageHeight', 'ImageSize', 'ExifImageWidth', 'ExifImageHeight', 'BitsPerSample', 'Compression',
    'PhotometricInterpretation', 'SamplesPerPixel', 'PlanarConfiguration', 'RowsPerStrip', 'StripOffsets',
    'StripByteCounts', 'TileWidth', 'TileLength', 'TileOffsets', 'TileByteCounts', 'Predictor', 'FillOrder',
    'ExtraSamples', 'SampleFormat', 'SMinSampleValue', 'SMaxSampleValue', 'ColorMap', 'JPEGTables', 'T4Options',
    'T6Options', 'SubfileType', 'OldSubfileType', 'PageNumber', 'YCbCrSubSampling', 'YCbCrPositioning',
    'YCbCrCoefficients', 'ReferenceBlackWhite', 'WhitePoint', 'PrimaryChromaticities', 'TransferFunction', 'HalftoneHints',
    'InkSet', 'NumberOfInks', 'DotRange', 'TargetPrinter', 'Orientation', 'ColorSpace', 'InteropIndex',
    'InteropVersion', 'ComponentsConfiguration', 'CompressedBitsPerPixel', 'ThumbnailImage', 'ThumbnailOffset',
    'ThumbnailLength', 'PreviewImage', 'PreviewImageStart', 'PreviewImageLength', 'MPImage2', 'ICCProfileName',
    'ColorMode', 'PixelXDimension', 'PixelYDimension', 'FreeOffsets', 'FreeByteCounts', 'MinSampleValue',
    'MaxSampleValue', 'Thresholding', 'GrayResponseUnit', 'GrayResponseCurve', 'XResolution', 'YResolution', 'ResolutionUnit'}
# What programs that write metadata say of themselves or of the packet.
ABOUT_THE_PACKET = {'XMPToolkit', 'HasExtendedXMP', 'About', 'ExifByteOrder', 'ExifVersion', 'FlashpixVersion',
                    'GPSVersionID', 'CodedCharacterSet', 'EnvelopeRecordVersion', 'ApplicationRecordVersion', 'Padding',
                    'OffsetSchema', 'CurrentIPTCDigest', 'IPTCDigest', 'NativeDigest', 'Format'}
PNG_STRUCTURE = {'BitDepth', 'ColorType', 'Compression', 'Filter', 'Interlace', 'Palette', 'Transparency', 'SRGBRendering',
                 'Gamma', 'ProfileName', 'SignificantBits', 'BackgroundColor', 'PixelsPerUnitX', 'PixelsPerUnitY',
                 'PixelUnits', 'RedX', 'RedY', 'GreenX', 'GreenY', 'BlueX', 'BlueY', 'WhitePointX', 'WhitePointY',
                 'ColorPrimaries', 'TransferCharacteristics', 'MatrixCoefficients', 'VideoFullRangeFlag', 'ImageWidth',
                 'ImageHeight', 'ImageOffset'}


def read_all(paths):
    """File to tags, each named family:group:tag. Two processes share the work."""
    paths = [str(path) for path in paths]

    def read(some):
        if not some:
            return []
        done = subprocess.run(['exiftool', '-json', '-G0:1', '-n', '-a', '-q', '-charset', 'filename=utf8', '-@', '-'],
                              input='\n'.join(some), stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                              errors='replace', check=False)
        return json.loads(done.stdout or '[]')

    with ThreadPoolExecutor(2) as both:
        return {tags.pop('SourceFile'): tags for part in both.map(read, (paths[::2], paths[1::2])) for tags in part}


def orientation_of(tags):
    value = tags.get('EXIF:IFD0:Orientation', 1)
    return value if isinstance(value, int) and 1 <= value <= 8 else 1


def _group_of(key):
    family, *inner, tag = key.split(':')  # two groups of one name come as one
    group = inner[0] if inner else family
    if family == 'EXIF' and group in ('IFD0', 'ExifIFD', 'GPS', 'InteropIFD'):
        return 'GPS' if group == 'GPS' else 'EXIF'
    if family in ('IPTC', 'XMP', 'MakerNotes'):
        return family
    if tag == 'Comment' and family in ('File', 'GIF'):
        return 'Comment'
    return 'PNG text' if family == 'PNG' and tag not in PNG_STRUCTURE else ''


def _words(tags):
    """Group to tags and their values; only what describes the picture and not its file."""
    found = {}
    for key, value in tags.items():
        group, tag = _group_of(key), key.rpartition(':')[2]
        if group and tag not in ABOUT_THE_PIXELS and tag not in ABOUT_THE_PACKET and value != '':
            found.setdefault(group, {})[key] = value
    return found


def _is_same(a, b):
    """Lists of one and numbers that were rounded on the way count as the same."""
    a, b = ((v[0] if isinstance(v, list) and len(v) == 1 else v) for v in (a, b))
    try:
        return abs(float(a) - float(b)) <= 1e-4 * max(1, abs(float(a)))
    except (TypeError, ValueError):
        return str(a).strip() == str(b).strip()


def lost(before, after, kind_before, kind_after):
    """What an output that keeps metadata lacks, in words."""
    held = set(GROUPS_OF_FORMAT.get(kind_after, set()))
    if kind_before == kind_after:
        held |= GROUPS_OF_ITS_OWN.get(kind_after, set())
    complaints = []
    words_after = _words(after)
    for group, tags in sorted(_words(before).items()):
        if group not in held:
            continue
        there = words_after.get(group, {})
        if not there:
            complaints.append(f'{group} lost')
            continue
        gone = sorted(key.rpartition(':')[2] for key in tags if key not in there)
        changed = sorted(key.rpartition(':')[2] for key in tags if key in there and not _is_same(tags[key], there[key]))
        complaints += [f'{group} lacks {" ".join(gone[:6])}'] if gone else []
        complaints += [f'{group} changed in {" ".join(changed[:6])}'] if changed else []
    return complaints


def left_over(after):
    """What an output without metadata has nevertheless."""
    return [f'{group} left over: {" ".join(key.rpartition(":")[2] for key in list(tags)[:6])}'
            for group, tags in sorted(_words(after).items())]
