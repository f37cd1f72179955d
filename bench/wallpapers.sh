#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# wallpapers.sh FOLDER: fetches Debian's wallpapers and puts, as they are, every other one of the photographs among them
# into FOLDER/tuning and FOLDER/proof, and some that are drawn into FOLDER/drawn. What is tuned must never look at proof.
set -euo pipefail

folder=$(realpath -m -- "$1")
packages=(gnome-backgrounds lomiri-wallpapers-16.04 lomiri-wallpapers-20.04 mate-backgrounds plasma-workspace-wallpapers)
# Every other JPEG in these packages is drawn.
# shellcheck disable=SC2034 # both are read by their names
tuning=(Aqua Blinds Bridge_by_Sander_Klootwijk DarkestHour Dragonfly_by_Bolly EveningGlow Garden Kite
    Kleiber_by_Lukas_Baubkus OneStandsOut Path Picture_0B_by_freespace RainDrops Shell Storm YellowFlower
    aitzgorri_by_Aitzol_Berasategi free_by_Peter_Nerlich greentock_by_Peter_Nerlich seeding_by_Clements_Engelhardt)
# shellcheck disable=SC2034
proof=(BytheWater ColdRipple ColorfulCups Dune FallenLeaf FreshFlower GreenMeadow Grey LadyBird Picture_1A_by_freespace
    TwoWings Wine_by_Jakkub_Mede Wood friends_by_Aitzol_Berasategi life_by_Aitzol_Berasategi
    picosdeeuropa_by_Aitzol_Berasategi summer_1am sunset_by_Aitzol_Berasategi)
drawn=(wallpapers/{FlyingKonqui,Elarun}/contents/images/2560x1600 wallpapers/{MilkyWay,Kay}/contents/images/1080x1920
    mate/abstract/Flow mate/desktop/Float-into-MATE)

work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT
(cd -- "$work" && apt-get download "${packages[@]}" >&2)
for package in "$work"/*.deb; do dpkg-deb -x "$package" "$work/x"; done

# The largest file of the name, or below a folder of the name.
photograph() {
    find "$work/x/usr/share" -type f -name '*.jpg' \( -name "$1.jpg" -o -path "*/$1/contents/images/*" \) -printf '%s %p\n' |
        sort -n | tail -n 1 | cut -d ' ' -f 2-
}

mkdir -p "$folder"/{tuning,proof,drawn}
for half in tuning proof; do
    declare -n names=$half
    for name in "${names[@]}"; do cp -- "$(photograph "$name")" "$folder/$half/$name.jpg"; done
done
for name in "${drawn[@]}"; do
    cp -- "$(find "$work/x" -path "*/$name.png" | head -n 1)" "$folder/drawn/${name//\//-}.png"
done
