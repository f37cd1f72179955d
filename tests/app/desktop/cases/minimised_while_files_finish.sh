# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# window managers: openbox xfwm4
# A minimised window stays so while results arrive, and the program in use keeps the keyboard; minimised or zoomed, the
# window has the height of its results when it returns.
pictures=("$HOME"/pictures/{1,2,3,4,5,6,7,8}.png)
picture "${pictures[@]}"
start_lumora
wait_for_main_window
start_other_program
xdotool windowminimize "$(main_window)"
wait_for "the minimised window" main_window_is_hidden
activate_other_program

lumora_takes_files "${pictures[@]}"
main_window_is_hidden || fail "results brought the minimised window back"
other_program_is_active || fail "results took the keyboard from the program in use"
lumora
wait_for_main_window
wait_for "the height of eight results" window_size_is 820x922

kill -TERM "$lumora"
wait_for "the program to end" has_ended "$lumora"
start_lumora
wait_for_main_window
click $(($(window_left) + 820 - 50)) $(($(window_top) + 21))
wait_for "the zoomed window" is_zoomed
lumora_takes_files "${pictures[@]}"
is_zoomed || fail "results changed the zoomed window"
click $(($(window_left) + $(window_fact Width) - 50)) $(($(window_top) + 21))
wait_for "the height of eight results" window_size_is 820x922
