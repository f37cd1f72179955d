# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# A program that ends with each batch loses none of the files that are launched in just that moment.
setting exitWhenComplete true
pictures=()
for number in {1..8}; do pictures+=("$HOME/pictures/$number.png"); done
picture "${pictures[@]}"
for path in "${pictures[@]}"; do
    lumora "$path" &
    # The next launch comes when this one's output stands and its program is about to end.
    wait_for_output "$path"
done
