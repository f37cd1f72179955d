#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# What a user sees who has nothing but Debian 12. As root, in new file trees below $TMPDIR that are removed again:
#   verify-on-bare-debian.sh package DEB      installs the package, uses both programs, removes it
#   verify-on-bare-debian.sh clone [STAGE…]   clones the last commit, runs ./run.sh and ./test.sh STAGE…
# The trees are filled from $DEBIAN_MIRROR (default http://deb.debian.org/debian).
set -eu

source=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/..
mirror=${DEBIAN_MIRROR:-http://deb.debian.org/debian}

say() {
    echo "--- $* ($SECONDS s)"
}

make_root() {
    "$source/packaging/install-dependencies.sh" verify
    root=$(mktemp -d)
    chmod 755 "$root"
    trap 'rm -rf --one-file-system -- "$root"' EXIT
    say "a bare Debian 12"
    debootstrap --variant=minbase bookworm "$root" "$mirror" >"$root.log" || { tail "$root.log" >&2; exit 1; }
    rm "$root.log"
    cp /etc/resolv.conf "$root/etc/"
    inside useradd --create-home user
}

# shellcheck disable=SC2016 # expanded in there
# In namespaces of its own: what runs and is mounted there ends with the command.
inside() {
    unshare --mount --pid --fork --kill-child bash -eu -c '
        root=$1
        shift
        mount -t proc proc "$root/proc"
        mount --rbind /dev "$root/dev"
        exec chroot "$root" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 \
            DEBIAN_FRONTEND=noninteractive "$@"' bash "$root" "$@"
}

as_user() {
    inside runuser --login user --command "set -eu; $1"
}

install_inside() {
    inside apt-get -o Dpkg::Use-Pty=0 -qq install -y --no-install-recommends "$@" >/dev/null
}

# shellcheck disable=SC2016 # expanded in there
use_window() {
    as_user '
        Xvfb :9 -screen 0 1280x1024x24 >/dev/null 2>&1 &
        server=$!
        until [ -e /tmp/.X11-unix/X9 ]; do sleep 0.1; done
        DISPLAY=:9 lumora window.png &
        window=$!
        DISPLAY=:9 timeout 60 xdotool search --sync --onlyvisible --name "^Lumora$" >/dev/null
        timeout 60 bash -c "until [ -s window.webp ]; do sleep 0.1; done"
        kill "$window"
        wait "$window"
        kill "$server"'
}

expect_no_trace() {
    local path
    while read -r path; do
        [ -d "$root$path" ] || [ ! -e "$root$path" ] || { echo "$path is left" >&2; return 1; }
    done
    ! find "$root"/{etc,opt,usr,var/lib} -iname '*lumora*' | grep . &&
        ! grep -rlI 'tidewell\.Lumora' "$root"/{etc,opt,usr,var/lib}
}

verify_package() {
    make_root
    cp "$1" "$root/tmp/lumora.deb"
    inside apt-get -qq update
    say "install the package"
    install_inside /tmp/lumora.deb
    inside dpkg --listfiles lumora >"$root/tmp/files"
    cp "$source/docs/results.png" "$root/home/user/cli.png"
    cp "$source/docs/results.png" "$root/home/user/window.png"
    say "the command line"
    as_user 'lumora-cli cli.png; test -s cli.webp'
    say "the window"
    install_inside xvfb xdotool
    use_window
    say "remove the package"
    inside apt-get -qq purge -y lumora >/dev/null
    expect_no_trace <"$root/tmp/files"
}

verify_clone() {
    make_root
    inside apt-get -qq update
    say "clone"
    install_inside git ca-certificates
    git clone --quiet --no-local "$source" "$root/root/lumora"
    say "./run.sh"
    inside /root/lumora/run.sh
    say "./test.sh $*"
    inside /root/lumora/test.sh "$@"
}

case "${1:-}" in
    package | clone) "verify_$1" "${@:2}" ;;
    *) sed -n '4,$ { /^#/!q; s/^# //p }' "$0" >&2; exit 2 ;;
esac
say "passed"
