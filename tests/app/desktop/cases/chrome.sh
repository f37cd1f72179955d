# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# The windows' own frame: moving, sizing down to the minimum, minimising, zooming, the menu and its keys.
start_lumora
wait_for_main_window
place_is() { [ "$(window_left) $(window_top) $(window_size)" = "$1" ]; }
window_is_active() { [ "$(xdotool getactivewindow)" = "$1" ]; }
titled() { xdotool search --onlyvisible --name "^$1\$"; }
not_titled() { ! titled "$1"; }
left=$(window_left) top=$(window_top)
expect "the place at the start" "$left $top" "230 570"

drag $((left + 400)) $((top + 21)) $((left + 339)) $((top - 80))
# A drag begins only after some pixels, so the window follows at that distance.
is_moved() { [ "$(window_left)" -lt 190 ] && [ "$(window_top)" -lt 490 ] && window_size_is 820x360; }
wait_for "the moved window" is_moved
xdotool windowmove --sync "$(main_window)" 170 470
drag $((170 + 818)) $((470 + 358)) $((170 + 917)) $((470 + 407))
wait_for "the larger window" place_is "170 470 920x410"
drag $((170 + 918)) $((470 + 408)) 200 490
wait_for "the smallest window" place_is "170 470 720x320"

click $((170 + 720 - 50)) $((470 + 21))
wait_for "the zoomed window" window_size_is 1280x1500
click $((1280 - 50)) 21
wait_for "the window as before" place_is "170 470 720x320"
click $((170 + 720 - 78)) $((470 + 21))
wait_for "the minimised window" main_window_is_hidden
lumora
wait_for_main_window
wait_for "the window as before" place_is "170 470 720x320"

click $((170 + 22)) $((470 + 21))
xdotool key Down Return
wait_for "the about panel" titled 'About Lumora'
xdotool windowfocus --sync "$(titled 'About Lumora')" key Escape
wait_for "the about panel to close" not_titled 'About Lumora'

xdotool windowfocus --sync "$(main_window)" key ctrl+comma
wait_for "the preferences" titled Preferences
preferences=$(titled Preferences)
expect "the preferences' role" "$(xprop -id "$preferences" WM_WINDOW_ROLE | cut -d'"' -f2)" LumoraPreferencesWindow
xdotool windowfocus --sync "$(main_window)" key ctrl+comma
wait_for "the preferences in front" window_is_active "$preferences"
expect "the preferences" "$(titled Preferences)" "$preferences"
xdotool windowfocus --sync "$preferences" key ctrl+q
wait_for "the program to end" has_ended "$lumora"
wait "$lumora" || fail "the program ended with status $?"
