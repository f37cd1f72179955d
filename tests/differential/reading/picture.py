# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""What a reader makes of a file."""
from dataclasses import dataclass, field

import numpy as np


class Unreadable(Exception):
    """The reader gives up."""


@dataclass
class ColourTags:
    """What a file says of its colours without a profile."""
    gamma: float = 0  # 0.45455 for most; 0 when it says none
    white: tuple = ()
    primaries: tuple = ()
    coded: tuple = ()  # primaries and transfer as numbers of the coding-independent code points


@dataclass
class Picture:
    samples: np.ndarray  # height x width x components; 0 to 1, L*a*b* in its own units
    model: str  # grey, rgb, ink, lab
    bits: int
    alpha: np.ndarray = None  # height x width, 0 to 1; colours are straight
    is_associated: bool = False  # the file holds them multiplied by their alpha
    profile: bytes = b''
    tags: ColourTags = field(default_factory=ColourTags)

    @property
    def size(self):
        return self.samples.shape[1], self.samples.shape[0]


def straight(mixed, alpha):
    """Colours that were multiplied by their alpha, as they were before."""
    return np.where(alpha[:, :, None] > 0, mixed / np.maximum(alpha[:, :, None], 1e-9), 0).clip(0, 1)


def upright(rows, orientation):
    """`rows`, of height x width in front, as a viewer turns them for this EXIF orientation."""
    if orientation in (5, 7):
        rows = np.swapaxes(rows, 0, 1)
    if orientation == 7:
        rows = rows[::-1, ::-1]
    if orientation in (6, 8):
        rows = np.rot90(rows, -1 if orientation == 6 else 1)
    if orientation in (2, 3):
        rows = rows[:, ::-1]
    return rows[::-1] if orientation in (3, 4) else rows
