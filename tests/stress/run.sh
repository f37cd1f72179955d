#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# run.sh [--short]: every proof that nothing is lost, one after another; --short takes some minutes, the whole some hours.
# The last line of each, and of all, says what it came to. LUMORA_PROGRAM_DIR names other programs than the release's.
set -u

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
export PYTHONDONTWRITEBYTECODE=1 OMP_NUM_THREADS=1 OPENBLAS_NUM_THREADS=1

# Each with what it is given in the long and in the short form.
proofs=(
    "surface.py||"
    "damage.py|100000|960 1"
    "faults.py||--short"
    "kills.py|200|4"
    "races.py||--short"
    "bombs.py||--short"
    "limits.py||--short"
    "powercuts.py|100|5"
    "endurance.py|100000|1000"
)

failed=0
sums=
log=$(mktemp)
trap 'rm -f "$log"' EXIT
for proof in "${proofs[@]}"; do
    IFS='|' read -r name long short <<< "$proof"
    arguments=$long
    [ "${1:-}" != --short ] || arguments=$short
    started=$SECONDS
    # shellcheck disable=SC2086 # several words
    "$here/$name" $arguments > "$log" || failed=1
    grep -E '^(LOST|CRASHED|HUNG|skipped)' "$log"
    last=$(tail -1 "$log")
    echo "$name ($((SECONDS - started)) s): $last"
    sums+="$last"$'\n'
done
awk '{ tried += $1; lost += $3; crashed += $5; hung += $7 }
     END { printf "%d tried, %d lost, %d crashed, %d hung\n", tried, lost, crashed, hung }' <<< "$sums"
exit "$failed"
