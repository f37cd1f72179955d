# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# window managers: openbox xfwm4
# Ctrl+H opens the history, which finds a file of an earlier run by its name, compares it and takes it back; Escape
# leaves the search and then closes the window. A whole batch is taken back after a question.
history_window() { xdotool search --onlyvisible --name '^History$' | head -1; }
history_is_shown() { is_shown "$(history_window)"; }
history_is_gone() { ! history_is_shown; }
history_is_active() { [ "$(xdotool getactivewindow)" = "$(history_window)" ]; }
comparison_window() { xdotool search --onlyvisible --name 'Comparison$' | head -1; }
comparison_is_shown() { is_shown "$(comparison_window)"; }
comparison_is_active() { [ "$(xdotool getactivewindow)" = "$(comparison_window)" ]; }
is_gone() { [ ! -e "$1" ]; }
open_history() {
    xdotool windowactivate --sync "$(main_window)" key ctrl+h
    wait_for "the history" history_is_shown
    wait_for "the keyboard" history_is_active
    wait_for "the rows" is_still "$(history_window)"
}

setting moveOriginalToTrash true
picture "$HOME/pictures/one.png" "$HOME/pictures/two.png" "$HOME/pictures/three.png"
cp "$HOME/pictures/two.png" "$HOME/two"
start_lumora
wait_for_main_window
lumora_takes_files "$HOME/pictures/one.png" "$HOME/pictures/two.png" "$HOME/pictures/three.png"
xdotool windowactivate --sync "$(main_window)" key ctrl+q
wait_for "the end of the first run" has_ended "$lumora"

start_lumora
wait_for_main_window
open_history
xprop -id "$(history_window)" WM_WINDOW_ROLE | grep -q LumoraHistoryWindow || fail "the window has no role"
xdotool key ctrl+f
xdotool type TWO.p
wait_for "what was found" is_still "$(history_window)"
xdotool key Down space
wait_for "the comparison" comparison_is_shown
wait_for "the keyboard in the comparison" comparison_is_active
xdotool key Escape
wait_for "the history in front again" history_is_active
xdotool key ctrl+u
wait_for "the original" cmp "$HOME/two" "$HOME/pictures/two.png"
wait_for "the end of the output" is_gone "$HOME/pictures/two.webp"
[ -s "$HOME/pictures/one.webp" ] || fail "another file was taken back"
wait_for "the new state" is_still "$(history_window)"

xdotool key Escape
wait_for "all batches" is_still "$(history_window)"
history_is_shown || fail "leaving the search closed the history"
xdotool key Escape
wait_for "the history to close" history_is_gone
wait_for "the drop window, which stays" main_window_is_shown

open_history
xdotool key Down ctrl+u
wait_for "the question" question
sleep 0.7 # not before it takes keys
xdotool key Return
wait_for "the first original" test -s "$HOME/pictures/one.png"
wait_for "the last original" test -s "$HOME/pictures/three.png"
wait_for "the end of the outputs" is_gone "$HOME/pictures/three.webp"
cmp "$HOME/two" "$HOME/pictures/two.png" || fail "a file was taken back twice"
