#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck disable=SC2034 # its variables are read by the cases
# What the cases say to the desktop and ask of it. Every wait is for something that can be seen and ends after a time.

# What the screen showed is kept next to the build; its windows and the settings are told, for a machine that keeps nothing.
fail() {
    local picture
    xwininfo -root -tree | grep '"Lumora"' >&2 || true
    grep . "$XDG_CONFIG_HOME/Tidewell/Lumora.ini" >&2 || true
    picture=$(readlink -m "$LUMORA_PROGRAM_DIR/../../../desktop-failure.png")
    import -silent -window root "$picture"
    echo "FAILED: $*; the screen then: $picture" >&2
    exit 1
}

# wait_for WHAT COMMAND…: until the command succeeds, for at most 30 seconds.
wait_for() {
    local what=$1 end=$((SECONDS + 30))
    shift
    until "$@" >/dev/null 2>&1; do
        [ "$SECONDS" -lt "$end" ] || fail "waited in vain for $what"
        sleep 0.05
    done
}

expect() { # expect WHAT ACTUAL WANTED
    [ "$2" = "$3" ] || fail "$1 is '$2', not '$3'"
}

window_manager_runs() { xprop -root _NET_SUPPORTING_WM_CHECK | grep -q '#'; }

# --- the application

start_lumora() { # start_lumora ARGUMENT…: in the background; its process id is $lumora
    lumora "$@" &
    lumora=$!
}

main_window() { # the id of the drop window, shown or not
    local id
    for id in $(xdotool search --name '^Lumora$'); do
        xprop -id "$id" WM_WINDOW_ROLE | grep -q LumoraMainWindow && echo "$id" && return
    done
    return 1
}

# Without an id xwininfo would wait for a click.
is_shown() { [ -n "$1" ] && xwininfo -id "$1" | grep -q IsViewable; }
main_window_is_shown() { is_shown "$(main_window)"; }
main_window_is_hidden() { ! main_window_is_shown; }
wait_for_main_window() { wait_for "the drop window" main_window_is_shown; }

question() { # the id of the question about an existing output
    local id
    for id in $(xdotool search --onlyvisible --name '^Lumora$'); do
        xprop -id "$id" WM_WINDOW_ROLE | grep -q LumoraMessage && echo "$id" && return
    done
    return 1
}

window_fact() { xwininfo -id "$(main_window || echo 0)" | sed -n "s/^ *$1: *//p"; }
window_size() { echo "$(window_fact Width)x$(window_fact Height)"; }
window_left() { window_fact 'Absolute upper-left X'; }
window_top() { window_fact 'Absolute upper-left Y'; }
window_size_is() { [ "$(window_size)" = "$1" ]; }

has_ended() { ! kill -0 "$1" 2>/dev/null; }

window_place() { # "X Y" of a window on the screen
    xwininfo -id "$1" | awk '/Absolute upper-left/ { printf "%s%s", separator, $NF; separator = " " } END { print "" }'
}

status_item() { # "ID X Y" of the docked status item
    local id
    id=$(xwininfo -root -tree | awk '/"Lumora"/ && / 30x[0-9]+\+/ { print $1; exit }')
    is_shown "$id" && echo "$id $(window_place "$id")"
}

is_zoomed() { xprop -id "$(main_window)" _NET_WM_STATE | grep -q MAXIMIZED_VERT; }

# Hands files to the running program and returns when their results have arrived.
lumora_takes_files() {
    lumora "$@"
    wait_for_output "$@"
    wait_for "the results" is_still root
}

# A program of somebody else's, for the keyboard to be in.
start_other_program() {
    xmessage -name other -geometry +20+1200 "somebody else's window" &
    wait_for "the other program" xdotool search --onlyvisible --classname '^other$'
    other=$(xdotool search --onlyvisible --classname '^other$')
    activate_other_program
}
activate_other_program() {
    xdotool windowactivate "$other"
    wait_for "the other program in front" other_program_is_active
}
other_program_is_active() { [ "$(xdotool getactivewindow)" = "$other" ]; }

# setting KEY VALUE: before the application starts.
setting() {
    mkdir -p "$XDG_CONFIG_HOME/Tidewell"
    [ -s "$XDG_CONFIG_HOME/Tidewell/Lumora.ini" ] || echo '[General]' >"$XDG_CONFIG_HOME/Tidewell/Lumora.ini"
    echo "$1=$2" >>"$XDG_CONFIG_HOME/Tidewell/Lumora.ini"
}

