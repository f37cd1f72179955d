#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# history.sh: builds the release and prints what it costs to remember a batch of THUMBNAILS (2,000) small JPEGs to JPEG,
# where a file takes the least of other work. Each of ROUNDS (31) pairs runs it with and without the history, the first of
# a pair in turns; medians of the times by the clock and of the processor times of all processes, and of the ratios of
# the pairs, with the smallest and the largest. Then an undo of UNDONE (10,000) files whose originals are in the Trash.
set -eu

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
cli=$here/../build/release/Lumora/Contents/MacOS/lumora-cli
rounds=${ROUNDS:-31}
"$here/../packaging/install-dependencies.sh" build bench >&2
(cd "$here/.." && cmake --preset release >/dev/null && cmake --build --preset release --target lumora-cli >/dev/null)
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
export XDG_DATA_HOME=$place/data

make_thumbnails() { # make_thumbnails FOLDER COUNT
    mkdir "$1"
    local i
    for i in $(seq 40); do
        [ -e "$place/$i.jpg" ] || convert -size 200x150 -seed "$i" plasma:red-blue "$place/$i.jpg"
    done
    for i in $(seq "$2"); do
        cp "$place/$((i % 40 + 1)).jpg" "$1/$i.jpg"
    done
}

timed() { # timed COMMAND…: "CLOCK PROCESSOR" in seconds
    /usr/bin/time -f '%e %U %S' -o "$place/times" "$@" >/dev/null
    tail -1 "$place/times" | awk '{ print $1, $2 + $3 }'
}
run() { # run OPTION…: a batch as a first one
    rm -rf "$place/out" "$XDG_DATA_HOME"
    timed "$cli" --quiet --format jpeg "$@" --output-dir "$place/out" "$place/thumbnails"
}

make_thumbnails "$place/thumbnails" "${THUMBNAILS:-2000}"
run >/dev/null
for round in $(seq "$rounds"); do
    if [ $((round % 2)) -eq 1 ]; then
        with=$(run) && without=$(run --no-history)
    else
        without=$(run --no-history) && with=$(run)
    fi
    echo "$with $without" | tee -a "$place/pairs" >&2
done

middle() { sort -n | awk '{ value[NR] = $1 } END { print value[int((NR + 1) / 2)], value[1], value[NR] }'; }
printf '%-12s %10s %10s %8s %20s\n' "${THUMBNAILS:-2000} files" with without ratio 'of the pairs'
for column in 1 2; do
    read -r with _ < <(awk -v c=$column '{ print $c }' "$place/pairs" | middle)
    read -r without _ < <(awk -v c=$column '{ print $(c + 2) }' "$place/pairs" | middle)
    read -r ratio least most < <(awk -v c=$column '{ printf "%.4f\n", $c / $(c + 2) }' "$place/pairs" | middle)
    name=clock
    [ "$column" -eq 1 ] || name=processor
    printf '%-12s %10s %10s %8s %20s\n' "$name" "$with" "$without" "$ratio" "$least to $most"
done

make_thumbnails "$place/album" "${UNDONE:-10000}"
rm -rf "$place/out" "$XDG_DATA_HOME"
"$cli" --quiet --format jpeg --trash-original --output-dir "$place/out" "$place/album"
read -r clock processor < <(timed "$cli" undo --json)
echo "undo of ${UNDONE:-10000} files: $clock s by the clock, $processor s of processor time," \
    "$(find "$place/album" -type f | wc -l) originals back"
