# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# window managers: openbox xfwm4
# Ctrl+Z takes the last batch back once the question about it is answered so: outputs go to the Trash, originals come
# back from there. A second one finds nothing to do.
is_trashed() { [ -e "$XDG_DATA_HOME/Trash/files/$1" ]; }
no_question() { ! question; }
answer() { # answer KEY: not before the question takes keys
    sleep 0.7
    xdotool key "$1"
}

setting moveOriginalToTrash true
start_lumora
wait_for_main_window
mkdir -p "$HOME/pictures"
picture "$HOME/pictures/one.png" "$HOME/pictures/two.png"
cp "$HOME/pictures/one.png" "$HOME/one"
lumora_takes_files "$HOME/pictures/one.png" "$HOME/pictures/two.png"
wait_for "the originals in the Trash" is_trashed two.png

xdotool windowactivate --sync "$(main_window)" key ctrl+z
wait_for "the question" question
answer Escape
wait_for "the end of the question" no_question
[ -e "$HOME/pictures/one.png" ] && fail "a question that was not answered undid something"

xdotool windowactivate --sync "$(main_window)" key ctrl+z
wait_for "the question" question
answer Return
wait_for "the first original" cmp "$HOME/one" "$HOME/pictures/one.png"
wait_for "the second original" test -s "$HOME/pictures/two.png"
outputs_are_gone() { [ ! -e "$HOME/pictures/one.webp" ] && [ ! -e "$HOME/pictures/two.webp" ]; }
wait_for "the end of the outputs" outputs_are_gone
is_trashed one.webp || fail "an output is not in the Trash"

xdotool windowactivate --sync "$(main_window)" key ctrl+z
wait_for "the message that nothing is left" question
answer Return
wait_for "the end of the message" no_question
[ -s "$HOME/pictures/one.png" ] || fail "the original went once more"
