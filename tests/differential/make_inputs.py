# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""make_inputs.py FOLDER: pictures of every kind that the formats know, by other writers than ours.

Beside the folder goes `differential-notes.json`, which says of some inputs what cannot be seen in them: "refuse" (why it has to be
refused), "may refuse" (why that is right, too), "like" (the input whose picture it has)."""
import json
import sys
from pathlib import Path

from making import heif_kinds, jpeg_kinds, other_kinds, png_kinds, tiff_kinds, words


def main():
    folder = Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    notes = {}
    for make in (jpeg_kinds.make, png_kinds.make, tiff_kinds.make, other_kinds.make, heif_kinds.make, words.make,
                 heif_kinds.make_described):
        notes |= make(folder)
    (folder.parent / 'differential-notes.json').write_text(json.dumps(notes, indent=1))


if __name__ == '__main__':
    main()
