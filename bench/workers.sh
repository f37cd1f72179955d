#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# workers.sh [FOLDER…]: builds the release and prints what it costs to work on pixels in processes of their own. Each
# folder goes to WebP with and without workers, in turns; without folders, 232 thumbnails that are made here. Prints
# the medians of ROUNDS (7) runs, of the time by the clock and of the processor time, and their ratios.
set -eu

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
build=$here/../build/release
rounds=${ROUNDS:-7}
"$here/../packaging/install-dependencies.sh" build bench >&2
(cd "$here/.." && cmake --preset release >/dev/null &&
    cmake --build --preset release --target lumora-cli lumora-worker bench_workers >/dev/null)
export LUMORA_CWEBP_PATH=$build/Lumora/Contents/MacOS/cwebp
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

if [ $# -eq 0 ]; then
    mkdir "$place/thumbnails"
    for i in $(seq 232); do
        convert -size 200x150 -seed "$i" plasma:red-blue "$place/thumbnails/$i.jpg"
    done
    set -- "$place/thumbnails"
fi

run() { # run BUNDLE|here FOLDER: "WALL PROCESSOR" in seconds
    rm -rf "$place/out"
    /usr/bin/time -f '%e %U %S' -o "$place/times" "$build/bench/bench_workers" "$1" "$2" "$place/out"
    tail -1 "$place/times" | awk '{ print $1, $2 + $3 }'
}
median() { sort -n | awk '{ value[NR] = $1 } END { print value[int((NR + 1) / 2)] }'; }

printf '%-32s %10s %10s %8s %10s %10s %8s\n' folder 'clock' 'alone' 'ratio' 'processor' 'alone' 'ratio'
for folder; do
    rm -f "$place/with" "$place/without"
    for _ in $(seq "$rounds"); do
        run "$build/Lumora" "$folder" >>"$place/with"
        run here "$folder" >>"$place/without"
    done
    for column in 1 2; do
        with=$(cut -d' ' -f$column "$place/with" | median)
        without=$(cut -d' ' -f$column "$place/without" | median)
        awk -v a="$with" -v b="$without" 'BEGIN { printf "%s %s %.3f ", a, b, a / b }'
    done | awk -v f="$(basename -- "$folder")" '{ printf "%-32s %10s %10s %8s %10s %10s %8s\n", f, $1, $2, $3, $4, $5, $6 }'
done
