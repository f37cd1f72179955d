# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# The question about an existing output: Return replaces, Escape skips, ending the program leaves the file alone.
setting warnBeforeOverwrite true
picture "$HOME/pictures/a.png"
output=$HOME/pictures/a.webp
answer() {
    local asked
    wait_for "the question" question
    asked=$(question)
    question_is_gone() { [ "$(question)" != "$asked" ]; }
    # It ignores the keys of its first half second, and the next one does as well.
    pressed_away() {
        xdotool windowfocus --sync "$asked" key "$1"
        question_is_gone
    }
    wait_for "the question to close" pressed_away "$1"
}
content_is() { [ "$(cat "$output")" = "$1" ]; }

echo precious >"$output"
start_lumora
wait_for_main_window
lumora "$HOME/pictures/a.png"
answer Escape
wait_for "the skipped result" window_size_is 820x516
content_is precious || fail "a skipped output was replaced"

lumora "$HOME/pictures/a.png"
answer Return
wait_for "the second result" window_size_is 820x574
content_is precious && fail "the output was not replaced"

# Only the file in question waits; questions come one after another.
picture "$HOME"/pictures/{b,c}.png
echo precious >"$output"
lumora "$HOME"/pictures/{a,b}.png
wait_for_output "$HOME/pictures/b.png"
answer Escape
wait_for "the results" window_size_is 820x690
echo precious >"$HOME/pictures/b.webp"
lumora "$HOME"/pictures/{a,b,c}.png
answer Escape
answer Escape
wait_for_output "$HOME/pictures/c.png"
wait_for "all results" window_size_is 820x864
content_is precious || fail "a skipped output was replaced"
expect "the other skipped output" "$(cat "$HOME/pictures/b.webp")" precious

echo precious >"$output"
lumora "$HOME/pictures/a.png"
wait_for "the question" question
kill -TERM "$lumora"
wait_for "the program to end" has_ended "$lumora"
wait "$lumora" || fail "the program ended with status $?"
content_is precious || fail "the output was replaced without an answer"
