# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# A display that cannot be reached is told in one line.
status=0
DISPLAY=:9876 lumora 2>"$HOME/told" || status=$?
expect "the exit status" "$status" 1
expect "what is told" "$(cat "$HOME/told")" "lumora: the display cannot be reached; use lumora-cli"
