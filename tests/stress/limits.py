#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""limits.py [--short]: batches that may have only so many processes, addresses or open files, fewer and fewer, to each
output format and with the Trash on. Lost: an original that is neither there nor, beside a whole output, in the Trash; a success
that cannot be read; a file without a row; a draft. Hung: more than SECONDS."""
import os
import resource
import shutil
import sys
from pathlib import Path

from trial import pictures
from trial.place import PROGRAMS, Place
from trial.tally import Tally, say

SECONDS = 200  # a worker that hangs is given up after a minute, and there may be two after one another
NOT_LOADED = 127  # says the system where a program's libraries do not fit in
ENDED_BY_GLIB = (-5, -6, -11)  # which gives no answer but this where it gets no memory
FORMATS = ('jpeg', 'webp', 'png', 'heic')
NOBODYS_NUMBER = 61_234  # root has no limit of processes


def limits(short):
    processes = (1, 2, 3, 4, 6, 8, 12) if short else range(1, 25)
    megabytes = (60, 150, 400) if short else range(40, 801, 40)
    files = (8, 16, 24) if short else range(4, 41)
    if os.geteuid() == 0:
        yield from ((f'{count} processes', resource.RLIMIT_NPROC, count) for count in processes)
    else:
        say('skipped: limits of processes need root')
    yield from ((f'{count} MB', resource.RLIMIT_AS, count << 20) for count in megabytes)
    yield from ((f'{count} descriptors', resource.RLIMIT_NOFILE, count) for count in files)


def readable_by_anybody(place):
    """The programs, where the other user can reach them."""
    folder = place.root / 'programs'
    shutil.copytree(PROGRAMS.parent.parent, folder)
    return folder / 'Contents/MacOS' / 'lumora-cli'


def give_away(place):
    for entry in (place.root, *place.root.rglob('*')):
        os.chown(entry, NOBODYS_NUMBER, NOBODYS_NUMBER)


def try_limit(tally, name, kind, count, setting):
    with Place() as place:
        pictures.write_all(place.pictures)
        originals = sorted(place.pictures.iterdir())
        other = {}
        if kind == resource.RLIMIT_NPROC:
            other = {'program': readable_by_anybody(place), 'user': NOBODYS_NUMBER, 'group': NOBODYS_NUMBER}
            give_away(place)
        status, rows, complaints = place.run(
            '--format', setting, '--trash-original', '-o', place.out, *originals, timeout=SECONDS, **other,
            preexec_fn=lambda: resource.setrlimit(kind, (count, count)))
        ends = (0, 1, NOT_LOADED, *ENDED_BY_GLIB) if kind == resource.RLIMIT_AS else (0, 1)
        if status in ENDED_BY_GLIB:
            place.next_start()
        losses = [f'{stray} is left over' for stray in place.strays()]
        done = {row['source']: row['output'] for row in rows if row['success']}
        for original in originals:
            output = done.get(str(original))
            # A program that was ended has not said all that it did.
            if output is None and not original.exists():
                output = next(place.out.glob(f'{original.stem}.*'), None)
                losses += [] if output else [f'{original.name} is gone']
            if output is not None and not pictures.is_whole(output):
                losses.append(f'{Path(output).name} is not whole')
        # A batch that cannot even begin says one sentence for all.
        if status in (0, 1) and len(rows) != len(originals) and (rows or not complaints):
            losses.append(f'{len(rows)} rows of {len(originals)}')
        say(f'{name} to {setting}: {len(done)} of {len(rows)} rows')
        tally.judge(f'{name} to {setting}', status, losses, ends)


def main():
    short, tally = '--short' in sys.argv, Tally()
    for number, (name, kind, count) in enumerate(limits(short)):
        for setting in FORMATS[number % 4:number % 4 + 1] if short else FORMATS:
            try_limit(tally, name, kind, count, setting)
    tally.end()


if __name__ == '__main__':
    main()
