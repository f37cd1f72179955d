# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""differential.py PROGRAM FOLDER WORK [--each]: compares what the program makes of a folder with what others see in it.

Everything that is made on the way stays in WORK. Ends with 1 when a line is outside its bounds."""
import functools
import json
import os
import sys
from multiprocessing import Pool
from pathlib import Path

import compare
import metadata
import product
import references
import table

EXTENSIONS = {'.jpg', '.jpeg', '.png', '.gif', '.tif', '.tiff', '.bmp', '.heic', '.heif', '.webp'}


def _staged(folder, stage):
    """Links with names that stay apart when the outputs get other extensions."""
    stage.mkdir()
    for path in sorted(folder.rglob('*')):
        if path.is_file() and path.suffix.lower() in EXTENSIONS:
            name = '_'.join(path.relative_to(folder).parts)
            (stage / f'{name}{path.suffix}').symlink_to(path.resolve())
    return sorted(stage.iterdir())


def _reference(path, tags, folder):
    return references.make(path.name, path, metadata.orientation_of(tags.get(str(path), {})), folder)


def _lines(reference, rows, notes, tags):
    note = notes.get(Path(reference.name).stem, {})
    before = tags.get(str(reference.path), {})
    lines, costs = [], {}
    for setting in product.SETTINGS:
        row = rows[setting].get(reference.name)
        after = tags.get(row['output'], {}) if row and row['output'] else {}
        lines.append(compare.judge(reference, setting, row, note, before, after, costs))
    return lines


def _like(references_by_name, notes):
    """Puts the picture of another input where a note says that it is the same."""
    for name, note in notes.items():
        damaged = references_by_name.get(name + Path(name).suffix)
        if 'like' in note and damaged:
            whole = references_by_name[note['like'] + Path(note['like']).suffix]
            damaged.__dict__.update(whole.__dict__ | {'name': damaged.name, 'path': damaged.path})


def main():
    program, folder, work = (Path(word) for word in sys.argv[1:4])
    work.mkdir(parents=True, exist_ok=True)
    pixels = work / 'references'
    pixels.mkdir()
    notes_file = folder.parent / 'differential-notes.json'
    notes = json.loads(notes_file.read_text(encoding='utf8')) if notes_file.exists() else {}
    inputs = _staged(folder, work / 'inputs')

    rows = {setting: product.run(program, setting, work / 'inputs', work / f'{setting.name}-{setting.format}')
            for setting in product.SETTINGS}
    outputs = [row['output'] for of_setting in rows.values() for row in of_setting.values() if row['output']]
    tags = metadata.read_all([*inputs, *outputs])
    with Pool(os.cpu_count()) as pool:
        made = pool.map(functools.partial(_reference, tags=tags, folder=pixels), inputs, chunksize=4)
        _like({reference.name: reference for reference in made}, notes)
        references.reduce_all(made)
        each = pool.imap_unordered(functools.partial(_lines, rows=rows, notes=notes, tags=tags), made, chunksize=4)
        lines = [line for some in each for line in some]
    (table.show_each if '--each' in sys.argv else table.show)(lines)
    return 1 if any(line.complaints for line in lines) or not lines else 0


if __name__ == '__main__':
    sys.exit(main())
