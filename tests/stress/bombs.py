#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
"""bombs.py [--short]: small files that inflate: dimensions, chunks, profiles, metadata, animations. Each by itself through
lumora-cli, which may take SECONDS of processor time and MEMORY at most; what it says of it is printed. Hung: more time. Lost:
more memory, a file left over, or an original that changed."""
import os
import resource
import struct
import sys
import time
import zlib
from io import BytesIO

from PIL import Image

from trial import pictures
from trial.place import Place, rows_of
from trial.tally import Tally, say

SECONDS = 10
MEMORY = 1 << 30
FORMATS = ('jpeg', 'webp', 'png', 'heic')


def chunk(kind, data):
    return struct.pack('>I', len(data)) + kind + data + struct.pack('>I', zlib.crc32(kind + data))


def inflating(size):
    """So many zeros in a thousandth of it."""
    packer = zlib.compressobj(9)
    pieces = [packer.compress(bytes(1 << 20)) for _ in range(size >> 20)]
    return b''.join(pieces) + packer.flush()


def png(width, height, depth=8, kind=0, extra=b'', data=b''):
    head = chunk(b'IHDR', struct.pack('>IIBBBBB', width, height, depth, kind, 0, 0, 0))
    return b'\x89PNG\r\n\x1a\n' + head + extra + chunk(b'IDAT', data) + chunk(b'IEND', b'')


def small_png(extra):
    return png(16, 16, extra=extra, data=zlib.compress(bytes(17 * 16)))


def xmp(properties, size):
    body = ''.join(f'<x:p{n}>{"v" * size}</x:p{n}>' for n in range(properties))
    return ('<?xpacket begin="" id="W5M0MpCehiHzreSzNTczkc9d"?><x:xmpmeta xmlns:x="adobe:ns:meta/"><rdf:RDF '
            'xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#"><rdf:Description rdf:about="" xmlns:x="http://x/">'
            f'{body}</rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end="w"?>').encode()


def tiff_with_entries(count):
    """A picture of 16 x 16 whose directory has so many fields that nobody knows."""
    fields = [(256, 3, 1, 16), (257, 3, 1, 16), (258, 3, 1, 8), (259, 3, 1, 1), (262, 3, 1, 1), (273, 4, 1, 0),
              (277, 3, 1, 1), (278, 3, 1, 16), (279, 4, 1, 256)]
    fields += [(40000 + n % 20000, 4, 1, n) for n in range(min(count, 65000 - len(fields)))]
    end = 8 + 2 + 12 * len(fields) + 4
    fields[5] = (273, 4, 1, end)
    return b'II*\0' + struct.pack('<IH', 8, len(fields)) + \
        b''.join(struct.pack('<HHII', *field) for field in sorted(fields)) + bytes(4 + 256)


def progressive(scans):
    """A large progressive JPEG whose last scan comes again and again."""
    stream = BytesIO()
    Image.new('L', (8000, 8000), 128).save(stream, 'JPEG', progressive=True)
    data = stream.getvalue()
    last = data.rfind(b'\xff\xda')
    return data[:-2] + data[last:-2] * scans + data[-2:]


def bmp_runs(width, height):
    head = struct.pack('<IiiHHIIiiII', 40, width, height, 1, 8, 1, 0, 0, 0, 256, 0)
    return b'BM' + struct.pack('<IHHI', 14 + 40 + 1024 + 2, 0, 0, 14 + 40 + 1024) + head + bytes(1024) + b'\0\1'


def webp_animation(place, name):
    frames = [Image.new('RGB', (8000, 4000), (n, 0, 0)) for n in range(12)]
    frames[0].save(place.pictures / name, save_all=True, append_images=frames[1:], lossless=True, method=0)


def gif_animation(frames):
    frame = b'!\xf9\4\0\0\0\0\0,' + struct.pack('<HHHHB', 0, 0, 1, 1, 0) + b'\2\2D\1\0'
    return b'GIF89a' + struct.pack('<HHBBB', 3000, 3000, 0x80, 0, 0) + bytes(6) + frame * frames + b';'


def huge_heic(place, name):
    pictures.write(place.pictures / name, 64, 64)
    data = (place.pictures / name).read_bytes()
    sizes = data.replace(b'ispe\0\0\0\0' + struct.pack('>II', 64, 64), b'ispe\0\0\0\0' + struct.pack('>II', 1 << 20, 1 << 20))
    (place.pictures / name).write_bytes(sizes)


