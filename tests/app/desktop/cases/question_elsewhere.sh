# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# window managers: openbox xfwm4
# A question that comes up while another program is in use leaves it the keyboard: what is typed there answers nothing.
setting warnBeforeOverwrite true
picture "$HOME/pictures/a.png"
output=$HOME/pictures/a.webp
start_lumora
wait_for_main_window
start_other_program
echo precious >"$output"
lumora "$HOME/pictures/a.png"
wait_for "the question" question
wait_for "a still screen" is_still root
other_program_is_active || fail "the question took the keyboard from the program in use"
xdotool key Return Return Return
wait_for "a still screen" is_still root
question || fail "keys for another program answered the question"
[ "$(cat "$output")" = precious ] || fail "keys for another program replaced a file"
wants_attention() { xprop -id "$(main_window)" _NET_WM_STATE | grep -q DEMANDS_ATTENTION; }
wait_for "the wish for attention" wants_attention

# The other windows wait for the answer: a click on one's close button leads to the question.
click $(($(window_left) + 820 - 22)) $(($(window_top) + 21))
question_is_active() { [ "$(xdotool getactivewindow)" = "$(question)" ]; }
wait_for "the question in front" question_is_active
main_window_is_shown || fail "a window closed while a question stood"

# Minimised, the window comes back for the next launches, with the question.
xdotool windowminimize "$(main_window)"
wait_for "the minimised window" main_window_is_hidden
activate_other_program
for _ in 1 2 3; do lumora; done
wait_for_main_window
wait_for "the question" question
