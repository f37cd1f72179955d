#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# display.sh CASE WINDOW_MANAGER: gives a case its X server and window manager, and ends what is left of it.
set -eu

# shellcheck source=tests/app/desktop/session.sh
. "$LUMORA_SESSION"

: >"$XDG_RUNTIME_DIR/display"
exec 3<>"$XDG_RUNTIME_DIR/display"
# A case may ask for another screen than this tall one.
screen=$(sed -n 's/^# screen: //p' "$1")
Xvfb -displayfd 3 -screen 0 "${screen:-1280x1500}x24" -noreset -nolisten tcp >/dev/null 2>&1 &
x_server=$!
# Every client of the display ends with it.
trap 'kill "$x_server"; wait "$x_server"' EXIT
wait_for "the X server" test -s "$XDG_RUNTIME_DIR/display"
DISPLAY=:$(tr -d '\n' <"$XDG_RUNTIME_DIR/display")
export DISPLAY
"$2" >/dev/null 2>&1 &
wait_for "the window manager" window_manager_runs

bash -eu -c '. "$LUMORA_SESSION"; . "$1"' case "$1"
