# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# With the setting on, a launched batch ends the program, a dropped one does not.
setting exitWhenComplete true
folder=$HOME/pictures/drag
picture "$HOME/pictures/1.png" "$folder/a.png"
start_lumora "$HOME/pictures/1.png"
wait_for "the program to end" has_ended "$lumora"
wait "$lumora" || fail "the program ended with status $?"
[ -s "$HOME/pictures/1.webp" ] || fail "the program ended before its file was done"

start_lumora
wait_for_main_window
open_file_manager "$folder"
drag_entry_to_window 0
wait_for_output "$folder/a.png"
wait_for "the result" window_size_is 820x516
has_ended "$lumora" && fail "a dropped batch ended the program"
lumora "$HOME/pictures/1.png"
wait_for "a launched batch to end the program" has_ended "$lumora"
