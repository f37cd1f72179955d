#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""damage.py [COUNT [SEED]]: COUNT damaged variants of pictures in all ten extensions (truncated, bits flipped, tails of zeros,
spliced, chunks swapped, absurd numbers) go through lumora-cli under limits of memory and time. Lost: an original that
changed, a success whose output another reader cannot read, a missing row, a file left over. What crashes or hangs is
found one by one and kept in FINDINGS (build/stress)."""
import random
import resource
import shutil
import sys
import tempfile
from pathlib import Path

from trial import pictures
from trial.place import ROOT, Place
from trial.tally import Tally, say

FORMATS = ('webp', 'jpeg', 'png', 'original', 'heic', 'webpLossless')
BATCH = 240
MEMORY = 3 << 30
SECONDS = 240
FINDINGS = ROOT / 'build/stress'


def truncated(data, dice, _):
    return data[:dice.randrange(len(data))]


def flipped(data, dice, _):
    data = bytearray(data)
    for _ in range(dice.choice((1, 1, 3, 20))):
        data[dice.randrange(len(data))] ^= 1 << dice.randrange(8)
    return bytes(data)


def flipped_head(data, dice, _):
    data = bytearray(data)
    data[dice.randrange(min(len(data), 200))] = dice.choice((0, 1, 0x7f, 0x80, 0xff, dice.randrange(256)))
    return bytes(data)


def zeroed(data, dice, _):
    at = dice.randrange(len(data))
    length = dice.choice((len(data) - at, 512))
    return data[:at] + bytes(min(length, len(data) - at)) + data[at + length:]


def spliced(data, dice, others):
    other = dice.choice(others)
    return data[:dice.randrange(len(data))] + other[dice.randrange(len(other)):]


def swapped(data, dice, _):
    """Two pieces change places, as chunks and strips do when a file is put together wrongly."""
    a, b, c, d = sorted(dice.randrange(len(data)) for _ in range(4))
    return data[:a] + data[c:d] + data[b:c] + data[a:b] + data[d:]


def absurd(data, dice, _):
    """A number of 2 or 4 bytes near the start becomes as large, small or negative as it can be."""
    at, size = dice.randrange(min(len(data) - 4, 400)), dice.choice((2, 4))
    number = dice.choice((b'\0', b'\xff', b'\x7f' + b'\xff' * 3, b'\xff' * 3 + b'\x7f', b'\x80\0\0\0'))
    return data[:at] + (number * size)[:size] + data[at + size:]


def repeated(data, dice, _):
    at, length = dice.randrange(len(data)), dice.randrange(1, 200)
    return data[:at] + data[at:at + length] * dice.choice((2, 50)) + data[at + length:]


KINDS = (truncated, flipped, flipped_head, zeroed, spliced, swapped, absurd, repeated)


def limits():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def losses_of(place, contents, rows):
    found = []
    if sorted(row['source'] for row in rows) != sorted(str(file) for file in contents):
        found.append(f'{len(rows)} rows for {len(contents)} files')
    for file, content in contents.items():
        if file.read_bytes() != content:
            found.append(f'{file.name} changed')
    outputs = {row['output'] for row in rows if row['success']}
    found += [f'{output} is not whole' for output in outputs if not pictures.is_whole(output)]
    found += [f'{stray} is left over' for stray in place.strays()]
    found += [f'{file} is nobody\'s' for file in place.out.iterdir() if str(file) not in outputs]
    return found


def try_batch(batch, setting, tally):
    with Place() as place:
        contents = {}
        for name, content in batch:
            (place.pictures / name).write_bytes(content)
            contents[place.pictures / name] = content
        status, rows, _ = place.run('--format', setting, '-o', place.out, place.pictures, timeout=SECONDS,
                                    preexec_fn=limits)
        ended = status in (0, 1)
        if ended or len(batch) == 1:
            losses = losses_of(place, contents, rows) if ended else []
            tally.judge(f'{len(batch)} files to {setting}', status, losses)
            tally.tried += len(batch) - 1
            if losses or not ended:
                keep(batch, setting)
            return
    half = len(batch) // 2
    say(f'a batch of {len(batch)} to {setting} ended with {status}; looking for the file')
    try_batch(batch[:half], setting, tally)
    try_batch(batch[half:], setting, tally)


def keep(batch, setting):
    FINDINGS.mkdir(parents=True, exist_ok=True)
    folder = Path(tempfile.mkdtemp(prefix=f'damage-{setting}-', dir=FINDINGS))
    for name, content in batch:
        (folder / name).write_bytes(content)
    say(f'kept in {folder}')


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 100_000
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else random.randrange(1 << 30)
    say(f'seed {seed}')
    dice, tally = random.Random(seed), Tally()
    seeds = Path(tempfile.mkdtemp())
    try:
        pictures.write_all(seeds)
        wholes = [(file.name, file.read_bytes()) for file in sorted(seeds.iterdir())]
    finally:
        shutil.rmtree(seeds)
    others = [content for _, content in wholes]
    made, number = 0, 0
    while made < count:
        batch = []
        for _ in range(min(BATCH, count - made)):
            name, content = dice.choice(wholes)
            batch.append((f'{made}-{name}', dice.choice(KINDS)(content, dice, others)))
            made += 1
        try_batch(batch, FORMATS[number % len(FORMATS)], tally)
        number += 1
    tally.end()


if __name__ == '__main__':
    main()
