# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# screen: 1366x768
# On a screen lower than the preferences the wheel reaches their end, over a card and over a picker; at their end the
# window's controls stand on the same ground as at the start.
start_lumora --preferences
preferences() { xdotool search --onlyvisible --name '^Preferences$'; }
wait_for "the preferences" preferences
wait_for "a still screen" is_still root
read -r x y < <(window_place "$(preferences)")
strip() { convert "$1" -crop "400x40+$((x + 100))+$y" rgba:- | md5sum; }
lower_end() { import -silent -window root -crop "500x200+$((x + 60))+500" rgba:- | md5sum; }
import -silent -window root "$HOME/start.png"
for place in "$((x + 40)) 200" "$((x + 250)) 300"; do
    before=$(lower_end)
    # shellcheck disable=SC2086 # two coordinates
    xdotool mousemove $place click 5
    scrolled() { [ "$(lower_end)" != "$before" ]; }
    wait_for "the scrolled preferences" scrolled
done
for _ in 1 2 3 4 5 6 7 8 9 10; do xdotool click 5; done
wait_for "a still screen" is_still root
import -silent -window root "$HOME/end.png"
expect "the strip of the window's controls" "$(strip "$HOME/end.png")" "$(strip "$HOME/start.png")"
