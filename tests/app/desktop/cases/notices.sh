# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# What the desktop is told of a launched batch: its progress, and its end when nobody looks at the window.
picture "$HOME"/pictures/{1,2,3}.png
dbus-monitor --session "interface='org.freedesktop.Notifications'" "interface='com.canonical.Unity.LauncherEntry'" \
    >"$HOME/told" &
is_told() { grep -q -- "$1" "$HOME/told"; }
wait_for "the monitor" is_told NameAcquired

setting toldOfClosing true
start_lumora "$HOME/pictures/1.png"
wait_for_main_window
wait_for "the result" window_size_is 820x516
is_told progress-visible || fail "the launcher was told of no progress"
is_told member=Notify && fail "there was a notice though the window was in front"

click $(($(window_left) + 820 - 22)) $(($(window_top) + 21))
wait_for "the window to close" main_window_is_hidden
lumora "$HOME"/pictures/{2,3}.png
wait_for "the notice" is_told 'string "Optimized 2 images"'
is_told 'string "Show"' || fail "the notice has no action to show the window"

# The setting is read anew for each batch.
setting exitWhenComplete true
lumora "$HOME/pictures/1.png"
wait_for "the program to end" has_ended "$lumora"
is_told 'string "Optimized 1 image"' || fail "a program that ended with its batch gave no notice"
