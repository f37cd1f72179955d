#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""faults.py [--short]: of a batch of two files with the Trash on and outputs that exist already, every call that opens, reads,
writes, syncs, links, renames, removes, dates, looks at a file, makes a pipe or starts a process fails in turn, once or
from there on, in the program and in the encoder. After each: no original is lost, an older output is as it was or
replaced by a whole one, nothing is left over, one fault costs one row at most, and the next run works. --short: of
the calls for a WebP every second, of those for a JPEG every sixth, once each, with one of the reasons in turn."""
import errno
import itertools
import subprocess
import sys
import tempfile
from pathlib import Path

from trial import pictures
from trial.place import Place
from trial.tally import Tally, say

REASONS = ('ENOSPC', 'EDQUOT', 'EIO', 'EROFS', 'EACCES', 'EMFILE', 'ENOMEM', 'EAGAIN')
OLD = b'an earlier output'
EXTENSIONS = {'webp': 'webp', 'webpLossless': 'webp', 'jpeg': 'jpg', 'png': 'png', 'heic': 'heic'}


class Faults:
    def __init__(self, folder):
        self.shim = folder / 'fault_shim.so'
        subprocess.run(['cc', '-O2', '-fPIC', '-shared', '-fno-stack-protector', '-o', self.shim,
                        Path(__file__).with_name('fault_shim.c'), '-ldl'], check=True)
        self.log = folder / 'log'
        self.sources = {}
        for name in ('a.bmp', 'b.tif'):
            pictures.write(folder / name, 48, 32)
            self.sources[name] = (folder / name).read_bytes()

    def place(self, setting):
        place = Place()
        for name, content in self.sources.items():
            (place.pictures / name).write_bytes(content)
            (place.pictures / name).with_suffix('.' + EXTENSIONS[setting]).write_bytes(OLD)
        return place

    def inputs(self, place):
        return [place.pictures / name for name in self.sources]

    def run(self, place, setting, program, at, reason='EIO', stays=False):
        """The outcome and, of the call that failed, its function."""
        self.log.unlink(missing_ok=True)
        extra = {'LD_PRELOAD': str(self.shim), 'FAULT_ROOT': str(place.root), 'FAULT_PROGRAM': program,
                 'FAULT_AT': str(at), 'FAULT_ERRNO': str(getattr(errno, reason)), 'FAULT_LOG': str(self.log)}
        if stays:
            extra['FAULT_STAYS'] = '1'
        outcome = place.run('-j', 1, '--trash-original', '--format', setting, *self.inputs(place),
                            extra=extra, timeout=60)
        calls = [line.split() for line in self.log.read_text().splitlines()] if self.log.exists() else []
        hit = [function for _, function, failure in calls if failure != '0']
        return outcome, len(calls), hit[0] if hit else ''

    def losses(self, place, setting, program, rows, stays):
        found, failed = [], 0
        by_name = {Path(row['source']).name: row for row in rows}
        for name, content in self.sources.items():
            source, trashed = place.pictures / name, place.trashed / name
            output = source.with_suffix('.' + EXTENSIONS[setting])
            is_new = output.exists() and output.read_bytes() != OLD
            if not output.exists():
                found.append(f'{output.name} is gone')
            if is_new and not pictures.is_whole(output):
                found.append(f'{output.name} is not whole')
            if not source.exists() and not (is_new and trashed.exists() and trashed.read_bytes() == content):
                found.append(f'{name} is gone')
            if source.exists() and source.read_bytes() != content:
                found.append(f'{name} changed')
            row = by_name.get(name)
            failed += row is None or not row['success']
            if row is not None and row['success'] != is_new:
                found.append(f'{name} is said to be {"done" if row["success"] else "failed"}: {row["message"]}')
        # Each file has an encoder of its own, which fails by itself.
        if failed > 1 and not stays and program != 'cwebp':
            found.append(f'one fault cost {failed} rows: {[row["message"] for row in rows]}')
        return found

    def try_one(self, tally, setting, program, at, reason, stays):
        with self.place(setting) as place:
            (status, rows, _), _, function = self.run(place, setting, program, at, reason, stays)
            if not function:
                return
            name = f'{setting}: call {at} of {program}, {function}, {reason}{" from there on" if stays else ""}'
            # Where looking at the folder itself fails there is no batch.
            losses = self.losses(place, setting, program, rows, stays) if rows else []
            removing = function in ('unlink', 'unlinkat', 'rmdir', 'openat')  # the last opens the folder to empty
            if status in (0, 1) and place.strays() and not removing:
                losses.append(f'left over: {place.strays()}')
            again, rows, _ = place.run('-j', 1, '--trash-original', '--format', setting,
                                       *self.inputs(place))
            if place.strays():
                losses.append(f'still left over: {place.strays()}')
            left = [file.name for file in self.inputs(place) if file.exists()]
            if again not in (0, 1) or left:
                losses.append(f'the next run ended with {again} and left {left}: {[row["message"] for row in rows]}')
            tally.judge(name, status, losses)


def main():
    short, tally = '--short' in sys.argv, Tally()
    with tempfile.TemporaryDirectory() as folder:
        faults = Faults(Path(folder))
        reasons = itertools.cycle(REASONS)
        for setting in ('webp', 'jpeg') if short else EXTENSIONS:
            for program in ('lumora-cli', 'cwebp') if setting.startswith('webp') else ('lumora-cli',):
                with faults.place(setting) as place:
                    (status, _, complaints), calls, _ = faults.run(place, setting, program, 0)
                step = {'webp': 2, 'jpeg': 6}[setting] if short else 1
                say(f'{setting}: {calls} calls of {program} ({status}{complaints})')
                for at in range(1, calls + 1, step if program == 'lumora-cli' else 1):
                    for reason in [next(reasons)] if short else REASONS:
                        for stays in (False,) if short else (False, True):
                            faults.try_one(tally, setting, program, at, reason, stays)
    tally.end()


if __name__ == '__main__':
    main()
