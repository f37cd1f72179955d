#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# run.sh [FOLDER]: times a folder of JPEG photographs (the repository's own samples, enlarged, when none is given) to
# WebP, quality 82, width bound 2560, on two processes: the product beside other programs and beside the floor, which
# is decoding by djpeg and encoding ready PPM files by cwebp. Every round runs all of them in turn; medians of ROUNDS
# (5) are printed as wall seconds and as ratios to the floor. Then the product's own peak memory.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
rounds=${ROUNDS:-5}
quality=82
bound=2560

"$root/packaging/install-dependencies.sh" build bench >&2
(cd -- "$root" && cmake --preset release && cmake --build --preset release --target lumora-cli lumora-samples) >&2
product=$root/build/release/Lumora/Contents/MacOS/lumora-cli

work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT
mkdir "$work/photos" "$work/ppm" "$work/out"

make_photos() {
    "$root/build/release/samples/lumora-samples" "$work/samples" >/dev/null
    local size index=0
    while IFS= read -r -d '' picture; do
        for size in 3600 4600 5400; do
            vipsthumbnail "$picture" --size "${size}x" -o "$work/photos/$((index += 1)).jpg[Q=92]"
        done
    done < <(find "$work/samples" -name '*.jpg' -print0)
}

if [ $# -gt 0 ]; then
    find "$1" -maxdepth 1 -iname '*.jp*g' -exec cp -t "$work/photos" -- {} +
else
    make_photos
fi
for photo in "$work"/photos/*; do
    vipsthumbnail "$photo" --size "${bound}x>" -o "$work/ppm/%s.ppm"
done

each() { find "$1" -type f -print0 | xargs -0 -n 1 -P 2 "${@:2}"; }
quietly() { "$@" >/dev/null 2>&1; }

floor_decode() { each "$work/photos" djpeg -outfile /dev/null; }
# shellcheck disable=SC2016 # expanded by the inner shell
floor_encode() { each "$work/ppm" sh -c 'exec cwebp -quiet -q "$1" "$3" -o "$2/$(basename "$3").webp"' - "$quality" "$work/out"; }
run_product() { "$product" --quiet --jobs 2 --output-dir "$work/out" "$work/photos"; }
run_vipsthumbnail() { each "$work/photos" env VIPS_CONCURRENCY=1 vipsthumbnail --size "${bound}x>" -o "$work/out/%s.webp[Q=$quality,strip]"; }
run_mogrify() { each "$work/photos" mogrify -limit thread 1 -path "$work/out" -format webp -strip -resize "${bound}>" -quality "$quality"; }
# shellcheck disable=SC2016 # expanded by the inner shell
run_cwebp() { each "$work/photos" sh -c 'exec cwebp -quiet -q "$1" -resize "$3" 0 "$4" -o "$2/$(basename "$4").webp"' - "$quality" "$work/out" "$bound"; }

contenders=(floor_decode floor_encode run_product run_vipsthumbnail run_mogrify run_cwebp)
declare -A times
for _ in $(seq "$rounds"); do
    for contender in "${contenders[@]}"; do
        rm -rf -- "$work/out"
        mkdir "$work/out"
        begin=$(date +%s%N)
        quietly "$contender"
        times[$contender]+="$((($(date +%s%N) - begin) / 1000000)) "
    done
done

median() { tr ' ' '\n' <<<"$1" | sed '/^$/d' | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

floor=$(($(median "${times[floor_decode]}") + $(median "${times[floor_encode]}")))
count=$(find "$work/photos" -type f | wc -l)
printf '%s photographs, width bound %s, quality %s, two processes, median of %s rounds\n\n' "$count" "$bound" "$quality" "$rounds"
printf '%-28s %8s %8s\n' program "wall s" "to floor"
for contender in "${contenders[@]}"; do
    milliseconds=$(median "${times[$contender]}")
    awk -v n="${contender#run_}" -v t="$milliseconds" -v f="$floor" \
        'BEGIN { printf "%-28s %8.2f %8.2f\n", n, t / 1000, t / f }'
done

highest() { awk '/VmHWM/ { print $2 }' "/proc/$1/status" 2>/dev/null || true; }

# The peak of the program and its workers together, each with the libraries that they share; the encoders that it
# starts count for themselves.
peak_of() {
    "$product" --quiet --jobs 2 --output-dir "$work/out" "$1" >/dev/null 2>&1 &
    local pid=$! peak=0 now child more
    while now=$(highest "$pid") && [ -n "$now" ]; do
        for child in $(cat "/proc/$pid/task"/*/children 2>/dev/null || true); do
            [ "$(cat "/proc/$child/comm" 2>/dev/null)" = lumora-worker ] || continue
            more=$(highest "$child")
            now=$((now + ${more:-0}))
        done
        if [ "$now" -gt "$peak" ]; then peak=$now; fi
        sleep 0.02
    done
    wait "$pid" || true
    echo "$((peak / 1024)) MB"
}

printf '\n%-28s %s\n' "peak memory, all photographs" "$(peak_of "$work/photos")"
# A long batch; without the encoder, whose work is not ours and takes most of the time.
mkdir "$work/many"
for i in $(seq 16); do
    for photo in "$work"/photos/*; do ln "$photo" "$work/many/$i-${photo##*/}"; done
done
printf '%-28s %s\n' "peak, sixteen times as many" "$(LUMORA_CWEBP_PATH=/bin/true peak_of "$work/many")"
for shape in "4000 3000" "11500 8700"; do
    read -r width height <<<"$shape"
    for type in jpg png; do
        rm -rf -- "$work/large"
        mkdir "$work/large"
        vips gaussnoise "$work/noise.v" "$((width / 8))" "$((height / 8))" --mean 128 --sigma 40 >/dev/null
        vips resize "$work/noise.v" "$work/zoom.v" 8 >/dev/null
        vips cast "$work/zoom.v" "$work/large/a.$type" uchar >/dev/null
        rm -f -- "$work/noise.v" "$work/zoom.v"
        printf '%-28s %s\n' "peak, $((width * height / 1000000)) megapixels $type" "$(peak_of "$work/large")"
    done
done
