#!/bin/sh
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the release and prints the model's figures: a large batch, a burst of drops, the settings file, the history's rows,
# its opening with 200,000 of them and an undo of 10,000 files, and a scan
# of 100,000 files beside find on the same warm tree (best of five each).
set -eu
cd "$(dirname "$0")/.."
cmake --preset release >/dev/null
cmake --build --preset release --target bench_model bench_history >/dev/null
bench=build/release/bench/bench_model

"$bench" results
"$bench" records
"$bench" drops
"$bench" settings
for what in rows list undo; do build/release/bench/bench_history "$what"; done

tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
for folder in $(seq 100); do
    mkdir "$tree/$folder"
    (cd "$tree/$folder" && seq -f 'IMG_%g.jpg' 1000 | xargs touch)
done
for _ in 1 2 3 4 5; do
    begin=$(date +%s%N)
    find "$tree" -iname '*.jpg' >/dev/null
    echo "find: $((($(date +%s%N) - begin) / 1000)) us"
done | sort -t' ' -k2 -n | head -n 1
for _ in 1 2 3 4 5; do "$bench" scan "$tree"; done | sort -t' ' -k5 -n | head -n 1
