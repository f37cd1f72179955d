#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# memory.sh [MEGAPIXELS]...: prints the peak memory of one file for pictures of these sizes (12 100 250), for every input
# and every output, bounded to 2560 and without a bound: the program's and its worker's together (each counts the
# libraries that they share); behind a plus sign that of the external encoder. The first HEIC
# only is made and written: its encoder takes minutes for the others.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
(cd -- "$root" && cmake --preset release && cmake --build --preset release --target lumora-cli make_picture) >&2
product=$root/build/release/Lumora/Contents/MacOS/lumora-cli
[ $# -gt 0 ] || set -- 12 100 250
smallest=$1

work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT

highest() { awk '/VmHWM/ { print $2 }' "/proc/$1/status" 2>/dev/null || true; }

# A peak never falls, so the last look before the end is the answer.
peaks_of() {
    "$product" --quiet --jobs 1 --output-dir "$work/out" "$@" >&2 &
    local process=$! own=0 workers=0 encoders=0 now child
    while now=$(highest "$process") && [ -n "$now" ]; do
        own=$now
        for child in $(cat "/proc/$process/task"/*/children 2>/dev/null || true); do
            now=$(highest "$child")
            case $(cat "/proc/$child/comm" 2>/dev/null) in
            lumora-worker) if [ "${now:-0}" -gt "$workers" ]; then workers=$now; fi ;;
            cwebp) if [ "${now:-0}" -gt "$encoders" ]; then encoders=$now; fi ;;
            esac
        done
        sleep 0.02
    done
    wait "$process" || { printf failed; return; }
    printf '%s' "$(((own + workers) / 1024))"
    if [ "$encoders" -gt 0 ]; then printf ' + %s' "$((encoders / 1024))"; fi
}

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
                printf ' %s |' "$(peaks_of --format "$format" --resize "$bound" "$work/a.$input")"
            done
            printf '\n'
        done
    done
    rm -f -- "$work"/a.*
done
