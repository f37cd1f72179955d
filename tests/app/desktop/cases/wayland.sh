# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154 # session.sh assigns them
# Under a Wayland compositor, which fills the screen here: the window opens, moves, takes a drop, grows, closes and
# comes back. Only the compositor knows where things are.
picture "$HOME/pictures/drag/a.png"

panel_stands() { weston-debug scene-graph | grep -q 'panel for output'; }

# place_of FACT TITLE: "X Y WIDTH HEIGHT" of a window.
place_of() {
    weston-debug scene-graph | awk -v fact="$1: (" -v title="'$2' of" '
        /View/ { mine = index($0, title) }
        mine && index($0, fact) {
            gsub(/[^0-9]+/, " "); print $1, $2, $3 - $1, $4 - $2; found = 1; exit
        }
        END { exit !found }'
}
lumora_is_at() { [ "$(place_of position Lumora)" = "$1" ]; }
file_manager_is_at() { [[ $(place_of opaque "drag - Thunar") = "$1 "* ]]; }
lumora_stands() { place_of position Lumora; }
lumora_is_gone() { ! lumora_stands; }

# move_by_hand TO_X TO_Y X Y: takes a window at X Y by what is 20 below its upper edge.
move_by_hand() { drag $(($3 + 300)) $(($4 + 20)) $(($1 + 299)) $(($2 + 19)); }

export WAYLAND_DISPLAY=lumora
weston --backend=x11-backend.so --use-pixman --fullscreen --width=1280 --height=1500 \
    --socket="$WAYLAND_DISPLAY" --debug >"$HOME/weston.log" 2>&1 &
wait_for "the compositor" panel_stands
# It adds up the pointer's ways from a start of its own: they agree once the pointer has been pushed into a corner.
for corner in "1279 1499" "0 0"; do
    # shellcheck disable=SC2086 # two coordinates
    xdotool mousemove --sync $corner
    sleep 0.15
done

setting toldOfClosing true
start_lumora
wait_for "the drop window" lumora_stands
read -r x y width height < <(place_of position Lumora)
expect "the size at the start" "${width}x$height" 820x360
move_by_hand 200 700 "$x" "$y"
wait_for "the moved window" lumora_is_at "200 700 820 360"

set_up_file_manager
thunar "$HOME/pictures/drag" >/dev/null 2>&1 &
wait_for "the file manager" place_of opaque "drag - Thunar"
wait_for "the list" is_still root
read -r x y _ < <(place_of opaque "drag - Thunar")
move_by_hand 100 100 "$x" "$y"
wait_for "the moved file manager" file_manager_is_at "100 100"
drag 285 $(($(id -u) == 0 ? 280 : 246)) 610 900
wait_for_output "$HOME/pictures/drag/a.png"
wait_for "the grown window with its upper edge still" lumora_is_at "200 700 820 516"

click $((200 + 820 - 22)) $((700 + 21))
wait_for "the window to close" lumora_is_gone
has_ended "$lumora" && fail "closing the window ended the program"
lumora
wait_for "the window to come back" lumora_stands
