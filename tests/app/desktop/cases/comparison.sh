# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# window managers: openbox xfwm4
# A double click on a result compares it with its original; the line follows the pointer; Escape closes the window and
# ends its work. Space opens it as well, also when the original was thrown away.
comparison_window() { xdotool search --onlyvisible --name 'Comparison$' | head -1; }
comparison_is_shown() { is_shown "$(comparison_window)"; }
comparison_is_gone() { ! comparison_is_shown; }
comparison_is_active() { [ "$(xdotool getactivewindow)" = "$(comparison_window)" ]; }
workers() { pgrep --parent "$lumora" --full lumora-worker | wc -l; }

colour_at() { # colour_at X Y: on the screen
    import -silent -window root -crop "1x1+$1+$2" png:- | convert png:- -depth 8 rgb:- | od -An -tx1 | tr -d ' \n'
}
is_red() { [ "$(colour_at "$1" "$2")" = c80000 ]; }
is_not_red() { ! is_red "$1" "$2"; }

mkdir -p "$HOME/pictures"
convert -size 1600x1000 xc:'#C80000' "png:$HOME/pictures/red.png"
start_lumora
wait_for_main_window
lumora_takes_files "$HOME/pictures/red.png"
wait_for "room for one result" window_size_is 820x516
# Another picture in the output's place tells the two sides apart.
convert -size 1600x1000 xc:'#0000C8' "png:$HOME/pictures/red.webp"
row_x=$(($(window_left) + 200))
row_y=$(($(window_top) + 400))
idle=$(workers)

xdotool mousemove "$row_x" "$row_y" click --repeat 2 --delay 60 1
wait_for "the comparison" comparison_is_shown
wait_for "the keyboard" comparison_is_active
read -r left top < <(window_place "$(comparison_window)")
xprop -id "$(comparison_window)" WM_WINDOW_ROLE | grep -q LumoraComparisonWindow || fail "the window has no role"
wait_for "the original" is_red $((left + 300)) $((top + 300))
wait_for "the output" is_not_red $((left + 700)) $((top + 300))

drag $((left + 500)) $((top + 450)) $((left + 800)) $((top + 450))
wait_for "the line at its new place" is_red $((left + 700)) $((top + 300))
xdotool keydown space
wait_for "the other picture in place" is_not_red $((left + 300)) $((top + 300))
xdotool keyup space
wait_for "the picture back in place" is_red $((left + 300)) $((top + 300))
[ "$(workers)" -gt "$idle" ] || fail "no worker reads the pictures"

xdotool key Escape
wait_for "the comparison to close" comparison_is_gone
wait_for "the drop window, which stays" main_window_is_shown
has_ended "$lumora" && fail "closing the comparison ended the program"
workers_are_idle() { [ "$(workers)" -le "$idle" ]; }
wait_for "the end of the comparison's workers" workers_are_idle

gio trash "$HOME/pictures/red.png"
xdotool windowactivate --sync "$(main_window)"
click "$row_x" "$row_y"
xdotool key space
wait_for "the comparison" comparison_is_shown
read -r left top < <(window_place "$(comparison_window)")
wait_for "the original out of the Trash" is_red $((left + 300)) $((top + 300))
xdotool key Escape
wait_for "the comparison to close" comparison_is_gone
