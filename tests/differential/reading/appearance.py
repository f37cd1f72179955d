# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""What a picture looks like: its colours in sRGB, by its profile or by what its tags say."""
import numpy as np

from making import profiles

from . import colour_engine

CODED_PRIMARIES = {1: profiles.SRGB_PRIMARIES, 9: ((0.708, 0.292), (0.170, 0.797), (0.131, 0.046)),
                   12: profiles.P3_PRIMARIES}
CODED_TRANSFERS = {4: lambda v: v ** 2.2, 5: lambda v: v ** 2.8, 8: lambda v: v, 13: profiles.srgb_decoded}
USUAL_GAMMA = 0.45455
TO_SRGB = np.linalg.inv(profiles.rgb_to_xyz(profiles.SRGB_PRIMARIES, profiles.D65))


def _converted(samples, decode, white, primaries):
    """Through light in these primaries to light in sRGB's."""
    light = decode(samples)
    if samples.shape[2] == 3 and primaries:
        matrix = TO_SRGB @ profiles.adaptation(profiles.xyz_of(white), profiles.xyz_of(profiles.D65)) \
            @ profiles.rgb_to_xyz(primaries, white)
        light = light @ matrix.T
    return profiles.srgb_encoded(light)


def _is_near_srgb(tags):
    points = [*zip(tags.primaries, profiles.SRGB_PRIMARIES), (tags.white, profiles.D65)]
    return not tags.primaries or all(abs(a - b) < 0.002 for ours, theirs in points for a, b in zip(ours, theirs))


def _by_tags(samples, tags):
    if tags.coded:
        primaries, transfer = tags.coded
        # Broadcast video's curve on a display is near enough sRGB's that viewers take it for that.
        decode = CODED_TRANSFERS.get(transfer, profiles.srgb_decoded)
        if primaries in (1, 2) and decode is profiles.srgb_decoded:
            return samples
        return _converted(samples, decode, profiles.D65, CODED_PRIMARIES.get(primaries))
    has_usual_gamma = not tags.gamma or abs(tags.gamma - USUAL_GAMMA) < 0.005
    if has_usual_gamma and _is_near_srgb(tags):
        return samples  # as every viewer takes it, though sRGB's curve is not quite that power
    decode = profiles.srgb_decoded if not tags.gamma else lambda v: v ** (1 / tags.gamma)
    return _converted(samples, decode, tags.white or profiles.D65, tags.primaries)


def is_uncertain(picture):
    """Inks without a profile: each program has its own idea of them."""
    return picture.model == 'ink' and colour_engine.model_of(picture.profile) != 'ink'


def is_light(picture):
    """Whether its samples are light itself, in which the dark has few steps."""
    linear = 8
    return not picture.profile and (picture.tags.coded[1] == linear if picture.tags.coded else picture.tags.gamma == 1)


def is_converted(picture, colours):
    """Whether its samples are more than a step of 255 from its colours."""
    return picture.model not in ('grey', 'rgb') or bool((np.abs(colours - picture.samples) > 1 / 255).any())


def colours_of(picture):
    """Height x width x 3, straight, as stored and not yet turned upright."""
    converted = None
    if picture.model == 'lab':
        converted = colour_engine.to_srgb(picture.samples, 'lab', b'')
    elif colour_engine.model_of(picture.profile) == picture.model:
        converted = colour_engine.to_srgb(picture.samples, picture.model, picture.profile)
    if converted is None and picture.model == 'ink':
        converted = (1 - picture.samples[:, :, :3]) * (1 - picture.samples[:, :, 3:])
    if converted is None:
        converted = _by_tags(picture.samples, picture.tags)
    return np.broadcast_to(converted, (*converted.shape[:2], 3))
