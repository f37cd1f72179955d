#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# peer.sh PROGRAM TASK IN OUT: writes every picture of the folder IN into the folder OUT with one program as one task
# wants it, on two processes. peer.sh has PROGRAM: whether it is here.
# Tasks: webp and jpeg (QUALITY or 82, at most 2560 wide), thumbnails (the same as webp), heic (as webp), from-heic (to
# JPEG of the same size), png (the same pixels again). Programs: product, vipsthumbnail, mogrify, cwebp, sharp, trellis (sharp with its
# slower encoder of JPEG), heif-convert, optipng; floor (decoding, then encoding the ready pixels of IN-ppm), its halves
# decoding and encoding, and product-but-encoding, which stops where the encoder would start.
set -euo pipefail

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
product=$here/../build/release/Lumora/Contents/MacOS/lumora-cli
quality=${QUALITY:-82}
bound=2560

if [ "$1" = has ]; then
    case $2 in
    product*) command -v "$product" >/dev/null ;;
    sharp | trellis) command -v node >/dev/null && node -e 'require("sharp")' 2>/dev/null ;;
    floor | decoding | encoding) command -v djpeg >/dev/null && command -v cwebp >/dev/null ;;
    *) command -v "$2" >/dev/null ;;
    esac
    exit
fi

program=$1 task=$2 in=$3 out=$4

# Programs that take many files are given several small ones at once, but one large one, so that both processes end together.
several=1
if [ "$task" = thumbnails ]; then several=16; fi
each() { find "$in" -type f -print0 | sort -z | xargs -0 -P 2 "$@"; }
export quality bound out

# shellcheck disable=SC2016 # the inner shells expand
case $program in
product)
    case $task in
    thumbnails) wanted=(--format webp) ;;
    from-heic) wanted=(--format jpeg --resize none) ;;
    png) wanted=(--format png --resize none) ;;
    *) wanted=(--format "$task") ;;
    esac
    "$product" --quiet --jobs 2 --quality "$quality" "${wanted[@]}" --output-dir "$out" "$in"
    ;;
product-but-encoding)
    # Without the encoder's file every row fails, after its pixels are ready.
    LUMORA_CWEBP_PATH=/bin/true "$product" --quiet --jobs 2 --format webp --output-dir "$out" "$in" || true
    ;;
vipsthumbnail)
    saved=".webp[Q=$quality,strip]"
    if [ "$task" = jpeg ]; then saved=".jpg[Q=$quality,optimize_coding,interlace,strip]"; fi
    VIPS_CONCURRENCY=1 each -n "$several" vipsthumbnail --size "${bound}x>" -o "$out/%s$saved"
    ;;
mogrify)
    case $task in
    webp | thumbnails) wanted=(-format webp -resize "${bound}>" -quality "$quality") ;;
    jpeg) wanted=(-format jpg -resize "${bound}>" -quality "$quality") ;;
    png) wanted=(-format png) ;;
    esac
    each -n "$several" mogrify -limit thread 1 -path "$out" -strip "${wanted[@]}"
    ;;
cwebp)
    if [ "$task" = thumbnails ]; then
        each -n 1 sh -c 'exec cwebp -quiet -q "$quality" "$1" -o "$out/$(basename "$1").webp"' -
    else
        each -n 1 sh -c 'exec cwebp -quiet -q "$quality" -resize "$bound" 0 "$1" -o "$out/$(basename "$1").webp"' -
    fi
    ;;
sharp | trellis)
    if [ "$task" = png ]; then bound=0; fi
    node "$here/sharp.js" "$program" "$task" "$quality" "$bound" "$in" "$out"
    ;;
heif-convert) each -n 1 sh -c 'exec heif-convert -q "$quality" "$1" "$out/$(basename "$1").jpg"' - ;;
optipng) each -n 1 sh -c 'exec optipng -quiet -o2 -strip all -out "$out/$(basename "$1")" "$1"' - ;;
decoding) each -n 1 djpeg -outfile /dev/null ;;
encoding) "$0" cwebp thumbnails "$in-ppm" "$out" ;;
floor)
    "$0" decoding "$task" "$in" "$out"
    "$0" encoding "$task" "$in" "$out"
    ;;
esac >/dev/null 2>&1
