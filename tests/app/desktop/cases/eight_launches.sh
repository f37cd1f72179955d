# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# Eight launches at once make one program and lose no file.
pictures=("$HOME"/pictures/{1,2,3,4,5,6,7,8}.png)
picture "${pictures[@]}"
launches=()
for path in "${pictures[@]}"; do
    lumora "$path" &
    launches+=($!)
done
wait_for_output "${pictures[@]}"
wait_for "all results in one window" window_size_is 820x922
one_is_left() {
    local launch left=0
    for launch in "${launches[@]}"; do has_ended "$launch" || left=$((left + 1)); done
    [ "$left" -eq 1 ]
}
wait_for "seven launches to end" one_is_left
