#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""kills.py [COUNT [SEED]]: COUNT times each, at random instants of a batch with the Trash on: SIGKILL and SIGTERM to
lumora-cli and to the window (without a screen), SIGKILL to the encoders and other children alone. After each: every original is in its
place or in the Trash beside a whole output, what was said to be done is, no older output is a piece, every child has
ended, and after the next start nothing is left over. After SIGTERM nothing is before it either."""
import os
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from trial import pictures
from trial.place import WINDOW, Place, rows_of
from trial.tally import Tally, say

FILES = 10
WIDTH, HEIGHT = 640, 480
OLD = b'an earlier output'
PREFERENCES = '[General]\nmoveOriginalToTrash=true\noutputFormat={}\nexitWhenComplete=true\n'


def processes_of(place):
    """Those that have this place in their environment, whoever started them."""
    mark, found = f'TMPDIR={place.tmp}'.encode(), []
    for folder in Path('/proc').glob('[0-9]*'):
        try:
            if mark in (folder / 'environ').read_bytes().split(b'\0') and \
                    (folder / 'stat').read_text().rpartition(')')[2].split()[0] != 'Z':
                found.append(int(folder.name))
        except OSError:
            continue
    return found


def all_ended(place, seconds):
    end = time.monotonic() + seconds
    while processes_of(place):
        if time.monotonic() > end:
            return False
        time.sleep(0.01)
    return True


class Kills:
    def __init__(self, folder, dice):
        self.dice, self.tally, self.contents = dice, Tally(), {}
        for number in range(FILES):
            file = folder / f'{number}.{"png" if number % 2 else "jpg"}'
            pictures.write(file, WIDTH, HEIGHT, number)
            self.contents[file.name] = file.read_bytes()
        self.whole = {setting: self.time_of(setting) for setting in ('webp', 'jpeg')}

    def place(self, setting):
        place = Place()
        for name, content in self.contents.items():
            (place.pictures / name).write_bytes(content)
        extension = {'webp': 'webp', 'jpeg': 'jpg'}[setting]
        (place.out / f'0.{extension}').write_bytes(OLD)
        return place

    def command(self, place, setting):
        return ('--json', '--trash-original', '--format', setting, '-o', place.out,
                *(place.pictures / name for name in self.contents))

    def time_of(self, setting):
        with self.place(setting) as place:
            started = time.monotonic()
            place.start(*self.command(place, setting)).communicate()
            return time.monotonic() - started

    def losses(self, place, rows, outputs):
        found = []
        done = {Path(row['source']).name: Path(row['output']) for row in rows if row['success']}
        found += [f'{output} is not whole' for output in done.values() if not pictures.is_whole(output)]
        for file in outputs.iterdir():
            if file.read_bytes() != OLD and file.name not in self.contents and not pictures.is_whole(file):
                found.append(f'{file.name} is a piece')
        for name, content in self.contents.items():
            source = place.pictures / name
            if source.exists():
                found += [] if source.read_bytes() == content else [f'{name} changed']
            elif not self.is_trashed(place, name):
                found.append(f'{name} is gone')
            elif not any(self.is_output(file, name) for file in outputs.iterdir()):
                found.append(f'{name} is in the Trash and has no output')
        return found

    def is_trashed(self, place, name):
        """Under whichever name: what an output replaces lies in the Trash, too, and may have been there first."""
        return any(file.read_bytes() == self.contents[name] for file in place.trashed.glob('*'))

    def is_output(self, file, name):
        stem = Path(name).stem
        return file.stem in (stem, f'{stem}-optimized') and file.suffix in ('.webp', '.jpg') and pictures.is_whole(file)

    def judge(self, what, place, status, rows, outputs, tidied, more=()):
        losses = [*more, *self.losses(place, rows, outputs)]
        if not all_ended(place, 10):
            losses.append(f'still running: {processes_of(place)}')
        if tidied and place.strays():
            losses.append(f'left over: {place.strays()}')
        place.next_start()
        if place.strays():
            losses.append(f'left over after the next start: {place.strays()}')
        self.tally.judge(what, status, losses, (0, 1, -9, 128 + 15, -15))

    def command_line(self, number, setting):
        with self.place(setting) as place:
            process = place.start(*self.command(place, setting))
            time.sleep(self.dice.uniform(0, self.whole[setting]))
            process.send_signal(number)
            status, output = ended(process, 30)
            self.judge(f'{signal.Signals(number).name} to the command line, {setting}', place, status, rows_of(output),
                       place.out, number == signal.SIGTERM)

    def window(self, number, setting):
        with self.place(setting) as place:
            settings = place.root / 'config/Tidewell/Lumora.ini'
            settings.parent.mkdir()
            settings.write_text(PREFERENCES.format(setting))
            process = place.start(*(place.pictures / name for name in self.contents), program=WINDOW,
                                  extra={'QT_QPA_PLATFORM': 'offscreen', 'QT_STYLE_OVERRIDE': ''})
            time.sleep(self.dice.uniform(0, 0.6 + self.whole[setting]))
            process.send_signal(number)
            status, _ = ended(process, 30)
            self.judge(f'{signal.Signals(number).name} to the window, {setting}', place, status, [], place.pictures,
                       number == signal.SIGTERM)

    def child(self, setting):
        """One process that the program started, whichever runs at that instant; costs one row."""
        with self.place(setting) as place:
            process = place.start(*self.command(place, setting))
            end = time.monotonic() + self.dice.uniform(0, self.whole[setting])
            killed = False
            while not killed and process.poll() is None:
                children = [child for child in processes_of(place) if child != process.pid]
                if children and time.monotonic() > end:
                    killed = kill(self.dice.choice(children))
            status, output = ended(process, 60)
            rows = rows_of(output)
            failed = [row['message'] for row in rows if not row['success']]
            cost = [] if len(rows) == FILES and len(failed) <= 1 else [f'{len(rows)} rows, failed: {failed}']
            self.judge(f'SIGKILL to a child, {setting}', place, status, rows, place.out, True, cost)


def kill(process):
    try:
        os.kill(process, signal.SIGKILL)
        return True
    except ProcessLookupError:
        return False


def ended(process, seconds):
    try:
        output, _ = process.communicate(timeout=seconds)
        return process.returncode, output
    except subprocess.TimeoutExpired:
        process.kill()
        output, _ = process.communicate()
        return None, output


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 200
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else random.randrange(1 << 30)
    say(f'seed {seed}')
    folder = Path(tempfile.mkdtemp())
    try:
        kills = Kills(folder, random.Random(seed))
        for number in range(count):
            setting = ('webp', 'jpeg')[number % 2]
            for which in (signal.SIGKILL, signal.SIGTERM):
                kills.command_line(which, setting)
                if WINDOW.exists():
                    kills.window(which, setting)
            kills.child('webp')
        kills.tally.end()
    finally:
        shutil.rmtree(folder)


if __name__ == '__main__':
    main()
