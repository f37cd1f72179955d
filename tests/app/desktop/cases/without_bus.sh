# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# window managers: openbox xfwm4
# Without a session bus the application runs all the same. No launch could bring its window back, so closing ends it.
picture "$HOME/pictures/1.png"
export DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent
start_lumora "$HOME/pictures/1.png"
wait_for_main_window
wait_for_output "$HOME/pictures/1.png"
wait_for "the result" window_size_is 820x516
click $(($(window_left) + 820 - 22)) $(($(window_top) + 21))
wait_for "the program to end" has_ended "$lumora"
wait "$lumora" || fail "the program ended with status $?"
