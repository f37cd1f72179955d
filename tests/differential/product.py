# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs the program under test: one process for each way of setting it."""
import json
import subprocess
from dataclasses import dataclass
from pathlib import Path

KEEP_ALL = ('--resize', 'none', '--no-srgb', '--no-remove-profile', '--no-remove-metadata')
DEFAULT_WIDTH = 2560
REDUCED_TO = 29  # along the longest edge
REDUCE = ('--resize', 'longestEdge', '--max-pixels', str(REDUCED_TO))
FORMATS = ('webp', 'webpLossless', 'jpeg', 'png', 'heic', 'original')


@dataclass(frozen=True)
class Setting:
    name: str
    format: str
    options: tuple

    @property
    def keeps(self):
        return self.name == 'kept'

    def size_of(self, width, height):
        """That of the output; truncated, not rounded."""
        edge, bound = {'default': (width, DEFAULT_WIDTH), 'kept': (width, width),
                       'reduced': (max(width, height), REDUCED_TO)}[self.name]
        factor = min(1.0, bound / edge)
        return max(1, int(width * factor)), max(1, int(height * factor))


SETTINGS = [*(Setting('default', format, ()) for format in FORMATS),
            *(Setting('kept', format, KEEP_ALL) for format in FORMATS),
            *(Setting('reduced', format, REDUCE) for format in ('png', 'jpeg', 'original'))]


def run(program, setting, inputs, folder):
    """For each input its row: whether it succeeded, where its output is and what was said."""
    folder.mkdir(parents=True)
    done = subprocess.run([program, '--json', *setting.options, '--format', setting.format, '--output-dir',
                           folder, inputs], stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    rows = [json.loads(line) for line in done.stdout.splitlines()]
    if done.returncode not in (0, 1):
        raise RuntimeError(f'{program} ended with {done.returncode}: {done.stderr.decode(errors="replace")}')
    return {Path(row['source']).name: row for row in rows}
