# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""A place of its own for one trial: pictures, outputs, temporary files, a home with a Trash; and what may be left in it."""
import json
import os
import shutil
import subprocess
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
PROGRAMS = Path(os.environ.get('LUMORA_PROGRAM_DIR', ROOT / 'build/release/Lumora/Contents/MacOS'))
CLI = PROGRAMS / 'lumora-cli'
WINDOW = PROGRAMS / 'lumora'


class Place:
    def __init__(self, base=None):
        self.root = Path(tempfile.mkdtemp(prefix='stress-', dir=base))
        for name in ('in', 'out', 'tmp', 'home', 'config', 'data', 'cache', 'run'):
            (self.root / name).mkdir()
        (self.root / 'run').chmod(0o700)
        self.pictures, self.out, self.tmp = self.root / 'in', self.root / 'out', self.root / 'tmp'
        self.trashed = self.root / 'data/Trash/files'
        self.environment = {
            'PATH': os.environ['PATH'], 'LANG': 'C.UTF-8', 'HOME': str(self.root / 'home'), 'TMPDIR': str(self.tmp),
            'XDG_DATA_HOME': str(self.root / 'data'), 'XDG_CONFIG_HOME': str(self.root / 'config'),
            'XDG_CACHE_HOME': str(self.root / 'cache'), 'XDG_RUNTIME_DIR': str(self.root / 'run'),
            'DBUS_SESSION_BUS_ADDRESS': 'unix:path=/nonexistent', 'GIO_USE_VFS': 'local'}

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.root, ignore_errors=True)

    def start(self, *arguments, program=CLI, **more):
        environment = self.environment | more.pop('extra', {})
        return subprocess.Popen([program, *map(str, arguments)], env=environment, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, **more)

    def run(self, *arguments, timeout=60, **more):
        """The exit status (None: did not end in time), the rows and the complaints."""
        process = self.start('--json', *arguments, **more)
        try:
            rows, complaints = process.communicate(timeout=timeout)
        except subprocess.TimeoutExpired:
            process.kill()
            process.communicate()
            return None, [], ''
        return process.returncode, rows_of(rows), complaints.decode(errors='replace')

    def strays(self):
        """Drafts and temporary files, wherever they lie."""
        return [*self.tmp.iterdir(), *self.root.rglob('.lumora-*')]

    def next_start(self):
        """What a start does before anything else: it tidies up after those that were killed."""
        self.run('--dry-run', self.root / 'none.jpg')


def rows_of(text):
    rows = []
    for line in text.splitlines():
        try:
            rows.append(json.loads(line))
        except ValueError:  # the last one of a program that was killed
            continue
    return rows
