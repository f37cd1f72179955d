#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# pictures.sh INTO [FOLDER]: makes the pictures that run.sh measures with. INTO/photographs are the JPEG files of FOLDER
# or, without one, those of Debian's wallpapers that are wider than 2560; INTO/proof are those to score encoders with.
# Made from them: photographs-ppm (reduced and decoded), heic (four, of 12 megapixels) and thumbnails. INTO/drawn are
# drawn wallpapers.
set -euo pipefail

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
into=$1
mkdir -p "$into"/{photographs,photographs-ppm,heic,thumbnails}
"$here/wallpapers.sh" "$into"

if [ $# -gt 1 ]; then
    find "$2" -maxdepth 1 -iname '*.jp*g' -exec cp -t "$into/photographs" -- {} +
    rm -- "$into"/proof/*
    find "$into/photographs" -type f | sort | head -n 18 | xargs -d '\n' cp -t "$into/proof" --
else
    for file in "$into"/{tuning,proof}/*; do
        if [ "$(vipsheader -f width "$file" 2>/dev/null)" -gt 2560 ]; then cp -- "$file" "$into/photographs"; fi
    done
fi

reduced() { # reduced SIZE OUTPUT FILE…
    vipsthumbnail --size "$1" --output "$2" "${@:3}" 2>/dev/null
}

reduced '2560x>' "$into/photographs-ppm/%s.ppm" "$into"/photographs/*
for width in 120 160 200 240 320 400; do
    reduced "${width}x" "$into/thumbnails/%s-$width.jpg[Q=90,strip]" --eprofile srgb "$into"/{tuning,proof}/*
done
find "$into/photographs" -type f -printf '%s %p\n' | sort -rn | head -n 4 | cut -d ' ' -f 2- | while IFS= read -r file; do
    name=${file##*/}
    vipsthumbnail --size 4000x3000 --smartcrop centre --output "$into/%s.png[strip,compression=1]" "$file" 2>/dev/null
    heif-enc -q 70 -p preset=ultrafast -o "$into/heic/${name%.*}.heic" "$into/${name%.*}.png" >/dev/null
    rm -- "$into/${name%.*}.png"
done
