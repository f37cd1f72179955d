#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# run.sh BUILD_DIRECTORY: makes the Debian package of a finished build with the prefix /usr and looks into it.
set -eu

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
build=$1
work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT
id=example.tidewell.Lumora

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

cpack --config "$build/CPackConfig.cmake" -B "$work" >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
package=$(find "$work" -maxdepth 1 -name '*.deb')
root=$work/root
dpkg-deb --extract "$package" "$root"

# --- what it installs, no more and no less
(cd "$root" && find . \( -type f -o -type l \) | sed 's/^\.//' | LC_ALL=C sort) |
    diff "$here/installed-files.txt" - || fail "the package holds other files than installed-files.txt"

# --- programs: links into the application directory, which find their parts from there
for program in lumora lumora-cli; do
    target=$(readlink -f "$root/usr/bin/$program")
    [ "$target" = "$root/usr/lib/lumora/Contents/MacOS/$program" ] || fail "$program links to $target"
done
[ "$(readlink -m "$root/usr/lib/lumora/Contents/MacOS/cwebp")" = "$root/usr/bin/cwebp" ] || fail "the encoder's link"
version=$(dpkg-deb --field "$package" Version)
"$root/usr/bin/lumora-cli" --version | grep -qF "$version" || fail "lumora-cli does not say version $version"

# --- how they are built: stack protector, checked library calls, addresses bound before the start
for program in lumora lumora-cli lumora-worker; do
    binary=$root/usr/lib/lumora/Contents/MacOS/$program
    readelf --wide --dyn-syms "$binary" >"$work/symbols"
    grep -q ' __stack_chk_fail' "$work/symbols" || fail "$program has no stack protector"
    grep -q '_chk@' "$work/symbols" || fail "$program does not check library calls"
    readelf --dynamic "$binary" | grep -q 'Flags: NOW PIE' || fail "$program is not bound at its start"
done

# --- what desktops read
desktop-file-validate "$root/usr/share/applications/$id.desktop"
appstreamcli validate --no-net "$root/usr/share/metainfo/$id.metainfo.xml"
grep -qx "Exec=/usr/bin/lumora" "$root/usr/share/dbus-1/services/$id.service" || fail "the service's program"
for size in 16 24 32 48 64 128 256 512; do
    icon=$root/usr/share/icons/hicolor/${size}x$size/apps/$id.png
    [ "$(identify -format %wx%h "$icon")" = "${size}x$size" ] || fail "the size of $icon"
done

# --- dependencies: linked libraries are found by themselves, these are used at run time
for name in webp libqt6svg6 xdg-utils libvips42 libqt6widgets6 libseccomp2; do
    dpkg-deb --field "$package" Depends | grep -qE "(^|, )$name( |,|$)" || fail "the package does not depend on $name"
done
dpkg-deb --field "$package" Recommends | grep -qw qt6-wayland || fail "the package does not recommend qt6-wayland"

lintian --fail-on error "$package"
echo "ok      $(basename "$package")"
