#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# memory.sh [MEGAPIXELS]...: prints the peak memory of one file for pictures of these sizes (12 100 250), for every input
# and every output, bounded to 2560 and without a bound: the program's and its workers' together (each counts the
# libraries that they share); behind a plus sign that of the external encoder. The first HEIC
# only is made and written: its encoder takes minutes for the others.
# memory.sh FOLDER: the same for a batch on two workers, of the folder's JPEG files and of sixteen times as many, to WebP.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
(cd -- "$root" && cmake --preset release && cmake --build --preset release --target lumora-cli make_picture) >&2
product=$root/build/release/Lumora/Contents/MacOS/lumora-cli
[ $# -gt 0 ] || set -- 12 100 250
smallest=$1

work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT

highest() { awk '/VmHWM/ { print $2 }' "/proc/$1/status" 2>/dev/null || true; }

# The program's peak never falls, so the last look before the end is the answer; of workers, which come and go, it is
# the most that those of one look came to.
peaks_of() {
    "$product" --quiet --output-dir "$work/out" "$@" >&2 &
    local process=$! own=0 workers=0 encoders=0 now child together
    while now=$(highest "$process") && [ -n "$now" ]; do
        own=$now together=0
        for child in $(cat "/proc/$process/task"/*/children 2>/dev/null || true); do
            now=$(highest "$child")
            case $(cat "/proc/$child/comm" 2>/dev/null) in
            lumora-worker) together=$((together + ${now:-0})) ;;
            cwebp) if [ "${now:-0}" -gt "$encoders" ]; then encoders=$now; fi ;;
            esac
        done
        if [ "$together" -gt "$workers" ]; then workers=$together; fi
        sleep 0.02
    done
    wait "$process" || { printf failed; return; }
    printf '%s' "$(((own + workers) / 1024))"
    if [ "$encoders" -gt 0 ]; then printf ' + %s' "$((encoders / 1024))"; fi
}

if [ -d "$1" ]; then
    mkdir "$work/once" "$work/often"
    find "$1" -maxdepth 1 -iname '*.jp*g' -exec cp -t "$work/once" -- {} +
    for time in $(seq 16); do
        for photograph in "$work"/once/*; do ln "$photograph" "$work/often/$time-${photograph##*/}"; done
    done
    for batch in once often; do
        printf '%s files: %s MB\n' "$(find "$work/$batch" -type f | wc -l)" "$(peaks_of --jobs 2 "$work/$batch")"
    done
    exit
fi

printf '| picture | bound | jpeg | png | webp | heic | original |\n|---|---|---|---|---|---|---|\n'
for megapixels; do
    height=$(awk -v n="$megapixels" 'BEGIN { print int(sqrt(n * 750000)) }')
    width=$((height * 4 / 3))
    for extension in jpg png tif; do
        "$root/build/release/bench/make_picture" "$width" "$height" "$work/a.$extension"
    done
    inputs=(jpg png tif)
    if [ "$megapixels" = "$smallest" ]; then
        "$product" --quiet --format heic --resize none --output-dir "$work" "$work/a.jpg"
        inputs+=(heic)
    fi
    for input in "${inputs[@]}"; do
        for bound in longestEdge none; do
            printf '| %s megapixels %s | %s |' "$megapixels" "$input" "${bound/longestEdge/2560}"
            for format in jpeg png webp heic original; do
                if [ "$format" = heic ] && [ "$bound" = none ] && [ "$megapixels" != "$smallest" ]; then
                    printf ' |'
                    continue
                fi
                rm -rf -- "$work/out"
                printf ' %s |' "$(peaks_of --jobs 1 --format "$format" --resize "$bound" "$work/a.$input")"
            done
            printf '\n'
        done
    done
    rm -f -- "$work"/a.*
done
