# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# window managers: openbox xfwm4
# Without a tray the first closing of the window tells that the program goes on; by the preference it ends it.
start_lumora
wait_for_main_window
close_window() { click $(($(window_left) + 820 - 22)) $(($(window_top) + 21)); }
close_window
wait_for "the message" question
main_window_is_shown || fail "the window closed before the user was told"
# It ignores the keys of its first half second.
kept_running() {
    xdotool windowfocus --sync "$(question)" key Return
    main_window_is_hidden
}
wait_for "the answer" kept_running
wait_for "the window to close" main_window_is_hidden
has_ended "$lumora" && fail "keeping it running ended the program"

lumora
wait_for_main_window
close_window
wait_for "the window to close" main_window_is_hidden
question && fail "the user was told twice"

# The program replaces the file once it has rested, and with it what would be written here meanwhile.
wait_for "the note that the user was told" grep '^toldOfClosing=true' "$XDG_CONFIG_HOME/Tidewell/Lumora.ini"
setting quitWhenClosed true
lumora
wait_for_main_window
close_window
wait_for "the program to end" has_ended "$lumora"
wait "$lumora" || fail "the program ended with status $?"
