#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# run.sh [--profile] [FOLDER]: the product beside other programs, as tables for docs/performance.md: seconds and bytes of
# five tasks on two processes, then bytes at equal look (bytes.py, which leaves build/bytes.tsv for bytes-chart.py). The
# photographs are those of FOLDER or Debian's wallpapers. Every round runs all programs of a task in turn; medians of
# ROUNDS (5), also of the shares of the product's time in the same round, which other work on the machine disturbs less.
# What is not on the machine is left out; sharp is there where node finds it (NODE_PATH). Of the tasks, which are TASKS="webp
# jpeg from-heic png thumbnails bytes", only those named run. With --profile only where the time of the first one goes.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
rounds=${ROUNDS:-5}
tasks=" ${TASKS:-webp jpeg from-heic png thumbnails bytes} "
profile=no
if [ "${1:-}" = --profile ]; then
    profile=yes
    shift
fi

"$root/packaging/install-dependencies.sh" build bench >&2
(cd -- "$root" && cmake --preset release && cmake --build --preset release --target lumora-cli) >&2

work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT
export XDG_DATA_HOME=$work/data LC_ALL=C
"$root/bench/pictures.sh" "$work" "$@" >&2

declare -A names=([product]=Lumora [floor]="floor: \`djpeg\`, then \`cwebp\` on ready pixels" [trellis]="sharp, trellis"
    [optipng]="\`optipng -o2\`" [cwebp]="\`cwebp\`" [vipsthumbnail]="\`vipsthumbnail\`" [mogrify]="\`mogrify\`" [heif-convert]="\`heif-convert\`"
    [decoding]="\`djpeg\`" [encoding]="\`cwebp\` on ready pixels" [product-but-encoding]="Lumora without its encoder")

# Wall and processor seconds of one run, whose files stay in $out until the end: ext4 looks for room for a new file past
# every file that was deleted in the last minutes, which would cost those most who make most files.
timed() {
    local TIMEFORMAT='%R %U %S' found
    out=$(mktemp -d -p "$work")
    found=$({ time "$root/bench/peer.sh" "$@" "$out" || echo "$1 failed" >&3; } 3>&2 2>&1)
    awk '{ print $1, $2 + $3 }' <<<"$found"
}

megabytes() { awk '{ n += $1 } END { if (n) printf "%.2f", n / 1e6 }'; }
median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }
column() { cut -d ' ' -f "$1" "$work/times.$2" | median; }
shares() { paste -d ' ' "$work/times.$2" "$work/times.product" | awk -v n="$1" '{ print $n / $(n + 2) }' | median; }

# task TITLE TASK PICTURES PROGRAM…
task() {
    local title=$1 task=$2 pictures=$3 program programs=() round
    shift 3
    [[ $tasks == *" $task "* ]] || return 0
    for program; do
        if "$root/bench/peer.sh" has "$program"; then programs+=("$program"); else printf 'Left out, not found: %s\n\n' "$program"; fi
    done
    rm -f -- "$work"/times.* "$work"/bytes.*
    for ((round = 0; round < rounds; round++)); do
        for program in "${programs[@]}"; do
            timed "$program" "$task" "$work/$pictures" >>"$work/times.$program"
            find "$out" -type f -printf '%s\n' | megabytes >"$work/bytes.$program"
        done
    done
    printf '%s (%s files, %s MB; load %s)\n\n| | s | to Lumora | processor s | to Lumora | MB |\n|---|---|---|---|---|---|\n' "$title" \
        "$(find "$work/$pictures" -type f | wc -l)" "$(find "$work/$pictures" -type f -printf '%s\n' | megabytes)" "$(cut -d ' ' -f 3 /proc/loadavg)"
    for program in "${programs[@]}"; do
        printf '| %s | %.2f | %.2f | %.2f | %.2f | %s |\n' "${names[$program]:-$program}" "$(column 1 "$program")" \
            "$(shares 1 "$program")" "$(column 2 "$program")" "$(shares 2 "$program")" "$(cat "$work/bytes.$program")"
    done
    printf '\n'
}

printf '%s, %s, %s processors, median of %s rounds\n\n' "$(date -u '+%d %B %Y')" \
    "$(awk -F '"' '/^PRETTY_NAME/ { print $2 }' /etc/os-release)" "$(nproc)" "$rounds"
if [ "$profile" = yes ]; then
    tasks=" webp "
    task "Where the time goes: photographs to WebP" webp photographs product product-but-encoding decoding encoding
    exit
fi
task "Photographs to WebP, quality 82, at most 2560 wide" webp photographs product vipsthumbnail mogrify cwebp sharp floor
task "The same to JPEG" jpeg photographs product vipsthumbnail mogrify sharp trellis
task "HEIC of 12 megapixels to JPEG" from-heic heic product heif-convert
task "Drawn PNG to PNG" png drawn product optipng mogrify sharp
task "Thumbnails to WebP" thumbnails thumbnails product vipsthumbnail mogrify cwebp sharp
if [[ $tasks == *" bytes "* ]]; then "$root/bench/bytes.py" "$work/proof" "$root/build/bytes.tsv"; fi
