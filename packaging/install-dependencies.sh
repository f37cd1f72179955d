#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# install-dependencies.sh SECTION…: installs what is missing of these sections of debian-packages.txt, through apt.
# Says what it installs; says and asks for nothing when nothing is missing.
set -eu

list=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/debian-packages.txt

packages_of() {
    awk -v wanted="[$1]" '/^#/ || NF == 0 { next } /^\[/ { inside = ($1 == wanted); next } inside { print $1 }' "$list"
}

is_installed() {
    [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "Lumora needs root or sudo to install packages. As root, run:" >&2
        echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
        return 1
    fi
}

apt_get() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=300 -qq "$@"
}

if ! command -v dpkg-query >/dev/null; then
    echo "Lumora builds on Debian 12; on another system install what $list names." >&2
    exit 1
fi

missing=()
for section in "$@"; do
    for package in $(packages_of "$section"); do
        is_installed "$package" || missing+=("$package")
    done
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
apt_get update
apt_get install -y --no-install-recommends "${missing[@]}" >/dev/null
