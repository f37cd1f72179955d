#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# run.sh PROGRAM_DIRECTORY [CASE…]: the application on real desktops. Each case gets an X server, a window manager, a
# session bus and a home of its own; a case that names several window managers runs once under each. Needs what the section [test] of debian-packages.txt names; skips nothing.
set -eu

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
export LUMORA_PROGRAM_DIR=$1 LUMORA_SOURCE_DIR=$here/../../..
shift
seconds_per_case=90

needed=(Xvfb openbox xfwm4 dbus-run-session trayer thunar xdotool xprop xwininfo import compare gtk-launch gio weston weston-debug)
for program in "${needed[@]}"; do
    command -v "$program" >/dev/null || { echo "run.sh: $program is missing" >&2; exit 1; }
done

# Everything that a program of the case could read of this user's or write for him lies in its home, also what the
# bus starts, which inherits this environment.
run_case() {
    local home=$1 case=$2 window_manager=$3
    mkdir -p "$home"/{config,data,cache,run,pictures}
    chmod 700 "$home/run"
    env -i PATH="$LUMORA_PROGRAM_DIR:$PATH" LANG=C.UTF-8 HOME="$home" XDG_CONFIG_HOME="$home/config" \
        XDG_DATA_HOME="$home/data" XDG_CACHE_HOME="$home/cache" XDG_RUNTIME_DIR="$home/run" NO_AT_BRIDGE=1 \
        LUMORA_PROGRAM_DIR="$LUMORA_PROGRAM_DIR" LUMORA_SOURCE_DIR="$LUMORA_SOURCE_DIR" LUMORA_SESSION="$here/session.sh" \
        timeout --kill-after=5 "$seconds_per_case" dbus-run-session -- bash "$here/display.sh" "$case" "$window_manager"
}

# Not every program of a case ends with its display or its bus, and one that stays could still write.
processes_of() { grep --files-with-matches --null-data --line-regexp --fixed-strings "HOME=$1" /proc/[0-9]*/environ \
    2>/dev/null | cut -d/ -f3; }
end_case() {
    local process
    while process=$(processes_of "$1" | head -1) && [ -n "$process" ]; do
        kill -KILL "$process" 2>/dev/null || true
    done
    rm -rf -- "$1"
}

cases=("$@")
[ ${#cases[@]} -gt 0 ] || mapfile -t cases < <(cd "$here/cases" && printf '%s\n' *.sh | sed 's/\.sh$//')

home=
trap '[ -z "$home" ] || end_case "$home"' EXIT
trap 'exit 130' INT TERM

run_under() { # run_under WINDOW_MANAGER NAME
    local started=$SECONDS status=0
    home=$(mktemp -d)
    run_case "$home" "$here/cases/$2.sh" "$1" >"$home/log" 2>&1 &
    wait $! || status=$?
    if [ "$status" -eq 0 ]; then
        echo "ok      $2, $1 ($((SECONDS - started)) s)"
    else
        echo "FAILED  $2, $1 ($((SECONDS - started)) s, status $status)"
        sed 's/^/        /' "$home/log"
        failed=1
    fi
    end_case "$home"
}

failed=0
for name in "${cases[@]}"; do
    managers=$(sed -n 's/^# window managers: //p' "$here/cases/$name.sh")
    for manager in ${managers:-openbox}; do run_under "$manager" "$name"; done
done
exit "$failed"
