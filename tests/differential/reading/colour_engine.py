# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Little CMS in floating point, which Pillow's face of it does not offer."""
import ctypes
import functools

import numpy as np

_engine = ctypes.CDLL('liblcms2.so.2')
for _name in ('cmsOpenProfileFromMem', 'cmsCreate_sRGBProfile', 'cmsCreateLab4Profile', 'cmsCreateTransform'):
    getattr(_engine, _name).restype = ctypes.c_void_p
_engine.cmsOpenProfileFromMem.argtypes = [ctypes.c_char_p, ctypes.c_uint32]
_engine.cmsCreateLab4Profile.argtypes = [ctypes.c_void_p]
_engine.cmsGetColorSpace.argtypes = [ctypes.c_void_p]
_engine.cmsGetColorSpace.restype = ctypes.c_uint32
_engine.cmsCreateTransform.argtypes = [ctypes.c_void_p, ctypes.c_uint32] * 2 + [ctypes.c_uint32] * 2
_engine.cmsDoTransform.argtypes = [ctypes.c_void_p] * 3 + [ctypes.c_uint32]
_engine.cmsSetLogErrorHandler(None)

# Its words for formats: float, the model's number, how many components of four bytes.
_FORMATS = {model: 1 << 22 | number << 16 | components << 3 | 4
            for model, number, components in (('grey', 3, 1), ('rgb', 4, 3), ('ink', 6, 4), ('lab', 10, 3))}
_SPACES = {'GRAY': 'grey', 'RGB ': 'rgb', 'CMYK': 'ink', 'Lab ': 'lab'}
_RELATIVE = 1
_BLACK_POINT = 0x2000
_NO_SHORTCUTS = 0x0100


def _space_of(profile):
    return _SPACES.get(_engine.cmsGetColorSpace(profile).to_bytes(4, 'big').decode(errors='replace'))


@functools.lru_cache(maxsize=64)
def model_of(profile):
    """What a profile describes; None for one that cannot be used."""
    opened = _engine.cmsOpenProfileFromMem(profile, len(profile)) if profile else None
    return _space_of(opened) if opened else None


@functools.lru_cache(maxsize=64)
def _transform(profile, model):
    source = _engine.cmsOpenProfileFromMem(profile, len(profile)) if profile else _engine.cmsCreateLab4Profile(None)
    target = _engine.cmsCreate_sRGBProfile()
    return _engine.cmsCreateTransform(source, _FORMATS[model], target, _FORMATS['rgb'], _RELATIVE,
                                      _BLACK_POINT | _NO_SHORTCUTS)


def to_srgb(samples, model, profile):
    """Relative colorimetric with black point compensation; `profile` is empty for L*a*b*."""
    transform = _transform(profile, model)
    if not transform:
        return None
    scale = 100 if model == 'ink' else 1  # inks are counted in percent there
    source = np.ascontiguousarray(samples * scale, dtype=np.float32)
    target = np.zeros((*source.shape[:2], 3), dtype=np.float32)
    _engine.cmsDoTransform(transform, source.ctypes.data, target.ctypes.data, source.shape[0] * source.shape[1])
    return target.clip(0, 1)
