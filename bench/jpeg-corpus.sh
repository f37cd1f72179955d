#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# jpeg-corpus.sh FOLDER: fetches the photographs among Debian's wallpapers, reduced to a width of 1200, into FOLDER/tuning
# and FOLDER/proof. What is tuned must never look at the second.
set -euo pipefail

folder=$(realpath -m -- "$1")
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT
"$here/wallpapers.sh" "$work"
for half in tuning proof; do
    mkdir -p "$folder/$half"
    vipsthumbnail "$work/$half"/*.jpg --size '1200x2000>' --eprofile srgb -o "$folder/$half/%s.png[strip]"
done
