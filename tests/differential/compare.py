# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Judges one output against its reference."""
from dataclasses import dataclass, field
from pathlib import Path

import numpy as np

import bounds
import metadata
import references
from reading import colour_engine, readers
from reading.picture import Unreadable

UNREADABLE = 'The image could not be read.'
NOT_WRITABLE = 'is not supported by this macOS ImageIO installation.'
WRITABLE_KINDS = {'jpeg', 'png', 'gif', 'tiff', 'bmp', 'heif'}
KIND_OF_FORMAT = {'webp': 'webp', 'webpLossless': 'webp', 'jpeg': 'jpeg', 'png': 'png', 'heic': 'heif'}
MODELS_OF = {'jpeg': {'grey', 'rgb', 'ink'}, 'png': {'grey', 'rgb'}, 'tiff': {'grey', 'rgb', 'ink', 'lab'}}
HOLDS_PROFILE = {'jpeg': {'grey', 'rgb', 'ink'}, 'png': {'grey', 'rgb'}, 'tiff': {'grey', 'rgb', 'ink'},
                 'heif': {'rgb'}, 'bmp': {'rgb'}}
DEEP = {'png', 'tiff'}


@dataclass
class Line:
    """One input in one way of setting the program."""
    input: str
    kind: str
    setting: str
    format: str
    mean: float = 0.0
    largest: float = 0.0
    refused: bool = False
    complaints: list = field(default_factory=list)


def _judge_refusal(reference, setting, message, note):
    if setting.format == 'original' and (reference.kind == 'webp' or b'avif' in reference.path.read_bytes()[:32]):
        return [] if message.endswith(NOT_WRITABLE) else [f'said: {message}']
    if message != UNREADABLE:
        return [f'said: {message}']
    may_be = reference.reason or 'refuse' in note or 'may refuse' in note
    return [] if may_be else ['refused, though it can be read']


def _laid(rgba, kind):
    """Colours as they show in this kind of file, and its alpha."""
    colours, alpha = rgba[:, :, :3], rgba[:, :, 3:]
    if kind == 'jpeg':
        return colours * alpha + (1 - alpha), np.ones_like(alpha)
    if kind == 'webp':  # without transparency, over black
        return colours * alpha, np.ones_like(alpha)
    if kind == 'gif':
        alpha = (alpha >= 0.5).astype(np.float32)
    return colours * alpha, alpha


def _bound(reference, setting, kind, output, expected, costs):
    is_lossy = kind in ('jpeg', 'heif') or (kind == 'webp' and setting.format == 'webp')
    is_reduced = setting.size_of(*reference.size) != reference.size
    is_undrawn = setting.keeps and output.model == reference.model and kind not in ('webp', 'gif')
    if kind == 'gif' and (is_reduced or (reference.kind != 'gif')):
        return bounds.GIF_OF_MANY
    bound = bounds.EXACT if is_undrawn and output.bits >= min(reference.bits, 16) else bounds.DRAWN
    if bound is bounds.DRAWN and reference.model in ('ink', 'lab'):
        bound = bounds.THROUGH_TABLES
    if bound is bounds.DRAWN and reference.bits > 8 and reference.is_converted:
        bound = bound.wider(bounds.DEEP_CONVERTED)
    if reference.is_associated:
        bound = bound.wider(bounds.ASSOCIATED)
    if reference.kind == 'bmp' and reference.bits < 8:
        bound = bound.wider(bounds.FEW_BITS)
    if is_lossy:
        key = (kind, expected.shape)
        costs[key] = costs.get(key) or bounds.lossy(expected, kind)
        bound = bound.wider(costs[key])
    if is_reduced:
        bound = bound.wider(bounds.REDUCED)
        if reference.is_converted:
            bound = bound.wider(bounds.CONVERTED_AFTER)
    if reference.is_light and (is_lossy or is_reduced):
        bound = bound.wider(bounds.LINEAR)
    if reference.is_uncertain and output.model != 'ink':
        bound = bound.wider(bounds.UNCERTAIN)
    return bound


