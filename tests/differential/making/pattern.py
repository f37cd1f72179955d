# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""The picture in every input: gradients, saturated patches and edges, alike under no turn or flip."""
import numpy as np

SIZE = (64, 48)
ODD_SIZE = (61, 43)  # no multiple of any block, byte or subsampling

PATCHES = [(1, 0, 0), (0, 1, 0), (0, 0, 1), (0, 1, 1), (1, 0, 1), (1, 1, 0), (1, 0.5, 0), (0.2, 0.1, 0.5)]


def colours(size=SIZE):
    """Height x width x 3, 0 to 1."""
    width, height = size
    x = np.linspace(0, 1, width)[None, :]
    y = np.linspace(0, 1, height)[:, None]
    picture = np.stack(np.broadcast_arrays(0.15 + 0.7 * x, 0.2 + 0.6 * y, 0.8 - 0.5 * x * y), axis=2).copy()
    half, side = height // 2, width // len(PATCHES)
    for index, patch in enumerate(PATCHES):
        picture[half:half + height // 4, index * side:(index + 1) * side] = patch
    picture[half + height // 4:, :width // 2] = (x[:, :width // 2] * 2)[:, :, None]  # a ramp of greys
    picture[:height // 6, :width // 6] = 1  # a corner of its own, for orientation
    picture[height // 6:height // 4, :width // 6] = 0
    return picture


def greys(size=SIZE):
    """Height x width, 0 to 1."""
    return colours(size) @ (0.299, 0.587, 0.114)


def inks(size=SIZE):
    """Height x width x 4; 1 is full ink."""
    rgb = colours(size)
    black = 0.6 * (1 - rgb.max(axis=2))
    return np.concatenate([1 - rgb - 0.3 * black[:, :, None] * (1 - rgb), black[:, :, None]], axis=2)


def cover(size=SIZE):
    """Height x width: opaque, transparent and a ramp between."""
    width, height = size
    alpha = np.broadcast_to(np.clip(np.linspace(1.6, -0.4, width), 0, 1)[None, :], (height, width)).copy()
    alpha[height // 2:] = 1
    alpha[height - height // 8:, :width // 3] = 0
    return alpha


def levels(values, bits):
    """As whole numbers of so many bits."""
    return np.rint(np.asarray(values, dtype=np.float64) * (2 ** bits - 1)).astype(np.uint64)


def eight_bits(values):
    return levels(values, 8).astype(np.uint8)


def few_colours(size=SIZE, count=256):
    """Indices and a palette of `count` colours, 8 bits each, that come near the pattern."""
    per_axis = {2: (2, 1, 1), 4: (2, 2, 1), 16: (4, 2, 2), 256: (8, 8, 4)}[count]
    picture = colours(size)
    index = np.zeros(picture.shape[:2], dtype=np.uint8)
    steps = [np.minimum((picture[:, :, c] * n).astype(int), n - 1) for c, n in enumerate(per_axis)]
    for step, n in zip(steps, per_axis):
        index = index * n + step
    axes = [np.linspace(0, 255, n) if n > 1 else np.array([120.0]) for n in per_axis]
    palette = np.stack(np.meshgrid(*axes, indexing='ij'), axis=3).reshape(-1, 3)
    return index.astype(np.uint8), np.rint(palette).astype(np.uint8)
