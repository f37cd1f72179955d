#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""endurance.py [COUNT]: COUNT small files in one run. Lost: memory, descriptors or processes that grow, a file whose
processor time grows, a file without a row, a file left over."""
import os
import shutil
import statistics
import sys
import threading
import time
from pathlib import Path

from trial import pictures
from trial.place import Place, rows_of
from trial.tally import Tally, say

GROWTH_EACH = 2048  # bytes a file: its path, its names, its row
GROWTH = 24 << 20   # what the heap may settle at
WAITING = 16        # files that wait for the disk at a time, on threads of their own


def memory_of(process):
    try:
        return int(Path(f'/proc/{process}/statm').read_text().split()[1]) * os.sysconf('SC_PAGE_SIZE')
    except OSError:  # it has just ended
        return 0


class Watch(threading.Thread):
    """Looks at a process until it ends: memory with that of its children, descriptors, threads, children, processor time and files done."""

    def __init__(self, process, out):
        super().__init__()
        self.process, self.out, self.looks = process, out, []

    def run(self):
        while self.process.poll() is None:
            try:
                self.looks.append(self.look())
            except (OSError, IndexError, ValueError):
                continue
            time.sleep(0.1)

    def look(self):
        folder = Path(f'/proc/{self.process.pid}')
        fields = (folder / 'stat').read_text().rpartition(')')[2].split()
        ticks = sum(int(field) for field in fields[11:15])  # those of the children that ended, too
        children = [child for task in folder.glob('task/*/children') for child in task.read_text().split()]
        return {'memory': sum(memory_of(process) for process in (self.process.pid, *children)),
                'descriptors': len(os.listdir(folder / 'fd')), 'threads': len(os.listdir(folder / 'task')),
                'children': len(children), 'seconds': ticks / os.sysconf('SC_CLK_TCK'),
                'done': len(os.listdir(self.out))}


def losses_of(looks, count):
    working = [look for look in looks if count * 0.1 < look['done'] < count]
    if len(working) < 10:
        return [f'only {len(working)} looks; take more files']
    fifth = len(working) // 5
    first, last = working[:fifth], working[-fifth:]
    found = []

    def middle(part, key):
        return statistics.median(look[key] for look in part)
    for key, allowed in (('memory', GROWTH + GROWTH_EACH * count), ('descriptors', 4 + WAITING),
                         ('threads', 2 + WAITING), ('children', 2)):
        say(f'{key}: {middle(first, key):.0f}, then {middle(last, key):.0f}')
        if middle(last, key) > middle(first, key) + allowed:
            found.append(f'{key} grew from {middle(first, key):.0f} to {middle(last, key):.0f}')

    def cost(part):
        return (part[-1]['seconds'] - part[0]['seconds']) / max(1, part[-1]['done'] - part[0]['done'])
    say(f'processor time a file: {1000 * cost(first):.1f} ms, then {1000 * cost(last):.1f} ms')
    if cost(last) > 1.5 * cost(first) + 0.002:
        found.append('the time a file grew')
    return found


def main():
    count, tally = int(sys.argv[1]) if len(sys.argv) > 1 else 100_000, Tally()
    for setting in ('jpeg',) if count < 5000 else ('jpeg', 'webp'):
        with Place() as place:
            for number, extension in enumerate(('jpg', 'png', 'gif', 'bmp', 'webp')):
                pictures.write(place.root / f'model.{extension}', 48, 32, number)
            models = sorted(place.root.glob('model.*'))
            for number in range(count):
                model = models[number % len(models)]
                shutil.copy(model, place.pictures / f'{number}{model.suffix}')
            with open(place.root / 'rows', 'wb') as rows:
                process = place.start('--json', '--trash-original', '--format', setting, '-o', place.out,
                                      place.pictures)
                watch = Watch(process, place.out)
                watch.start()
                for line in process.stdout:
                    rows.write(line)
                process.wait()
                watch.join()
            rows = rows_of((place.root / 'rows').read_bytes())
            losses = losses_of(watch.looks, count)
            if sum(row['success'] for row in rows) != count or len(os.listdir(place.out)) != count:
                losses.append(f'{len(rows)} rows, {len(os.listdir(place.out))} outputs of {count}')
            losses += [f'{stray} is left over' for stray in place.strays()]
            tally.judge(f'{count} files to {setting}', process.returncode, losses)
            tally.tried += count - 1
    tally.end()


if __name__ == '__main__':
    main()
