#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the first inputs of the fuzzers: one tiny picture of each kind. Needs libvips-tools, webp,
# libimage-exiftool-perl and the fuzz preset.
set -eu

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
seeds=$here/corpus/image_source_fuzzer
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$seeds"

vips xyz "$work/xy.v" 16 16
vips linear "$work/xy.v" "$work/ramps.v" "15 15" "0 0" --uchar
vips extract_band "$work/ramps.v" "$work/grey.v" 0
vips bandjoin "$work/ramps.v $work/grey.v" "$work/bands.v"
vips copy "$work/bands.v" "$work/rgb.v" --interpretation srgb
vips bandjoin "$work/rgb.v $work/grey.v" "$work/rgba.v"
vips colourspace "$work/rgb.v" "$work/deep.v" rgb16

vips jpegsave "$work/rgb.v" "$seeds/rgb.jpg" --strip
vips jpegsave "$work/rgb.v" "$seeds/progressive.jpg" --strip --interlace
vips jpegsave "$work/grey.v" "$seeds/grey.jpg" --strip
vips pngsave "$work/rgba.v" "$seeds/rgba.png" --strip
vips pngsave "$work/deep.v" "$seeds/deep.png" --strip
vips pngsave "$work/rgb.v" "$seeds/palette.png" --strip --palette
vips pngsave "$work/rgb.v" "$seeds/interlaced.png" --strip --interlace
vips gifsave "$work/rgba.v" "$seeds/rgba.gif"
vips tiffsave "$work/rgb.v" "$seeds/deflate.tif" --strip --compression deflate
vips tiffsave "$work/rgb.v" "$seeds/tiled.tif" --strip --tile --tile-width 16 --tile-height 16
vips tiffsave "$work/deep.v" "$seeds/lzw-deep.tif" --strip --compression lzw
vips heifsave "$work/rgb.v" "$seeds/hevc.heic" --strip
vips heifsave "$work/rgb.v" "$seeds/av1.heif" --strip --compression av1
vips pngsave "$work/rgba.v" "$work/rgba.png"
cwebp -quiet "$work/rgba.png" -o "$seeds/lossy-alpha.webp"
cwebp -quiet -lossless "$work/rgba.png" -o "$seeds/lossless.webp"

cmake --build "$here/../build/fuzz" --target bmp_seeds metadata_seeds
mkdir -p "$here/corpus/bmp_fuzzer"
"$here/../build/fuzz/fuzz/bmp_seeds" "$here/corpus/bmp_fuzzer"
cp "$here/corpus/bmp_fuzzer/plain-24.bmp" "$here/corpus/bmp_fuzzer/runs-8.bmp" "$seeds"

notes=$here/corpus/metadata_fuzzer
mkdir -p "$notes"
"$here/../build/fuzz/fuzz/metadata_seeds" "$notes"
vips jpegsave "$work/rgb.v" "$work/described.jpg" --strip
exiftool -q -overwrite_original -Make=Maker -Model=Model -ExposureTime=1/125 -DateTimeOriginal='2020:01:02 03:04:05' \
    -GPSLatitude=12.5 -GPSLatitudeRef=N -XResolution=300 -UserComment='a remark' -IPTC:Keywords=harbour \
    -XMP-dc:Title=title -XMP-tiff:Orientation#=6 -Orientation#=6 "-ThumbnailImage<=$seeds/grey.jpg" "$work/described.jpg"
{ printf e; exiftool -b -Exif "$work/described.jpg"; } > "$notes/exif"
{ printf x; exiftool -b -XMP "$work/described.jpg"; } > "$notes/xmp"
{ printf i; printf '8BIM\4\4\0\0\0\0\0\14\34\2\31\0\7harbour'; } > "$notes/iptc"
vips tiffsave "$work/rgb.v" "$work/described.tif" --strip
vips pngsave "$work/rgb.v" "$work/described.png" --strip
vips gifsave "$work/rgb.v" "$work/described.gif" --strip
exiftool -q -overwrite_original -tagsfromfile "$work/described.jpg" -all:all "$work/described.tif"
exiftool -q -overwrite_original -tagsfromfile "$work/described.jpg" -all:all -PNG:Title='Größe' "$work/described.png"
exiftool -q -overwrite_original -Comment=remark "$work/described.gif"
for file in "$work"/described.*; do
    { printf f; cat "$file"; } > "$notes/${file##*.}"
done

copies=$here/corpus/file_copy_fuzzer
mkdir -p "$copies"
cp "$work/described.jpg" "$work/described.png" "$seeds/progressive.jpg" "$seeds/palette.png" "$copies"

mkdir -p "$here/corpus/byte_count_text_fuzzer"
printf '\x3f\x42\x0f\0\0\0\0\0' > "$here/corpus/byte_count_text_fuzzer/below-one-megabyte"
printf '\0\0\0\0\0\0\0\x80' > "$here/corpus/byte_count_text_fuzzer/smallest"

uris=$here/corpus/file_uris_fuzzer
mkdir -p "$uris"
printf '# from a browser\r\nfile:///a.png\r\n\r\nhttps://example.invalid/b.png\r\nfile://localhost/c%%20d\r\n' > "$uris/list"
printf 'file:///a\nFILE://LocalHost/b\n\0' > "$uris/bare-line-feeds"
printf 'file:///100%%.png\nfile:///%%zz%%2\nfile:///a%%00b\nfile:///a#b?c' > "$uris/odd-escapes"
printf 'file:///%%FF\x80/%%c3%%a9\nfile:/one\nfile:relative\nfile://elsewhere.invalid/a' > "$uris/odd-forms"

# The types are told apart by the heads of the same files.
mkdir -p "$here/corpus/image_types_fuzzer"
for file in "$seeds"/*; do
    head -c 64 "$file" > "$here/corpus/image_types_fuzzer/${file##*/}"
done
