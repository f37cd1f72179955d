#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what is missing, then builds and tests Lumora in stages.
#   ./test.sh          every stage
#   ./test.sh STAGE…   only these: scripts lint build tests differential desktop stress package asan tsan fuzz
set -eu

root=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
cd -- "$root"

# name:minutes, in order. A stage that takes longer is ended and counts as failed.
stages=(scripts:2 lint:10 build:25 tests:15 differential:15 desktop:5 stress:8 package:3 asan:25 tsan:15 fuzz:15)

stage_scripts() {
    find . -path ./build -prune -o \( -name '*.sh' -o -path ./.ci/run \) -print0 | xargs -0 shellcheck
    tests/checks/includes.sh
    bash -n packaging/completions/lumora-cli.bash
    zsh -n packaging/completions/_lumora-cli
    fish --no-execute packaging/completions/lumora-cli.fish
}

# clang-format on every source, clang-tidy on those that changed last: on all it takes too long for a stage.
stage_lint() {
    tests/checks/lint.sh
}

stage_build() {
    cmake --preset ci
    cmake --build --preset ci
}

stage_tests() {
    ctest --preset ci -j "$(nproc)"
}

# Pictures of every kind through every output, compared with what other programs see in them.
stage_differential() {
    tests/differential/run.sh
}

# Starts the X servers, window managers, buses, trays and file managers that it needs.
stage_desktop() {
    tests/app/desktop/run.sh "$root/build/release/Lumora/Contents/MacOS"
}

# The short form of the proofs that nothing is lost.
stage_stress() {
    tests/stress/run.sh --short
}

stage_package() {
    tests/packaging/run.sh "$root/build/release"
}

# As many processes as processors instead of one for each test: most tests take less than a sanitizer takes to start.
run_in_shards() {
    local count shard shards=() status=0
    count=$(nproc)
    echo "${1#"build/"}"
    for ((shard = 0; shard < count; shard++)); do
        (
            cd -- "$(dirname -- "$1")"
            GTEST_TOTAL_SHARDS=$count GTEST_SHARD_INDEX=$shard exec "./${1##*/}" --gtest_brief=1
        ) &
        shards+=($!)
    done
    for shard in "${shards[@]}"; do
        wait "$shard" || status=$?
    done
    return "$status"
}

# build_and_test PRESET MODULE…: the tests of these modules, built with the preset's sanitizers.
build_and_test() {
    local preset=$1 module tests
    shift
    cmake --preset "$preset"
    cmake --build --preset "$preset" --target "${@/%//all}"
    for module in "$@"; do
        for tests in "build/$preset/$module"/*_tests; do
            run_in_shards "$tests"
        done
    done
}

stage_asan() {
    export LSAN_OPTIONS=suppressions=$root/tests/leak-suppressions.txt
    build_and_test asan-ubsan tests/records tests/platform tests/engine tests/history tests/model tests/cli
}

# Only these run threads of our own; the codec libraries are not instrumented.
stage_tsan() {
    build_and_test tsan tests/history tests/model
}

stage_fuzz() {
    cmake --preset fuzz
    cmake --build --preset fuzz
    fuzz/run.sh 5
}

# Runs one stage in a process group of its own, so that a time-out or an interrupt ends all that it started.
run_stage() {
    local name=${1%%:*} minutes=${1##*:} started=$SECONDS status=0
    echo "=== $name"
    timeout --kill-after=20s "${minutes}m" "$BASH" "$0" --only "$name" &
    running=$!
    wait "$running" || status=$?
    running=
    [ "$status" -eq 124 ] && echo "The stage was ended after $minutes minutes." >&2
    echo "=== $name: $([ "$status" -eq 0 ] && echo passed || echo failed) in $((SECONDS - started)) s"
    return "$status"
}

if [ "${1:-}" = --only ]; then
    "stage_$2"
    exit
fi

if [ "${1:-}" = --help ]; then
    sed -n '4,$ { /^#/!q; s/^# //p }' "$0"
    exit
fi

running=
trap '[ -z "$running" ] || kill "$running"; exit 130' INT TERM

chosen=()
for stage in "${stages[@]}"; do
    [ $# -eq 0 ] || [[ " $* " == *" ${stage%%:*} "* ]] && chosen+=("$stage")
done
for name in "$@"; do
    [[ " ${stages[*]} " == *" $name:"* ]] || { echo "test.sh: there is no stage '$name'" >&2; exit 2; }
done

packaging/install-dependencies.sh build test
for stage in "${chosen[@]}"; do
    run_stage "$stage"
done
echo "=== all ${#chosen[@]} stages passed in $SECONDS s"