# --- pictures

picture() { # picture PATH…: small, and each a different one
    local path
    for path in "$@"; do
        mkdir -p "$(dirname -- "$path")"
        convert -size 320x200 plasma:red-blue "png:$path"
    done
}

wait_for_output() { # wait_for_output PATH…: of the pictures at these paths
    local path
    for path in "$@"; do wait_for "the output of $path" test -s "${path%.*}.webp"; done
}

# --- pointer

click() {
    xdotool mousemove "$1" "$2" click "${3:-1}"
}

# drag X Y TO_X TO_Y: with the pauses of a hand, which file managers need to see a drag.
drag() {
    local step
    xdotool mousemove "$1" "$2"
    sleep 0.15
    xdotool mousedown 1
    sleep 0.15
    for step in 1 2 3 4 5 6 7 8 9 10 11 12; do
        xdotool mousemove $(($1 + ($3 - $1) * step / 12)) $(($2 + ($4 - $2) * step / 12))
        sleep 0.02
    done
    xdotool mousemove $(($3 + 1)) $(($4 + 1))
    sleep 0.2
    xdotool mouseup 1
    sleep 0.4
}

# --- the file manager, in the upper left of the screen

picture_of() { import -silent -window "$1" png:- | md5sum; }

# Unchanged for half a second: all there is to draw is drawn.
is_still() {
    local before
    before=$(picture_of "$1")
    sleep 0.5
    [ "$before" = "$(picture_of "$1")" ]
}

thunar_window() { xdotool search --onlyvisible --name "^$1 - Thunar\$"; }

# As a list: there the places do not depend on the lengths of the names.
set_up_file_manager() {
    local channels=$XDG_CONFIG_HOME/xfce4/xfconf/xfce-perchannel-xml
    mkdir -p "$channels"
    cat >"$channels/thunar.xml" <<-'END'
	<?xml version="1.0" encoding="UTF-8"?>
	<channel name="thunar" version="1.0">
	  <property name="default-view" type="string" value="ThunarDetailsView"/>
	</channel>
	END
}

open_file_manager() { # open_file_manager FOLDER
    set_up_file_manager
    thunar "$1" >/dev/null 2>&1 &
    local name
    name=$(basename -- "$1")
    wait_for "the file manager" thunar_window "$name"
    files=$(thunar_window "$name" | tail -1)
    xdotool windowsize --sync "$files" 640 480 windowmove --sync "$files" 10 30
    wait_for "the list" is_still "$files"
    read -r files_x files_y < <(window_place "$files")
}

# The place of an entry, counted from 0; folders come first, then files by name. Root sees a warning above them.
entry_x() { echo $((files_x + 187)); }
entry_y() { echo $((files_y + 28 * $1 + ($(id -u) == 0 ? 140 : 106))); }

select_all() {
    click "$(entry_x)" "$(entry_y 0)"
    xdotool key ctrl+a
    wait_for "the selection" is_still "$files"
}

drag_entry_to() { drag "$(entry_x)" "$(entry_y "$1")" "$2" "$3"; }

window_middle_x() { echo $(($(window_left) + 410)); }
window_middle_y() { echo $(($(window_top) + 200)); }
drag_entry_to_window() { drag_entry_to "$1" "$(window_middle_x)" "$(window_middle_y)"; }
drag_entry_to_status_item() {
    local _ x y
    read -r _ x y < <(status_item)
    drag_entry_to "$1" $((x + 15)) $((y + 11))
}

# --- the tray and the launchers

start_tray() {
    trayer --edge top --align right --widthtype request --height 24 >/dev/null 2>&1 &
    tray=$!
}

wait_for_status_item() { wait_for "the status item" status_item; }

install_launcher() {
    local id=example.tidewell.Lumora
    mkdir -p "$XDG_DATA_HOME/applications" "$XDG_DATA_HOME/dbus-1/services"
    cp "$LUMORA_SOURCE_DIR/packaging/desktop/$id.desktop" "$XDG_DATA_HOME/applications"
    sed "s,@CMAKE_INSTALL_FULL_BINDIR@,$LUMORA_PROGRAM_DIR," "$LUMORA_SOURCE_DIR/packaging/desktop/$id.service.in" \
        >"$XDG_DATA_HOME/dbus-1/services/$id.service"
    gio mime image/png "$id.desktop"
    # What the bus starts needs the display of this case.
    dbus-update-activation-environment DISPLAY
}
