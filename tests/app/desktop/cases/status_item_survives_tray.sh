# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# A tray that dies and returns gets the status item back, with its menu and its drops.
folder=$HOME/pictures/drag
picture "$folder/a.png"
start_tray
start_lumora
wait_for_main_window
wait_for_status_item
kill -KILL "$tray"
wait_for "the tray to be gone" has_ended "$tray"
start_tray
wait_for_status_item
open_file_manager "$folder"
drag_entry_to_status_item 0
wait_for_output "$folder/a.png"

click $(($(window_left) + 820 - 22)) $(($(window_top) + 21))
wait_for "the window to close" main_window_is_hidden
read -r _ x y < <(status_item)
click $((x + 15)) $((y + 11)) 3
xdotool key Down Return
wait_for_main_window