BOMBS = {
    'GIF of 35 bytes, 65535 x 65535.gif': b'GIF89a' + struct.pack('<HHBBB', 65535, 65535, 0x80, 0, 0) + bytes(6) + b','
                                          + struct.pack('<HHHHB', 0, 0, 1, 1, 0) + b'\2\2D\1\0;',
    'GIF, 17000 x 17000.gif': b'GIF89a' + struct.pack('<HHBBB', 17000, 17000, 0x80, 0, 0) + bytes(6) + b','
                              + struct.pack('<HHHHB', 0, 0, 17000, 17000, 0) + b'\2\2D\1\0;',
    'GIF of 100000 frames.gif': lambda: gif_animation(100_000),
    'PNG of 290 megapixels in zeros.png': lambda: png(17000, 17000, 8, 0, data=inflating(17001 * 17000)),
    'PNG of 290 megapixels, 16 bits RGBA.png': lambda: png(17000, 17000, 16, 6, data=inflating(64 << 20)),
    'PNG that goes on after its picture.png': lambda: png(16, 16, data=inflating(512 << 20)),
    'PNG, profile of 512 MB.png': lambda: small_png(chunk(b'iCCP', b'p\0\0' + inflating(512 << 20))),
    'PNG, text of 512 MB.png': lambda: small_png(chunk(b'zTXt', b'Comment\0\0' + inflating(512 << 20))),
    'PNG, 300 texts of 8 MB.png': lambda: small_png(chunk(b'zTXt', b'Comment\0\0' + inflating(8 << 20)) * 300),
    'PNG, XMP of 512 MB.png': lambda: small_png(chunk(b'iTXt', b'XML:com.adobe.xmp\0\1\0\0\0' + inflating(512 << 20))),
    'PNG, XMP of 60000 properties.png': lambda: small_png(chunk(b'iTXt', b'XML:com.adobe.xmp\0\0\0\0\0' + xmp(60000, 4))),
    'PNG, XMP of 20 MB.png': lambda: small_png(chunk(b'iTXt', b'XML:com.adobe.xmp\0\0\0\0\0' + xmp(200, 100_000))),
    'PNG, 60000 texts.png': lambda: small_png(b''.join(chunk(b'tEXt', b'k%d\0v' % n) for n in range(60000))),
    'PNG, chunk that claims 2 GB.png': png(16, 16)[:33] + struct.pack('>I', 0x7fffffff) + b'tEXtComment\0',
    'TIFF, 65000 fields.tif': lambda: tiff_with_entries(65000),
    'JPEG, 64 megapixels in 400 scans.jpg': lambda: progressive(400),
    'BMP, 17000 x 17000 in 2 bytes.bmp': bmp_runs(17000, 17000),
    'BMP, 2147483647 wide.bmp': bmp_runs(0x7fffffff, 1),
    'WebP, animation of 384 megapixels.webp': webp_animation,
    'HEIC that claims 2^40 pixels.heic': huge_heic,
}


def make(place, file, bomb):
    """In a process of its own: what one has used before it starts another counts as that one's."""
    child = os.fork()
    if child == 0:
        if callable(bomb) and bomb.__code__.co_argcount:
            bomb(place, file.name)
        else:
            file.write_bytes(bomb() if callable(bomb) else bomb)
        os._exit(0)
    os.waitpid(child, 0)


def try_bomb(tally, name, bomb, setting, keeps):
    with Place() as place:
        file = place.pictures / ('bomb.' + name.rpartition('.')[2])
        make(place, file, bomb)
        before, started = file.stat(), time.monotonic()
        options = ('--no-remove-metadata', '--no-remove-profile') if keeps else ()
        process = place.start('--json', '--format', setting, *options, '-o', place.out, file,
                              preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_CPU, (60, 60)))
        status, usage, rows = wait(process, 120)
        seconds, memory = usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024
        losses = [f'{stray} is left over' for stray in place.strays()]
        losses += [] if (file.stat().st_size, file.stat().st_mtime_ns) == (before.st_size, before.st_mtime_ns) else ['the original changed']
        losses += [] if memory <= MEMORY else [f'{memory >> 20} MB']
        losses += [f'{row["output"]} is not there' for row in rows if row['success'] and
                   not os.path.getsize(row['output'])]
        said = rows[0]['message'] if rows else ''
        say(f'{name.rpartition(".")[0]} to {setting}{", all kept" if keeps else ""}: {seconds:.1f} s of processor '
            f'({time.monotonic() - started:.1f} s), {memory >> 20} MB: {said[:90]}')
        tally.judge(f'{name} to {setting}', None if seconds > SECONDS else status, losses)


def wait(process, seconds):
    """The status, what it took and its rows; the children's use is that of the largest."""
    end = time.monotonic() + seconds
    os.set_blocking(process.stdout.fileno(), True)
    while True:
        pid, status, usage = os.wait4(process.pid, os.WNOHANG)
        if pid:
            process.returncode = os.waitstatus_to_exitcode(status)
            return process.returncode, usage, rows_of(process.stdout.read())
        if time.monotonic() > end:
            process.kill()
            _, _, usage = os.wait4(process.pid, 0)
            process.returncode = -9
            return None, usage, []
        time.sleep(0.02)


def main():
    short, tally = '--short' in sys.argv, Tally()
    Image.MAX_IMAGE_PIXELS = None
    for number, (name, bomb) in enumerate(BOMBS.items()):
        for setting in FORMATS[:1] if short else FORMATS:
            for keeps in (number % 2 == 0,) if short else (False, True):
                try_bomb(tally, name, bomb, setting, keeps)
    tally.end()


if __name__ == '__main__':
    main()
