# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""Counts what trials came to, and says it in one last line."""
import sys

CRASHES = {-4: 'SIGILL', -5: 'SIGTRAP', -6: 'SIGABRT', -7: 'SIGBUS', -8: 'SIGFPE', -11: 'SIGSEGV', -31: 'SIGSYS'}


class Tally:
    def __init__(self):
        self.tried = self.lost = self.crashed = self.hung = 0

    def judge(self, what, status, losses, allowed=(0, 1)):
        """One trial: the program's exit status (None: it hung) and sentences on what is not as it must be."""
        self.tried += 1
        if status is None:
            self.hung += 1
            say(f'HUNG {what}')
        elif status not in allowed:
            self.crashed += 1
            say(f'CRASHED {what}: {CRASHES.get(status, status)}')
        if losses:
            self.lost += 1
            for loss in losses:
                say(f'LOST {what}: {loss}')

    def end(self):
        """The last line; ends the program, with 1 when anything went wrong."""
        print(f'{self.tried} tried, {self.lost} lost, {self.crashed} crashed, {self.hung} hung', flush=True)
        sys.exit(1 if self.lost or self.crashed or self.hung or not self.tried else 0)


def say(text):
    print(text, flush=True)
