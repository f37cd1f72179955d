#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds Lumora and runs it.
#   ./run.sh               opens the window; without a display optimizes sample images and prints what it did
#   ./run.sh PATH…         optimizes images and folders, in the window where there is a display
#   ./run.sh --cli ARGS…   runs lumora-cli with these arguments, display or not
set -eu

root=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
build=$root/build/release
programs=$build/Lumora/Contents/MacOS
log=$root/build/run.log

logged() {
    "$@" >>"$log" 2>&1 || {
        cat -- "$log" >&2
        return 1
    }
}

configure() {
    mkdir -p -- "$root/build"
    "$root/packaging/install-dependencies.sh" build >&2
    : >"$log"
    cd -- "$root"
    logged cmake --preset release
    cd -- "$OLDPWD"
}

build() {
    echo "Building (the first time takes minutes; $log shows how far)" >&2
    logged cmake --build "$build" --target "$@"
}

has_display() {
    [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]
}

# A configuration without the views has no windowed application.
has_window() {
    [[ $(cmake --build "$build" --target help) == *$'\nlumora: '* ]]
}

optimize_samples() {
    build lumora-cli lumora-samples
    local samples=$root/build/samples
    rm -rf -- "$samples"
    "$build/samples/lumora-samples" "$samples/originals"
    echo "Optimizing $samples/originals into $samples/optimized:"
    exec "$programs/lumora-cli" --output-dir "$samples/optimized" "$samples/originals"
}

configure
if [ "${1:-}" = --cli ]; then
    shift
    build lumora-cli
    exec "$programs/lumora-cli" "$@"
elif has_display && has_window; then
    build lumora
    exec "$programs/lumora" -- "$@"
elif [ $# -eq 0 ]; then
    optimize_samples
else
    build lumora-cli
    exec "$programs/lumora-cli" -- "$@"
fi
