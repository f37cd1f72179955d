#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""surface.py: what the programs hold while they work: descriptors, sockets and capabilities of the command line and the window,
what their encoder inherits, and what the bus interface answers to calls that it should refuse. Compared with what docs/security.md
promises. The encoder is a script that looks around, so that nothing depends on time."""
import json
import re
import shutil
import subprocess
import sys
import time
from pathlib import Path

from trial import pictures
from trial.place import WINDOW, Place
from trial.tally import Tally, say

# Writes down what it and its parent hold, then does its work.
ENCODER = '''#!/usr/bin/python3
import json, os
def held(process):
    found = {}
    for number in os.listdir(f'/proc/{process}/fd'):
        try:
            found[number] = os.readlink(f'/proc/{process}/fd/{number}')
        except OSError:
            pass
    return found
def words(process):
    return dict(line.split(':\\t', 1) for line in open(f'/proc/{process}/status').read().splitlines() if ':\\t' in line)
mine = {number: target for number, target in held('self').items() if not target.startswith(f'/proc/{os.getpid()}/')}
parent = os.getppid()
seen = {'mine': mine, 'environment': sorted(os.environ), 'my status': words('self'),
        'parent': held(parent), 'parent status': words(parent), 'signals': words('self')['SigIgn'] + words('self')['SigBlk']}
with open('SEEN', 'a') as file:
    file.write(json.dumps(seen) + '\\n')
import sys
os.execv('/usr/bin/cwebp', ['cwebp', *sys.argv[1:]])
'''
PREFERENCES = '[General]\nexitWhenComplete=false\n'
INTERFACE = 'org.freedesktop.Application'
BUS_NAME, BUS_PATH = 'example.tidewell.Lumora', '/example/tidewell/Lumora'


def own_capabilities():
    status = Path('/proc/self/status').read_text()
    return int(re.search(r'CapEff:\s*(\w+)', status).group(1), 16)


def internet_sockets():
    found = set()
    for kind in ('tcp', 'tcp6', 'udp', 'udp6', 'raw', 'raw6', 'packet', 'udplite'):
        table = Path('/proc/net', kind)
        if table.exists():
            found |= {line.split()[-1 if kind == 'packet' else 9] for line in table.read_text().splitlines()[1:]}
    return found


def has_internet(target):
    match = re.fullmatch(r'socket:\[(\d+)\]', target)
    return bool(match) and match.group(1) in internet_sockets()


class Watched(Place):
    def __init__(self):
        super().__init__()
        self.seen = self.root / 'seen'
        encoder = self.root / 'encoder'
        encoder.write_text(ENCODER.replace('SEEN', str(self.seen)))
        encoder.chmod(0o700)
        self.environment['LUMORA_CWEBP_PATH'] = str(encoder)
        pictures.write(self.pictures / 'a.png', 32, 32)

    def look(self):
        return json.loads(self.seen.read_text().splitlines()[0])

    def losses_of_child(self, seen):
        found = [f'the encoder has {number} -> {target}' for number, target in seen['mine'].items()
                 if int(number) > 2]
        # The first comes from the script's language, the second is the desktop's leave to raise a window.
        new = set(seen['environment']) - set(self.environment) - {'LC_CTYPE', 'XDG_ACTIVATION_TOKEN'}
        found += [f'new in the environment: {name}' for name in new]
        if int(seen['my status']['SigBlk'], 16):
            found.append('the encoder has signals blocked')
        return found

    def losses_of_parent(self, seen):
        found = []
        for number, target in seen['parent'].items():
            if has_internet(target):
                found.append(f'the program has {number} -> {target}')
            is_file = target.startswith('/') and not target.startswith(('/dev/null', '/proc/', '/usr/', '/var/cache/', '/memfd:'))
            if is_file and not target.startswith(str(self.root)):
                found.append(f'the program has {target} open')
        for process in ('parent status', 'my status'):
            gained = int(seen[process]['CapEff'], 16) & ~own_capabilities()
            if gained:
                found.append(f'capabilities gained: {gained:x}')
        return found


def try_command_line(tally):
    with Watched() as place:
        status, _, complaints = place.run('-o', place.out, place.pictures)
        seen = place.look()
        say(f'the command line: {sorted(seen["parent"].values())}')
        say(f'its encoder: {seen["mine"]}')
        tally.judge(f'the command line {complaints}', status,
                    place.losses_of_child(seen) + place.losses_of_parent(seen), (0,))


class Bus:
    def __init__(self, place):
        self.address = f'unix:path={place.root}/bus'
        self.environment = place.environment | {'DBUS_SESSION_BUS_ADDRESS': self.address}
        place.environment = self.environment
        self.process = subprocess.Popen(['dbus-daemon', '--session', '--nofork', f'--address={self.address}'],
                                        env=self.environment, stderr=subprocess.DEVNULL)
        wait_for(lambda: Path(place.root, 'bus').exists())

    def call(self, method, *arguments):
        """The answer and what was complained of."""
        done = subprocess.run(['gdbus', 'call', '--session', '--dest', BUS_NAME, '--object-path', BUS_PATH, '--method',
                               method, *arguments], env=self.environment, capture_output=True, check=False, text=True,
                              timeout=30)
        return done.returncode, done.stderr

    def names(self):
        done = subprocess.run(['gdbus', 'call', '--session', '--dest', 'org.freedesktop.DBus', '--object-path',
                               '/', '--method', 'org.freedesktop.DBus.ListNames'], env=self.environment,
                              capture_output=True, check=False, text=True)
        return done.stdout


def wait_for(condition, seconds=30):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            return False
        time.sleep(0.02)
    return True


# Calls and whether they have to be refused.
CALLS = {
    'a web address': (('Open', "['http://localhost/a.png']", '{}'), False),
    'an address of another host': (('Open', "['file://elsewhere/tmp/a.png']", '{}'), False),
    'no files': (('Open', '@as []', '{}'), False),
    'a relative path': (('Open', "['a.png', 'file:a.png', '../a.png']", '{}'), False),
    'a path of a megabyte': (('Open', f"['file:///{'x' * 100_000}.png']", '{}'), False),
    'a number instead of files': (('Open', '5', '{}'), True),
    'a text instead of a list': (('Open', "'file:///tmp'", '{}'), True),
    'nothing': (('Open',), True),
    'an action that there is not': (('ActivateAction', 'quit', '@av []', '{}'), True),
    'a method that there is not': (('Quit',), True),
}


def try_window(tally):
    if not WINDOW.exists() or not shutil.which('gdbus') or not shutil.which('dbus-daemon'):
        return say('skipped: the window (needs a build of it, gdbus and dbus-daemon)')
    with Watched() as place:
        settings = place.root / 'config/Tidewell/Lumora.ini'
        settings.parent.mkdir()
        settings.write_text(PREFERENCES)
        place.environment['QT_QPA_PLATFORM'] = 'offscreen'
        bus = Bus(place)
        process = place.start(place.pictures / 'a.png', program=WINDOW)
        try:
            losses = [] if wait_for(place.seen.exists) and wait_for(lambda: place.seen.read_text().endswith('\n')) \
                else ['it did not come to its encoder']
            if not losses:
                seen = place.look()
                say(f'the window: {sorted(seen["parent"].values())}')
                losses = place.losses_of_child(seen) + place.losses_of_parent(seen)
            losses += [] if BUS_NAME in bus.names() else ['its name is not on the bus']
            for what, ((method, *arguments), is_wrong) in CALLS.items():
                status, complaint = bus.call(f'{INTERFACE}.{method}', *arguments)
                if (status != 0) != is_wrong:
                    losses.append(f'{what}: {"taken" if status == 0 else complaint}')
            if process.poll() is not None:
                losses.append(f'it ended with {process.returncode}')
            process.terminate()
            process.communicate(timeout=30)
            tally.judge('the window', process.returncode, losses, (0, 143, -15))
        finally:
            process.kill()
            bus.process.kill()
            bus.process.wait()
    return None


def main():
    tally = Tally()
    try_command_line(tally)
    try_window(tally)
    tally.end()


if __name__ == '__main__':
    sys.exit(main())
