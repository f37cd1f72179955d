#!/bin/sh
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the release and prints the views' figures, on an X server without a screen: the first paint of the drop window
# beside that of an empty window (each time from the start of a process), 100,000 rows, a change of a setting, a history
# of 200,000 files, and the comparison of a photograph of 20 megapixels with its WebP copy of the same size.
set -eu
cd "$(dirname "$0")/.."
packaging/install-dependencies.sh build bench >&2
cmake --preset release >/dev/null
cmake --build --preset release --target bench_ui make_picture lumora-cli lumora-worker >/dev/null
for what in start rows settings history; do
    QT_QPA_PLATFORM=xcb xvfb-run -a build/release/bench/bench_ui "$what"
done

work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT
build/release/bench/make_picture 5472 3648 "$work/a.jpg"
programs=build/release/Lumora/Contents/MacOS
"$programs/lumora-cli" --format webp --resize none "$work/a.jpg" >&2
QT_QPA_PLATFORM=xcb xvfb-run -a build/release/bench/bench_ui comparison "$work/a.jpg" "$programs/lumora-worker"
