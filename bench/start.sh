#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# start.sh: builds the release and prints how long lumora-cli takes from its start to its first line, in milliseconds, as
# median and least of ROUNDS (41): for --version, and for the row of one small JPEG as each format.
set -eu

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
cli=$here/../build/release/Lumora/Contents/MacOS/lumora-cli
"$here/../packaging/install-dependencies.sh" build bench >&2
(cd "$here/.." && cmake --preset release >/dev/null && cmake --build --preset release --target lumora-cli >/dev/null)
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
export XDG_DATA_HOME=$place/data
convert -size 400x300 -seed 1 plasma:red-blue "$place/small.jpg"

to_first_line() { # to_first_line COMMAND…: microseconds
    local begin=$EPOCHREALTIME line end
    read -r line < <("$@") && end=$EPOCHREALTIME
    [ -n "$line" ] && echo $((${end/./} - ${begin/./}))
}

measure() { # measure NAME ARGUMENT…
    local name=$1
    shift
    for _ in $(seq "${ROUNDS:-41}"); do
        rm -rf "$place/out"
        to_first_line "$cli" "$@"
    done | sort -n | awk -v name="$name" \
        '{ value[NR] = $1 / 1000 } END { printf "%-10s %6.1f %6.1f\n", name, value[int((NR + 1) / 2)], value[1] }'
}

printf '%-10s %6s %6s\n' 'first line' median least
measure --version --version
for format in jpeg webp png heic; do
    measure "$format" --format "$format" --output-dir "$place/out" "$place/small.jpg"
done
