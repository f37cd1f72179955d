# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# From a file manager onto the window: one file, a folder, several files at once.
folder=$HOME/pictures/drag
picture "$folder/a é#%.png" "$folder/b.png" "$folder/sub/c.png"
start_lumora
wait_for_main_window
open_file_manager "$folder"

drag_entry_to_window 1
wait_for_output "$folder/a é#%.png"
wait_for "one result" window_size_is 820x516
[ -e "$folder/b.webp" ] && fail "a file that was not dragged was optimized"

drag_entry_to_window 0
wait_for_output "$folder/sub/c.png"

rm "$folder"/*.webp "$folder"/sub/*.webp
wait_for "the list" is_still "$files"
select_all
drag_entry_to_window 1
wait_for_output "$folder/a é#%.png" "$folder/b.png"
wait_for "all results" window_size_is 820x748

# The results take files too.
rm "$folder"/*.webp
wait_for "the list" is_still "$files"
drag_entry_to 2 "$(window_middle_x)" $(($(window_top) + 560))
wait_for_output "$folder/b.png"
