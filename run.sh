#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds Lumora and runs it.
#   ./run.sh               optimizes a small folder of sample images and prints what it did
#   ./run.sh PATH…         optimizes images and folders
#   ./run.sh --cli ARGS…   runs lumora-cli with these arguments
set -eu

root=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
build=$root/build/release
programs=$build/Lumora/Contents/MacOS

build() {
    "$root/packaging/install-dependencies.sh" build >&2
    echo "Building (the first time takes minutes; build/run.log shows how far)" >&2
    (
        cd -- "$root"
        cmake --preset release
        cmake --build --preset release --target "$@"
    ) >"$root/build/run.log" 2>&1 || {
        cat -- "$root/build/run.log" >&2
        return 1
    }
}

optimize_samples() {
    build lumora-cli lumora-samples
    local samples=$root/build/samples
    rm -rf -- "$samples"
    "$build/samples/lumora-samples" "$samples/originals"
    echo "Optimizing $samples/originals into $samples/optimized:"
    "$programs/lumora-cli" --output-dir "$samples/optimized" "$samples/originals"
}

# The paths as the application takes them: in its window once there is one, else on the command line.
open_paths() {
    build lumora-cli
    exec "$programs/lumora-cli" -- "$@"
}

mkdir -p -- "$root/build"
if [ $# -eq 0 ]; then
    optimize_samples
elif [ "$1" = --cli ]; then
    shift
    build lumora-cli
    exec "$programs/lumora-cli" "$@"
else
    open_paths "$@"
fi
