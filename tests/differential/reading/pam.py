# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""The plain form in which programs hand over what they decoded."""
import numpy as np

from .picture import Picture


def pam_picture(data):
    head, _, body = data.partition(b'ENDHDR\n')
    words = dict(line.split(b' ', 1) for line in head.split(b'\n') if b' ' in line)
    width, height, depth, top = (int(words[key]) for key in (b'WIDTH', b'HEIGHT', b'DEPTH', b'MAXVAL'))
    samples = np.frombuffer(body, '>u2' if top > 255 else np.uint8).reshape(height, width, depth) / np.float32(top)
    colours = 3 if depth >= 3 else 1
    alpha = samples[:, :, colours] if depth > colours else None
    return Picture(samples[:, :, :colours], 'rgb' if colours == 3 else 'grey', 8, alpha)
