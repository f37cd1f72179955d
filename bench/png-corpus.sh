#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# png-corpus.sh FOLDER: bytes and processor time of PNG files as the product writes them and as optipng -o2 does where it is
# installed, file after file in turn, for drawings, screenshots and photographs. Fetches the pictures from Debian's wallpapers,
# icons and manuals into FOLDER unless they are there; they are kept as the product draws them, so that both store the same pixels.
set -euo pipefail

folder=$(realpath -m -- "$1")
root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
(cd -- "$root" && cmake --preset release && cmake --build --preset release --target lumora-cli lumora-worker) >&2
product=$root/build/release/Lumora/Contents/MacOS/lumora-cli

packages=(adwaita-icon-theme desktop-base gimp-help-en gnome-user-docs lomiri-wallpapers-16.04 lomiri-wallpapers-20.04
    mate-backgrounds plasma-workspace-wallpapers ukui-wallpapers)
# shellcheck disable=SC2034 # both are read by their names
drawings=(wallpapers/{FlyingKonqui,Elarun}/contents/images/2560x1600 wallpapers/{MilkyWay,Kay,Altai}/contents/images/1080x1920
    wallpapers/Cascade/contents/images/3840x2160 mate/abstract/{Spring,Silk,Gulp,Flow,Arc-Colors-Transparent-Wallpaper}
    mate/desktop/{Stripes,MATE-Stripes-Light,Float-into-MATE,Ubuntu-Mate-Dark-no-logo} backgrounds/{desert,city,calla,goldfish}
    softwaves/plymouth_background_waves {emerald,joy}-theme/grub/grub-16x9 emerald/glow
    512x512/{mimetypes/x-office-document,devices/audio-headphones,devices/camera-web,mimetypes/image-x-generic,places/user-bookmarks})
# shellcheck disable=SC2034
screenshots=(using/{single-window,multi-window} preferences/prefs-{import-export,image-window-appearance}
    toolbox/{levels-ex2a,free-selection} color-management/{assign-5,save-profile-3} tutorials/quickie-jpeg-dialog-preview
    glossary/companding-curves-compared C/gnome-help/figures/{screenshot-tool,shell-workspaces,shell-appts}
    hr/gnome-help/figures/{shell-appts-classic,screenshot-tool})
photographs=(Aqua Bridge_by_Sander_Klootwijk EveningGlow Garden Path RainDrops YellowFlower greentock_by_Peter_Nerlich
    BytheWater ColorfulCups Dune FreshFlower Grey LadyBird Wood summer_1am)

work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT

fetch() {
    local name kind file
    (cd -- "$work" && apt-get download "${packages[@]}" >&2)
    for file in "$work"/*.deb; do dpkg-deb -x "$file" "$work/x"; done
    mkdir -p "$work"/drawn/{drawings,screenshots,photographs}
    for kind in drawings screenshots; do
        declare -n names=$kind
        for name in "${names[@]}"; do
            file=$(find "$work/x" -path "*/$name.png" | head -n 1)
            cp -- "$file" "$work/drawn/$kind/${name//\//-}.png"
        done
    done
    for name in "${photographs[@]}"; do
        file=$(find "$work/x" -name '*.jpg' \( -name "$name.jpg" -o -path "*/$name/contents/images/*" \) -printf '%s %p\n' |
            sort -n | tail -n 1 | cut -d ' ' -f 2-)
        vipsthumbnail "$file" --size '1200x2000>' --eprofile srgb -o "$work/drawn/photographs/$name.png[strip]"
    done
    for kind in drawings screenshots photographs; do
        mkdir -p "$folder/$kind"
        "$product" --quiet --format png --resize none --output-dir "$work/$kind" "$work/drawn/$kind"
        for file in "$work/$kind"/*.png; do vips copy "$file" "$folder/$kind/${file##*/}[strip,compression=1]"; done
    done
}

# Processor seconds.
seconds_of() {
    local TIMEFORMAT='%U %S'
    { time "$@" >/dev/null 2>&1; } 2>&1 | awk '{ print $1 + $2 }'
}

if [ ! -d "$folder" ]; then fetch; fi
mkdir -p "$work/ours" "$work/theirs"
printf '%-14s %5s %12s %8s %14s %8s\n' pictures files "product" "s" "optipng -o2" "s"
for kind in drawings screenshots photographs; do
    for file in "$folder/$kind"/*.png; do
        name=${file##*/}
        ours=$(seconds_of "$product" --quiet --format png --resize none --jobs 1 --output-dir "$work/ours" "$file")
        theirs=0 size=0
        if command -v optipng >/dev/null; then
            theirs=$(seconds_of optipng -quiet -o2 -strip all -clobber -out "$work/theirs/$name" "$file")
            size=$(stat -c %s "$work/theirs/$name")
        fi
        echo "$(stat -c %s "$work/ours/$name") $ours $size $theirs"
    done | tee -a "$work/lines" | awk -v kind="$kind" '{ a += $1; b += $2; c += $3; d += $4 }
        END { printf "%-14s %5d %12d %8.1f %14d %8.1f\n", kind, NR, a, b, c, d }'
done
awk '$3 > 0 { n++; more += $1 > $3 } END { if (n) printf "%d of %d larger than by optipng -o2\n", more, n }' "$work/lines"
