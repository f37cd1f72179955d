# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# The window opens small, grows downwards with the results and comes back with them after it was closed.
picture "$HOME"/pictures/{1,2,3,4,5,6,7,8,9}.png
setting toldOfClosing true
start_lumora
wait_for_main_window
expect "the size at the start" "$(window_size)" 820x360
top=$(window_top)
left=$(window_left)

lumora "$HOME/pictures/1.png"
wait_for "room for one result" window_size_is 820x516
expect "the upper edge" "$(window_top)" "$top"
lumora "$HOME"/pictures/[2-8].png
wait_for "room for eight results" window_size_is 820x922
lumora "$HOME/pictures/9.png"
wait_for_output "$HOME/pictures/9.png"
expect "the size with nine results" "$(window_size)" 820x922
expect "the upper edge" "$(window_top)" "$top"
expect "the left edge" "$(window_left)" "$left"

xdotool mousemove 5 5
wait_for "a still window" is_still "$(main_window)"
import -silent -window "$(main_window)" "$HOME/before.png"
click $((left + 820 - 22)) $((top + 21))
wait_for "the window to close" main_window_is_hidden
has_ended "$lumora" && fail "closing the window ended the program"
xdotool mousemove 5 5
lumora
wait_for_main_window
wait_for "a still window" is_still "$(main_window)"
import -silent -window "$(main_window)" "$HOME/after.png"
# A gradient painted in other pieces may round otherwise.
compare -metric AE -fuzz 1% "$HOME/before.png" "$HOME/after.png" null: || fail "the window came back with other content"
