# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# A launch whose hand-over is never acknowledged becomes the running program, with its file.
picture "$HOME/pictures/1.png"
start_lumora
wait_for_main_window
first=$lumora
bus_clients() { gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
    --method org.freedesktop.DBus.ListNames | grep -o "':1\.[0-9]*'" | sort -u | wc -l; }
before=$(bus_clients)
kill -STOP "$first"
start_lumora "$HOME/pictures/1.png"
second=$lumora
second_is_on_the_bus() { [ "$(bus_clients)" -gt "$before" ]; }
wait_for "the second launch on the bus" second_is_on_the_bus
kill -KILL "$first"
wait_for_output "$HOME/pictures/1.png"
! has_ended "$second" || fail "the second launch ended though nobody took its file"
