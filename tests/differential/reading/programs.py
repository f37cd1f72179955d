# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Running the readers that are programs."""
import shutil
import subprocess

from .picture import Unreadable

# Its short name may be that of another program on a developer's path.
IMAGEMAGICK = shutil.which('convert-im6.q16') or 'convert'


def output_of(*words):
    done = subprocess.run([str(word) for word in words], stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    if done.returncode != 0 or not done.stdout:
        raise Unreadable(done.stderr.decode(errors='replace').strip())
    return done.stdout


def run_quietly(*words):
    if subprocess.run([str(word) for word in words], stdout=subprocess.DEVNULL, check=False).returncode != 0:
        raise RuntimeError(f'{words[0]} failed')
