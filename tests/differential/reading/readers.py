# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""One reader for each format, none of them ours; which one is decided by the first bytes."""
import struct
import subprocess
import tempfile
from pathlib import Path

import numpy as np
from PIL import Image, ImageFile, UnidentifiedImageError

from . import bmp, png, tiff
from .pam import pam_picture
from .picture import ColourTags, Picture, Unreadable
from .programs import IMAGEMAGICK, output_of

MODELS = {'L': 'grey', 'RGB': 'rgb', 'CMYK': 'ink'}


def _through_pillow(path, is_flat):
    """`is_flat`: the format has no transparency and no palette."""
    try:
        with Image.open(path) as image:
            profile = image.info.get('icc_profile') or b''
            image.seek(0)
            image.load()
            mode = image.mode
            if not is_flat and mode not in ('RGB', 'RGBA'):
                image = image.convert('RGBA')
            samples = np.asarray(image) / np.float32(255)
    except (OSError, UnidentifiedImageError, SyntaxError, ValueError, EOFError, Image.DecompressionBombError) as error:
        raise Unreadable(str(error)) from error
    if samples.ndim == 2:
        samples = samples[:, :, None]
    if is_flat:
        if mode not in MODELS:
            raise Unreadable(f'a picture of mode {mode}')
        return Picture(samples, MODELS[mode], 8, profile=profile)
    alpha = samples[:, :, 3] if samples.shape[2] == 4 else None
    return Picture(samples[:, :, :3], 'rgb', 8, alpha, profile=profile)


def _read_jpeg(path):
    ImageFile.LOAD_TRUNCATED_IMAGES = False
    return _through_pillow(path, is_flat=True)


def _read_gif(path):
    return _through_pillow(path, is_flat=False)


def _read_webp(path):
    """`dwebp` for single pictures; it knows no animations."""
    picture = _through_pillow(path, is_flat=False)
    if b'ANIM' not in path.read_bytes()[:64]:
        decoded = pam_picture(output_of('dwebp', '-quiet', '-pam', str(path), '-o', '-'))
        picture.samples = decoded.samples
        if picture.alpha is not None:
            picture.alpha = decoded.alpha
    return picture


def _coded_colours(data):
    """Of the first box that says by numbers what the colours of a HEIF picture mean."""
    at = data.find(b'colrnclx')
    return struct.unpack_from('>HH', data, at + 8) if at >= 0 else ()


def _boxed_profile(data):
    at = data.find(b'colrprof')
    return data[at + 8:at - 4 + struct.unpack_from('>I', data, at - 4)[0]] if at >= 4 else b''


def _read_heif(path):
    with tempfile.TemporaryDirectory() as folder:
        target = Path(folder) / 'picture.png'
        done = subprocess.run(['heif-convert', path, target], stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        made = sorted(Path(folder).glob('*.png'))
        if done.returncode == 0 and made and made[0].stat().st_size > 0:
            picture = png.read(made[0])
        else:  # PNG refuses profiles that it knows as faulty
            picture = pam_picture(output_of(IMAGEMAGICK, f'{path}[0]', '-depth', '8', 'pam:-'))
            picture.profile = _boxed_profile(path.read_bytes())
    data = path.read_bytes()
    picture.tags = ColourTags()
    if not picture.profile:
        picture.tags.coded = tuple(_coded_colours(data))
    return picture


def kind_of(path):
    with open(path, 'rb') as file:
        head = file.read(32)
    if head.startswith(b'\xff\xd8\xff'):
        return 'jpeg'
    if head.startswith(b'\x89PNG'):
        return 'png'
    if head.startswith(b'GIF8'):
        return 'gif'
    if head[:4] in (b'II*\0', b'MM\0*', b'II+\0', b'MM\0+'):
        return 'tiff'
    if head.startswith(b'BM'):
        return 'bmp'
    if head[:4] == b'RIFF' and head[8:12] == b'WEBP':
        return 'webp'
    if head[4:8] == b'ftyp':
        return 'heif'
    return 'other'


READERS = {'jpeg': _read_jpeg, 'png': png.read, 'gif': _read_gif, 'tiff': tiff.read, 'bmp': bmp.read,
           'webp': _read_webp, 'heif': _read_heif}


def read(path):
    """The picture as it is stored; only HEIF, whose readers turn it themselves, comes upright."""
    reader = READERS.get(kind_of(path))
    if not reader:
        raise Unreadable('of no format that is known')
    try:
        return reader(path)
    except (struct.error, KeyError, ValueError, IndexError) as error:
        raise Unreadable(f'{type(error).__name__}: {error}') from error
