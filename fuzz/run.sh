#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs each fuzzer of build/fuzz on its corpus, then for SECONDS on inputs that it makes of it (0: the corpus only).
# Fails on a finding and leaves the input in build/fuzz/findings; put it into the fuzzer's corpus with the correction.
#   fuzz/run.sh SECONDS [FUZZER…]
set -eu

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
programs=$here/../build/fuzz/fuzz
findings=$here/../build/fuzz/findings
seconds=${1:?seconds for each fuzzer}
shift

[ $# -gt 0 ] || set -- "$programs"/*_fuzzer
mkdir -p "$findings"
grown=$(mktemp -d)
trap 'rm -rf "$grown"' EXIT

# Small inputs reach the same code as large ones, sooner. The library's own worker threads would only get in the way.
options=(-max_len=4096 -timeout=20 -rss_limit_mb=3072 -print_final_stats=0 -verbosity=0 "-artifact_prefix=$findings/")
export VIPS_CONCURRENCY=1
export LSAN_OPTIONS=suppressions=$here/leak-suppressions.txt:print_suppressions=0

status=0
for program in "$@"; do
    name=$(basename -- "$program")
    corpus=$here/corpus/$name
    mkdir -p "$grown/$name"
    echo "$name: $(find "$corpus" -type f | wc -l) inputs, then $seconds s"
    find "$corpus" -type f -exec "$programs/$name" "${options[@]}" -max_len=0 {} + 2> "$grown/log" ||
        { status=1; cat "$grown/log"; continue; }
    [ "$seconds" -eq 0 ] ||
        "$programs/$name" "${options[@]}" "-max_total_time=$seconds" "$grown/$name" "$corpus" 2> "$grown/log" ||
        { status=1; cat "$grown/log"; }
done
exit "$status"
