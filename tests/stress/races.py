#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""races.py [--short]: files that become something else at the worst moment. The encoder is a script that first does the
deed, so that nothing depends on luck: to a file that was found and not read yet (between resolving and reading), or to
the one that is being encoded and its output (between reading and renaming). Then trees that are large, deep or
circular, and pipes, sockets and devices that are named like pictures, with a time limit."""
import os
import socket
import stat
import subprocess
import sys
from pathlib import Path

from trial import pictures
from trial.place import Place
from trial.tally import Tally, say

OLD = b'an earlier output'
PRECIOUS = b'precious'

# What happens to {file}; {other} is another picture, {precious} a stranger's file, {root} the place.
DEEDS = {
    'grows': 'cat {other} >> {file}',
    'shrinks': 'truncate -s 100 {file}',
    'empties': 'truncate -s 0 {file}',
    'vanishes': 'rm -f {file}',
    'becomes another picture': 'cp {other} {root}/new && mv -f {root}/new {file}',
    'is rewritten in place': 'cat {other} > {file}',
    'becomes a link to another picture': 'ln -sf {other} {file}',
    'becomes a link to a stranger': 'ln -sf {precious} {file}',
    'becomes a link to nowhere': 'ln -sf {root}/nowhere {file}',
    'becomes a link to itself': 'rm -f {file}; ln -s {file} {file}',
    'becomes a pipe': 'rm -f {file}; mkfifo {file}',
    'becomes a folder': 'rm -f {file}; mkdir {file}',
    'becomes a device': 'rm -f {file}; ln -s /dev/zero {file}',
    'loses its permissions': 'chmod 000 {file}',
    'loses its folder': 'mv {folder} {root}/moved',
    'loses its folder to a link': 'mv {folder} {root}/moved && ln -s {root}/elsewhere {folder}',
}
ENCODER = '#!/bin/sh\nif mkdir {root}/done 2>/dev/null; then {deed}; fi\nexec /usr/bin/cwebp "$@"\n'


class Trial(Place):
    def __init__(self, victim, deed, base=None):
        super().__init__(base)
        for name in ('a.png', 'b.png', 'c.png', 'd.jpg'):
            pictures.write(self.pictures / name, 48, 32, seed=ord(name[0]))
        pictures.write(self.root / 'other.png', 30, 20, 9)
        (self.root / 'precious').write_bytes(PRECIOUS)
        (self.root / 'elsewhere').mkdir()
        self.contents = {file.name: file.read_bytes() for file in self.pictures.iterdir()}
        file = self.pictures / victim if victim.endswith('.png') else self.out / victim
        encoder = self.root / 'encoder'
        encoder.write_text(ENCODER.format(root=self.root, deed=deed.format(
            file=file, folder=file.parent, root=self.root, other=self.root / 'other.png',
            precious=self.root / 'precious')))
        encoder.chmod(0o700)
        self.environment['LUMORA_CWEBP_PATH'] = str(encoder)

    def everywhere(self):
        """The contents of all regular files below the place, whatever their names."""
        found = []
        for folder, _, names in os.walk(self.root):
            for name in names:
                path = Path(folder, name)
                if stat.S_ISREG(path.lstat().st_mode):
                    path.chmod(0o600)
                    found.append(path.read_bytes())
        return set(found)

    def losses(self, rows, changed):
        files, found = self.everywhere(), []
        if PRECIOUS not in files:
            found.append('the stranger\'s file changed')
        found += [f'{name} is nowhere' for name, content in self.contents.items()
                  if content not in files and name not in changed]
        if len(rows) != len(self.contents):
            found.append(f'{len(rows)} rows')
        for row in rows:
            output = Path(row['output']) if row['success'] else None
            moved = output and (self.root / 'moved' / output.name)
            if output and not pictures.is_whole(output) and not pictures.is_whole(moved) and \
                    output.name not in changed:
                found.append(f'{output} is not whole: {row["message"]}')
        found += [f'left over: {stray}' for stray in self.strays()]
        return found


def try_deed(tally, what, victim, deed, options):
    with Trial(victim, deed) as trial:
        (trial.out / 'c.webp').write_bytes(OLD)
        status, rows, _ = trial.run('-j', 1, '--trash-original', *options, '-o', trial.out,
                                    *(trial.pictures / name for name in sorted(trial.contents)), timeout=30)
        # What a deed itself destroyed is not for the program to keep.
        losses = trial.losses(rows, {victim})
        is_other = 'permissions' not in what
        if victim == 'a.png' and is_other and os.path.lexists(trial.trashed / victim):
            losses.append('what came in the place of the original went to the Trash')
        tally.judge(what, status, losses)


def try_links_and_devices(tally):
    with Place() as place:
        pictures.write(place.pictures / 'good.png', 16, 16)
        folder = place.pictures
        os.mkfifo(folder / 'pipe.jpg')
        sock = socket.socket(socket.AF_UNIX)
        here = os.getcwd()
        os.chdir(folder)  # the names of sockets are short
        sock.bind('socket.jpg')
        os.chdir(here)
        for name in ('zero', 'random', 'tty', 'full', 'null'):
            (folder / f'{name}.png').symlink_to(f'/dev/{name}')
        (folder / 'loop').symlink_to(folder)
        (folder / 'up').symlink_to('..')
        (folder / 'self.jpg').symlink_to('self.jpg')
        for options in ((), ('--dry-run',)):
            status, rows, _ = place.run(*options, '-o', place.out, folder, timeout=30)
            done = [row for row in rows if row['success']]
            tally.judge(f'pipes, sockets and devices {options}', status,
                        [] if len(done) == 1 else [f'{len(done)} files done'])
        status, _, _ = place.run('-o', place.out, folder / 'pipe.jpg', folder / 'socket.jpg', timeout=30)
        tally.judge('a pipe and a socket by name', status, [])
        sock.close()


def try_tree(tally, entries, levels):
    with Place() as place:
        pictures.write(place.root / 'one.png', 16, 16)
        for number in range(entries):
            folder = place.pictures / str(number // 1000)
            if number % 1000 == 0:
                folder.mkdir()
            (folder / f'{number}.txt').touch()
        for number in range(20):
            os.link(place.root / 'one.png', place.pictures / '0' / f'{number}.png')
        at = os.open(place.pictures, os.O_RDONLY)
        for _ in range(levels):
            os.mkdir('deeper', dir_fd=at)
            below = os.open('deeper', os.O_RDONLY, dir_fd=at)
            os.close(at)
            at = below
        os.close(at)
        status, rows, complaints = place.run('--dry-run', '-o', place.out, place.pictures, timeout=120)
        losses = [] if len(rows) == 20 else [f'{len(rows)} rows for 20 pictures']
        if levels > 1000 and status == 0:
            losses.append(f'what is too deep is left out in silence: {complaints}')
        tally.judge(f'a tree of {entries} entries and {levels} levels', status, losses)
        subprocess.run(['rm', '-rf', place.pictures], check=True)


def try_unmounted(tally):
    """Root only: the destination is gone before the output has its name."""
    with Trial('a.webp', 'umount -l {folder}') as trial:
        if subprocess.run(['mount', '-t', 'tmpfs', 'stress', trial.out], check=False, capture_output=True).returncode:
            return say('skipped: a destination that is unmounted (needs root)')
        status, rows, _ = trial.run('-j', 1, '--trash-original', '-o', trial.out, trial.pictures, timeout=30)
        originals = [name for name in trial.contents if not (trial.pictures / name).exists()
                     and not (trial.trashed / name).exists()]
        tally.judge('the destination is unmounted', status, [f'gone: {originals}'] if originals else [])
        subprocess.run(['umount', '-l', trial.out], check=False, capture_output=True)
    return None


def main():
    short, tally = '--short' in sys.argv, Tally()
    for name, deed in DEEDS.items():
        try_deed(tally, f'the next file {name}', 'b.png', deed, ())
        try_deed(tally, f'the file in work {name}', 'a.png', deed, ())
        try_deed(tally, f'the output that stands there {name}', 'c.webp', deed, ())
        if not short:
            try_deed(tally, f'the file in work {name}, skip', 'a.png', deed, ('--existing', 'skip'))
            try_deed(tally, f'the output to be {name}', 'a.webp', deed, ('--existing', 'skip'))
    try_links_and_devices(tally)
    try_tree(tally, 4000 if short else 200_000, 1500 if short else 5000)
    try_unmounted(tally)
    tally.end()


if __name__ == '__main__':
    main()
