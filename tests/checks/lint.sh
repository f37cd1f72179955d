#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# lint.sh [--all]: clang-format on every source, and clang-tidy on those that changed last, the newest first: in the
# working tree, then in the last 20 commits, but no more than 20 sources, which two cores read in two minutes.
# --all reads every source, which takes them half an hour.
set -eu

self=$(readlink -f -- "${BASH_SOURCE[0]}")
cd -- "$(dirname -- "$self")/../.."
commits=20
limit=20
database=build/lint

changed_files() {
    git diff --name-only HEAD
    git ls-files --others --exclude-standard
    git log --format= --name-only -"$commits"
}

# A header is read through the source of its name, or else through one that includes it.
source_of() {
    local name=${1##*/}
    case $1 in
    *.cpp) echo "$1" ;;
    *.h) if [ -e "${1%.h}.cpp" ]; then echo "${1%.h}.cpp"; else git grep -lE "[\"/]$name\"" -- '*.cpp' | head -n 1; fi ;;
    esac
}

chosen_sources() {
    if [ "${1:-}" = --all ]; then
        git ls-files '*.cpp'
    else
        changed_files | while IFS= read -r file; do
            [ ! -e "$file" ] || source_of "$file"
        done | awk '!seen[$0]++' | head -n "$limit"
    fi
}

# Some tests include what moc makes of them, which only a build would make.
make_moc_files() {
    local moc file
    moc=$(qmake6 -query QT_INSTALL_LIBEXECS)/moc
    mkdir -p -- "$database/moc"
    git grep -lE '^#include ".*\.moc"' -- '*.cpp' | while IFS= read -r file; do
        "$moc" "$file" -o "$database/moc/$(basename -- "$file" .cpp).moc"
    done
}

read_source() {
    local found
    found=$(clang-tidy -p "$database" --quiet --warnings-as-errors='*' --extra-arg="-I$database/moc" "$1" 2>&1) || {
        printf '%s\n' "$found"
        return 1
    }
}

if [ "${1:-}" = --source ]; then
    read_source "$2"
    exit
fi

git ls-files -z '*.cpp' '*.h' | xargs -0 clang-format --dry-run -Werror
cmake --preset lint >/dev/null
make_moc_files
chosen_sources "$@" | tee /dev/stderr | xargs -P "$(nproc)" -n 1 "$self" --source
