#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# run.sh [FOLDER] [--each]: compares what lumora-cli makes of the pictures in FOLDER (pictures of every kind that the
# formats know, made here, when none is given) with what independent readers see in them: pixels, size, orientation,
# profile and metadata, in each output format, by default, with everything kept, and reduced. Prints a table and what is
# outside its bounds; with --each a line for every output. LUMORA_CLI names another program than the release's; WORK a
# new folder in which everything that was made stays.
set -eu

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
program=${LUMORA_CLI:-$here/../../build/release/Lumora/Contents/MacOS/lumora-cli}
python=/usr/bin/python3 # Debian's, which has the modules
export PYTHONDONTWRITEBYTECODE=1 OMP_NUM_THREADS=1

folder=
each=()
for word in "$@"; do
    if [ "$word" = --each ]; then each=(--each); else folder=$(readlink -f -- "$word"); fi
done

if [ -n "${WORK:-}" ]; then
    mkdir -- "$WORK"
    work=$(readlink -f -- "$WORK")
else
    work=$(mktemp -d)
    trap 'rm -rf -- "$work"' EXIT
fi

if [ -z "$folder" ]; then
    folder=$work/made/pictures
    "$python" "$here/make_inputs.py" "$folder"
fi
"$python" "$here/differential.py" "$(readlink -f -- "$program")" "$folder" "$work/run" "${each[@]}"
