# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# The end of its terminal ends the application in good order, except where it was started to outlive it.
picture "$HOME/pictures/1.png"
start_lumora
wait_for_main_window
kill -HUP "$lumora"
wait_for "the program to end" has_ended "$lumora"
wait "$lumora" || fail "the program ended with status $?"

nohup lumora >/dev/null 2>&1 &
first=$!
wait_for_main_window
kill -HUP "$first"
# A launch that finds the program running hands its file over and ends.
start_lumora "$HOME/pictures/1.png"
wait_for "the second launch to end" has_ended "$lumora"
wait_for_output "$HOME/pictures/1.png"
! has_ended "$first" || fail "the program ended with its terminal"
