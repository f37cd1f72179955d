# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# The desktop's launchers, with the application cold and warm.
picture "$HOME"/pictures/{1,2,3,4}.png
install_launcher
gtk-launch example.tidewell.Lumora "$HOME/pictures/1.png"
wait_for_output "$HOME/pictures/1.png"
wait_for_main_window
gtk-launch example.tidewell.Lumora "$HOME/pictures/4.png"
wait_for_output "$HOME/pictures/4.png"
gio open "$HOME/pictures/2.png"
wait_for_output "$HOME/pictures/2.png"
wait_for "three results in one window" window_size_is 820x632

gdbus call --session --dest example.tidewell.Lumora --object-path /example/tidewell/Lumora \
    --method org.freedesktop.Application.ActivateAction preferences '[]' '{}' >/dev/null
wait_for "the preferences" xdotool search --onlyvisible --name '^Preferences$'

xdotool key ctrl+q
name_is_free() { ! gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
    --method org.freedesktop.DBus.GetNameOwner example.tidewell.Lumora; }
wait_for "the program to end" name_is_free
gio open "$HOME/pictures/3.png"
wait_for_output "$HOME/pictures/3.png"
wait_for "one result in a new window" window_size_is 820x516
