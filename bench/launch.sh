#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the release and prints how long a launch takes that finds the program running: from its start until it has
# handed over its files and ended, for one file and for ten thousand; median of 21.
set -eu
cd "$(dirname "$0")/.."

if [ "${1:-}" != --inside ]; then
    packaging/install-dependencies.sh build bench >&2
    cmake --preset release >/dev/null
    cmake --build --preset release --target lumora >/dev/null
    home=$(mktemp -d)
    trap 'rm -rf -- "$home"' EXIT
    HOME=$home XDG_CONFIG_HOME=$home XDG_DATA_HOME=$home XDG_RUNTIME_DIR=$home QT_QPA_PLATFORM=xcb \
        xvfb-run -a dbus-run-session -- "$0" --inside
    exit
fi

lumora=build/release/Lumora/Contents/MacOS/lumora
"$lumora" &
running=$!
trap 'kill "$running"; wait "$running"' EXIT
until gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
    --method org.freedesktop.DBus.GetNameOwner example.tidewell.Lumora >/dev/null 2>&1; do
    sleep 0.1
done

# None of the files exists: the running program is not busy with them.
measure() {
    local count=$1 start files
    mapfile -t files < <(seq -f "/nonexistent/picture-%.0f.png" "$count")
    for _ in {1..21}; do
        start=${EPOCHREALTIME/./}
        "$lumora" "${files[@]}"
        echo $((${EPOCHREALTIME/./} - start))
    done | sort -n | awk -v count="$count" '{ us[NR] = $1 } END { printf "%6d files: %.1f ms\n", count, us[11] / 1000 }'
}
measure 1
measure 10000
