# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# From a file manager onto the status item, while the window is closed: one file, a folder, several files at once.
folder=$HOME/pictures/drag
picture "$folder/a é#%.png" "$folder/b.png" "$folder/sub/c.png"
start_tray
start_lumora
wait_for_main_window
wait_for_status_item
click $(($(window_left) + 820 - 22)) $(($(window_top) + 21))
wait_for "the window to close" main_window_is_hidden
open_file_manager "$folder"

drag_entry_to_status_item 1
wait_for_output "$folder/a é#%.png"
[ -e "$folder/b.webp" ] && fail "a file that was not dragged was optimized"

drag_entry_to_status_item 0
wait_for_output "$folder/sub/c.png"

rm "$folder"/*.webp "$folder"/sub/*.webp
wait_for "the list" is_still "$files"
select_all
drag_entry_to_status_item 1
wait_for_output "$folder/a é#%.png" "$folder/b.png"
main_window_is_hidden || fail "a drop on the status item opened the window"
