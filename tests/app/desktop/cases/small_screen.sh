# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# screen: 1024x600
# On a screen lower than the windows want to be, they fill its height and stay on it.
pictures=("$HOME"/pictures/{1,2,3,4,5,6,7,8}.png)
picture "${pictures[@]}"
start_lumora
wait_for_main_window
place() { echo "$(window_left) $(window_top) $(window_size)"; }
place_is() { [ "$(place)" = "$1" ]; }
expect "the place at the start" "$(place)" "102 120 820x360"
lumora "${pictures[@]}"
wait_for "the window as high as the screen" place_is "102 0 820x600"
lumora --preferences
wait_for "the preferences" xdotool search --onlyvisible --name '^Preferences$'
preferences=$(xdotool search --onlyvisible --name '^Preferences$')
expect "the preferences' place" "$(window_place "$preferences")" "202 0"
