#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""powercuts.py [COUNT [SEED]]: COUNT batches with the Trash on, on an ext4 file system of their own whose power is cut at a random
instant during the batch or some seconds after it: nothing reaches its disk from there on. What the file system knows of
its folders is written every second, what the files hold when it likes, so that a rename can be there without the bytes. After it is mounted anew, every
original is there, or a whole output of it. Needs root and a loop device; says when it skips."""
import fcntl
import os
import random
import shutil
import struct
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from trial import pictures
from trial.place import Place
from trial.tally import Tally, say

SHUTDOWN = 0x8004587D  # EXT4_IOC_SHUTDOWN
WITHOUT_LOG = struct.pack('I', 2)
FILES = 12


class Disk:
    """A file system in a file."""

    def __init__(self, folder):
        self.image, self.folder = folder / 'disk', folder / 'mounted'
        self.folder.mkdir()
        with open(self.image, 'wb') as image:
            image.truncate(64 << 20)
        call('mkfs.ext4', '-q', '-F', self.image)

    def mount(self):
        call('mount', '-o', 'loop,commit=1', self.image, self.folder)

    def unmount(self):
        subprocess.run(['umount', '-l', self.folder], check=False, capture_output=True)

    def cut(self):
        folder = os.open(self.folder, os.O_RDONLY)
        try:
            fcntl.ioctl(folder, SHUTDOWN, WITHOUT_LOG)
        finally:
            os.close(folder)


def call(*words):
    subprocess.run([str(word) for word in words], check=True, capture_output=True)


def losses_of(place, contents, extension):
    found = []
    for name, content in contents.items():
        places = (place.pictures / name, place.trashed / name)
        is_kept = any(file.exists() and file.read_bytes() == content for file in places)
        output = place.out / f'{Path(name).stem}.{extension}'
        if not is_kept and not pictures.is_whole(output):
            found.append(f'{name} is neither there nor put out')
        if not (place.pictures / name).exists() and not pictures.is_whole(output):
            found.append(f'{name} went to the Trash for {output.stat().st_size if output.exists() else "no"} bytes')
    return found


def try_cut(tally, contents, dice, number):
    setting, extension = (('webp', 'webp'), ('jpeg', 'jpg'), ('png', 'png'))[number % 3]
    folder = Path(tempfile.mkdtemp())
    disk = Disk(folder)
    disk.mount()
    try:
        place = Place(disk.folder)
        for name, content in contents.items():
            (place.pictures / name).write_bytes(content)
        call('sync', '-f', disk.folder)
        process = place.start('--json', '--trash-original', '--format', setting, '-o', place.out, place.pictures)
        time.sleep(dice.uniform(0, 3))
        disk.cut()
        try:
            process.communicate(timeout=60)
            status = process.returncode
        except subprocess.TimeoutExpired:
            process.kill()
            status = None
        disk.unmount()
        time.sleep(0.2)
        disk.mount()
        tally.judge(f'a cut in a batch to {setting}', status, losses_of(place, contents, extension))
    finally:
        disk.unmount()
        shutil.rmtree(folder, ignore_errors=True)


def can_cut():
    folder = Path(tempfile.mkdtemp())
    disk = None
    try:
        disk = Disk(folder)
        disk.mount()
        disk.cut()
        return True
    except (OSError, subprocess.CalledProcessError) as error:
        say(f'skipped: {error}')
        return False
    finally:
        if disk:
            disk.unmount()
        shutil.rmtree(folder, ignore_errors=True)


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 100
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else random.randrange(1 << 30)
    say(f'seed {seed}')
    tally, contents, folder = Tally(), {}, Path(tempfile.mkdtemp())
    if not can_cut():
        print('0 tried, 0 lost, 0 crashed, 0 hung')
        return
    for number in range(FILES):
        file = folder / f'{number}.{"bmp" if number % 2 else "tif"}'
        pictures.write(file, 320, 240, number)
        contents[file.name] = file.read_bytes()
    shutil.rmtree(folder)
    dice = random.Random(seed)
    for number in range(count):
        try_cut(tally, contents, dice, number)
    tally.end()


if __name__ == '__main__':
    main()
