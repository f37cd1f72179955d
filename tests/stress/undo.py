#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""undo.py [COUNT [SEED]]: a batch of a hundred times COUNT files, half of whose outputs replace strangers' files, is undone:
everything is, bit by bit and with its times, as it was before. Then COUNT times each, at random instants, SIGKILL to a batch with the Trash on whose outputs replace
strangers' files, and to the undo of such a batch. After each: every original and every stranger's file is, bit by bit, in its
place or in the Trash, no output is a piece, and the history opens without a complaint. After a killed undo a second one ends
with everything as it was before the batch, times included."""
import random
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from trial import pictures
from trial.place import Place
from trial.tally import Tally, say

FILES = 24
STRANGER = b'a file of somebody else, %d'


class Undos:
    def __init__(self, folder, dice):
        self.dice, self.tally, self.contents = dice, Tally(), {}
        for number in range(FILES):
            file = folder / f'{number}.jpg'
            pictures.write(file, 160, 120, number)
            self.contents[file.name] = file.read_bytes()
        self.batch_time = self.undo_time = 0.1
        with self.place() as place:
            self.batch_time = timed(lambda: self.run_batch(place))
            self.undo_time = timed(lambda: command(place, 'undo'))

    def place(self):
        place = Place()
        for name, content in self.contents.items():
            (place.pictures / name).write_bytes(content)
        for number in range(0, FILES, 2):
            (place.out / f'{number}.webp').write_bytes(STRANGER % number)
        return place

    def command(self, place):
        return ('--trash-original', '-o', place.out, place.pictures)

    def run_batch(self, place):
        return place.run(*self.command(place))

    def killed(self, place, arguments, longest):
        process = place.start(*arguments)
        time.sleep(self.dice.uniform(0, longest))
        process.send_signal(signal.SIGKILL)
        try:
            process.communicate(timeout=30)
            return process.returncode
        except subprocess.TimeoutExpired:
            process.kill()
            process.communicate()
            return None

    def losses(self, place):
        """What is neither where it was nor in the Trash."""
        found, trashed = [], [file.read_bytes() for file in files_in(place.trashed)]
        for name, content in self.contents.items():
            source = place.pictures / name
            if not (source.exists() and source.read_bytes() == content) and content not in trashed:
                found.append(f'{name} is gone')
        for number in range(0, FILES, 2):
            output, content = place.out / f'{number}.webp', STRANGER % number
            if not (output.exists() and output.read_bytes() == content) and content not in trashed:
                found.append(f"the stranger's {number}.webp is gone")
        for file in files_in(place.out):
            if not file.read_bytes().startswith(STRANGER[:10]) and not pictures.is_whole(file):
                found.append(f'{file.name} is a piece')
        return found + history_losses(place)

    def undo_many(self, count):
        with Place() as place:
            for number in range(count):
                picture = pictures.pattern(8, 8, number)
                picture.save(place.pictures / f'{number}.png')
                if number % 2:
                    (place.out / f'{number}.jpg').write_bytes(STRANGER % number)
            before = snapshot(place)
            done, rows, _ = place.run('--format', 'jpeg', *self.command(place), timeout=3600)
            losses = [] if done == 0 and len(rows) == count else [f'the batch ended with {done}']
            undone, complaints = command(place, 'undo')
            if undone != 0 or complaints:
                losses.append(f'the undo ended with {undone}: {complaints}')
            losses += differences(before, snapshot(place))
            self.tally.judge(f'an undo of {count} files', undone, losses, (0,))

    def kill_a_batch(self):
        with self.place() as place:
            status = self.killed(place, self.command(place), self.batch_time)
            self.tally.judge('SIGKILL to a batch', status, self.losses(place), (0, -9))

    def kill_an_undo(self):
        with self.place() as place:
            before = snapshot(place)
            self.run_batch(place)
            status = self.killed(place, ('undo',), self.undo_time)
            losses = self.losses(place)
            again, complaints = command(place, 'undo')
            if again != 0 or complaints:
                losses.append(f'the second undo ended with {again}: {complaints}')
            losses += differences(before, snapshot(place))
            self.tally.judge('SIGKILL to an undo', status, losses, (0, -9))


def command(place, name):
    """The exit status and the complaints of a command, which is the first argument."""
    process = place.start(name)
    _, complaints = process.communicate(timeout=600)
    return process.returncode, complaints.decode(errors='replace')


def files_in(folder):
    return sorted(folder.iterdir()) if folder.exists() else []


def snapshot(place):
    return {str(file): (file.read_bytes(), file.stat().st_mtime_ns)
            for folder in (place.pictures, place.out) for file in files_in(folder)}


def differences(before, after):
    return [f'{name} is not as it was' for name in before.keys() | after.keys() if before.get(name) != after.get(name)]


def history_losses(place):
    file = place.root / 'data/Lumora/history.sqlite'
    if not file.exists():
        return []
    status, complaints = command(place, 'history')
    found = [] if status == 0 and not complaints else [f'the history complains: {complaints}']
    if list(file.parent.glob('history-*')):
        found.append('the history was set aside')
    with sqlite3.connect(file) as database:
        check = database.execute('PRAGMA integrity_check').fetchone()[0]
    return found if check == 'ok' else [*found, f'the history is damaged: {check}']


def timed(task):
    started = time.monotonic()
    task()
    return time.monotonic() - started


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 100
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else random.randrange(1 << 30)
    say(f'seed {seed}')
    folder = Path(tempfile.mkdtemp())
    try:
        undos = Undos(folder, random.Random(seed))
        undos.undo_many(100 * count)
        for _ in range(count):
            undos.kill_a_batch()
            undos.kill_an_undo()
        undos.tally.end()
    finally:
        shutil.rmtree(folder)


if __name__ == '__main__':
    main()
