# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# Without a session bus the application runs all the same.
picture "$HOME/pictures/1.png"
DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent lumora "$HOME/pictures/1.png" &
wait_for_main_window
wait_for_output "$HOME/pictures/1.png"
wait_for "the result" window_size_is 820x516