def _judge_pixels(line, reference, setting, kind, output, orientation, costs):
    rgba = references.shown(output, 1 if kind == 'heif' else orientation)
    size = (rgba.shape[1], rgba.shape[0])
    wanted = setting.size_of(*reference.size)
    if size != wanted:
        return [f'is {size[0]} x {size[1]} instead of {wanted[0]} x {wanted[1]}']
    expected, expected_alpha = _laid(references.pixels_of(reference, wanted), kind)
    bound = _bound(reference, setting, kind, output, expected, costs)
    signed = (rgba[:, :, :3] * rgba[:, :, 3:] - expected) * 255
    difference = np.abs(signed)
    cover = np.abs(rgba[:, :, 3:] - expected_alpha) * 255
    line.mean = float(max(difference.mean(), cover.mean()))
    line.largest = float(max(difference.max(), cover.max()))
    complaints = []
    if line.mean > bound.mean:
        complaints.append(f'mean {line.mean:.2f} above {bound.mean:.2f} ({bound.reason})')
    if line.largest > bound.largest:
        complaints.append(f'largest {line.largest:.1f} above {bound.largest:.1f} ({bound.reason})')
    bias = float(np.abs(signed.mean(axis=(0, 1))).max())
    if bias > bound.bias:
        complaints.append(f'all of it off by {bias:.2f}, above {bound.bias:.2f} ({bound.reason})')
    return complaints


def _judge_form(reference, setting, kind, output):
    """Model, depth and profile."""
    if not setting.keeps:
        return ['a profile left over'] if output.profile else []
    complaints = []
    is_held = (reference.bits <= 8 or kind in DEEP) and not (reference.has_alpha and kind == 'jpeg')
    if is_held and reference.model in MODELS_OF.get(kind, ()) and output.model != reference.model:
        complaints.append(f'is {output.model} instead of {reference.model}')
    if kind in DEEP and output.model == reference.model and output.bits <= 8 < reference.bits:
        complaints.append(f'has {output.bits} bits instead of {reference.bits}')
    is_right_profile = colour_engine.model_of(reference.profile) == reference.model
    if is_right_profile and reference.model in HOLDS_PROFILE.get(kind, ()) and output.model == reference.model:
        if output.profile != reference.profile:
            complaints.append('another profile' if output.profile else 'profile lost')
    elif output.profile and colour_engine.model_of(output.profile) not in (output.model, 'rgb' if kind == 'bmp' else ''):
        complaints.append('a profile of another model')
    return complaints


def judge(reference, setting, row, note, tags_before, tags_after, costs):
    """`row` is what the program said of it, `note` what the input's maker said; `costs` remembers of this input what
    was worked out for its other outputs."""
    line = Line(Path(reference.name).stem, reference.kind, setting.name, setting.format)  # staged under a longer name
    if row is None:
        line.complaints = ['no row']
    elif not row['success']:
        line.refused = True
        line.complaints = _judge_refusal(reference, setting, row['message'], note)
    elif 'refuse' in note:
        line.complaints = [f'saved, though {note["refuse"]}']
    elif reference.reason:
        line.complaints = [f'saved, though readers say: {reference.reason}']
    else:
        path = Path(row['output'])
        kind = KIND_OF_FORMAT.get(setting.format, reference.kind)
        try:
            output = readers.read(path)
        except Unreadable as reason:
            line.complaints = [f'the output cannot be read: {reason}']
            return line
        if readers.kind_of(path) != kind:
            line.complaints.append(f'is {readers.kind_of(path)} instead of {kind}')
        line.complaints += _judge_pixels(line, reference, setting, kind, output, metadata.orientation_of(tags_after), costs)
        line.complaints += _judge_form(reference, setting, kind, output)
        line.complaints += (metadata.lost(tags_before, tags_after, reference.kind, kind) if setting.keeps
                            else metadata.left_over(tags_after))
    return line
