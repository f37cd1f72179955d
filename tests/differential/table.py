# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints what was found: a line for each kind of input and output with the worst of it, then each complaint."""
from itertools import groupby

ROW = '{:9} {:8} {:13} {:>6} {:>8} {:>9} {:>8} {:>8}   {}'


def _heading(line):
    return line.setting, line.format, line.kind


def show(lines):
    print(ROW.format('setting', 'input', 'output', 'files', 'refused', 'mean', 'largest', 'outside', 'worst'))
    for (setting, format_name, kind), group in groupby(sorted(lines, key=_heading), key=_heading):
        some = list(group)
        worst = max(some, key=lambda line: (bool(line.complaints), line.mean))
        outside = sum(1 for line in some if line.complaints)
        print(ROW.format(setting, kind, format_name, len(some), sum(line.refused for line in some),
                         f'{max(line.mean for line in some):.2f}', f'{max(line.largest for line in some):.1f}',
                         outside or '', worst.input))
    bad = [line for line in lines if line.complaints]
    if bad:
        print(f'\n{len(bad)} of {len(lines)} lines are outside their bounds:')
    for line in sorted(bad, key=lambda line: line.input):
        print(f'  {line.input}, {line.setting} {line.format}: {"; ".join(line.complaints)}')


def show_each(lines):
    for line in sorted(lines, key=lambda line: line.input):
        print(f'{line.input} {line.setting} {line.format} {line.mean:.2f} {line.largest:.1f} '
              f'{"refused " if line.refused else ""}{"; ".join(line.complaints)}')
