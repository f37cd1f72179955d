# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""How far an output may be from its reference, in steps of 255, and why so far."""
import io
from dataclasses import dataclass

import numpy as np
from PIL import Image

NO_LIMIT = 256.0


@dataclass(frozen=True)
class Bound:
    mean: float
    largest: float
    bias: float  # of a component's mean: coders blur and ring, but leave a picture as bright and as red as it was
    reason: str

    def wider(self, other):
        return Bound(self.mean + other.mean, min(NO_LIMIT, self.largest + other.largest), self.bias + other.bias,
                     f'{self.reason}; {other.reason}')


EXACT = Bound(0.02, 0.6, 0.02, 'stored as it was: nothing but the rounding of the comparison')
DRAWN = Bound(0.6, 2.1, 0.6, 'drawn anew in 8 bits: a step each for depth, colours and alpha')
THROUGH_TABLES = Bound(0.6, 13.0, 0.6, 'inks and L*a*b* go through tables, which are coarser for 8 bits than for floats')
ASSOCIATED = Bound(0.2, 1.0, 0.2, 'colours that were multiplied by their alpha are stored without it')
DEEP_CONVERTED = Bound(0.1, 2.5, 0.1, 'a step of depth grows where a conversion is steep')
REDUCED = Bound(1.5, 26.0, 0.6, 'two Lanczos kernels, which treat edges and rounding differently')
CONVERTED_AFTER = Bound(1.2, 48.0, 2.0, 'colours convert after the reduction there and before it here')
LINEAR = Bound(3.5, 10.0, 4.5, 'stored as light, a step in the dark is many to the eye: of a coder as of a reduction')
GIF_OF_MANY = Bound(16.0, NO_LIMIT, NO_LIMIT, 'at most 256 colours, and dithered')
UNCERTAIN = Bound(45.0, NO_LIMIT, NO_LIMIT, 'inks without a profile look as each program thinks fit; only gross errors show')
FEW_BITS = Bound(0.3, 1.1, 0.3, 'five bits are stretched to eight by rounding or by repeating the upper ones')
OWN_JPEG = Bound(0.1, 12.0, 0.4, 'our JPEG drops what a busy block hides, and sharpens colours of half the resolution')
OWN_HEIC = Bound(0.0, 0.0, 1.05, 'our HEIC keeps the light of coloured edges, not the means of their samples')
LOSSY_SLACK = Bound(0.7, 24.0, 1.2, 'another coder of the same kind with the same quality, and our choices of its tables')


def _coded(rgb, codec, **options):
    out = io.BytesIO()
    Image.fromarray(np.rint(rgb * 255).astype(np.uint8), 'RGB').save(out, codec, **options)
    return np.asarray(Image.open(out).convert('RGB')) / np.float32(255)


def lossy(rgb, kind, quality=82):
    """What the same coding costs this very picture when another program does it; a picture's detail decides that."""
    codec = 'WEBP' if kind == 'webp' else 'JPEG'  # HEVC costs less than JPEG, but elsewhere
    options = {} if kind == 'webp' else {'subsampling': 2}
    signed = (_coded(rgb, codec, quality=quality, **options) - rgb) * 255
    largest = NO_LIMIT if kind == 'heif' else 1.25 * float(np.abs(signed).max())
    cost = Bound(1.5 * float(np.abs(signed).mean()), largest, 1.5 * float(np.abs(signed.mean(axis=(0, 1))).max()),
                 f'{codec} itself at quality {quality}')
    own = {'jpeg': OWN_JPEG, 'heif': OWN_HEIC}.get(kind)
    return cost.wider(LOSSY_SLACK).wider(own) if own else cost.wider(LOSSY_SLACK)
