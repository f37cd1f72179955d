# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# A decoder that crashes costs its file alone, and one that never ends does not hold up the end of the program.
export LUMORA_WORKER_PATH=$LUMORA_PROGRAM_DIR/../../../tests/engine/strange-worker
[ -x "$LUMORA_WORKER_PATH" ] || fail "there is no $LUMORA_WORKER_PATH"
strange_picture() { # strange_picture PATH ORDER: with an order to the worker behind it
    picture "$1"
    printf 'strange order %b' "$2" >>"$1"
}
workers() { pgrep --parent "$lumora" --full strange-worker; }
without_workers() { ! workers; }

picture "$HOME"/pictures/{a,b}.png
strange_picture "$HOME/pictures/crash.png" '\001'
start_lumora
wait_for_main_window
lumora "$HOME/pictures"
wait_for_output "$HOME"/pictures/{a,b}.png
wait_for "the end of the batch" without_workers
wait_for "the results" is_still root
has_ended "$lumora" && fail "a crash of a worker ended the program"
[ ! -e "$HOME/pictures/crash.webp" ] || fail "a crashed worker had an output"
shows_results() { [ "$(window_fact Height)" -gt 500 ]; }
wait_for "the results in the window" shows_results

! grep -E 'lib(vips|heif|tiff|exiv2|lcms2)\.' "/proc/$lumora/maps" || fail "the program has codecs of its own"

strange_picture "$HOME/pictures/endless.png" '\003'
lumora "$HOME/pictures/endless.png"
wait_for "the worker" workers
started=$(date +%s%N)
kill -TERM "$lumora"
wait_for "the program to end" has_ended "$lumora"
elapsed=$((($(date +%s%N) - started) / 1000000))
echo "ended after $elapsed ms"
[ "$elapsed" -lt 5000 ] || fail "the end took $elapsed ms"
no_worker() { ! pgrep --full "$LUMORA_WORKER_PATH"; }
wait_for "the end of the worker" no_worker
