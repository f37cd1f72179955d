// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bmp/bmp_layout.h"

#include "bmp/little_endian.h"
#include "types/format.h"

#include <algorithm>
#include <bit>
#include <string>

namespace lumora {
namespace {

constexpr std::size_t fileHeaderSize = 14;
constexpr std::size_t coreHeaderSize = 12;
constexpr std::size_t os2HeaderSize = 64;
constexpr std::size_t version3Size = 40;
constexpr std::size_t version5Size = 124;
constexpr std::uint32_t embeddedProfile = 0x4D424544; // "MBED" of the header's colour space field

enum Compression : std::uint32_t { none = 0, runs8 = 1, runs4 = 2, masked = 3, maskedWithAlpha = 6 };

// The second header, whatever its kind. A short one leaves out fields from the end, which then count as zero.
struct InfoHeader
{
    std::span<const std::byte> bytes; // of the whole file
    std::size_t size;

    bool isCore() const { return size == coreHeaderSize; }
    std::uint16_t word(std::size_t at) const
    {
        return at + 2 <= size ? littleEndianAt<std::uint16_t>(bytes, fileHeaderSize + at) : std::uint16_t{0};
    }
    std::uint32_t number(std::size_t at) const
    {
        return at + 4 <= size ? littleEndianAt<std::uint32_t>(bytes, fileHeaderSize + at) : 0;
    }
    std::int64_t width() const { return isCore() ? word(4) : static_cast<std::int32_t>(number(4)); }
    std::int64_t signedHeight() const { return isCore() ? word(6) : static_cast<std::int32_t>(number(8)); }
    int bitsPerPixel() const { return isCore() ? word(10) : word(14); }
    std::uint32_t compression() const { return isCore() ? 0 : number(16); }
    std::uint32_t colorsUsed() const { return isCore() ? 0 : number(32); }
};

Result<InfoHeader> findInfoHeader(std::span<const std::byte> file)
{
    if (file.size() < fileHeaderSize + 4 || file[0] != std::byte{'B'} || file[1] != std::byte{'M'}) {
        return Error{"not a BMP file"};
    }
    const auto size = littleEndianAt<std::uint32_t>(file, fileHeaderSize);
    constexpr std::array<std::uint32_t, 8> known{12, 16, 40, 52, 56, os2HeaderSize, 108, version5Size};
    if (std::ranges::find(known, size) == known.end()) return Error{"unknown BMP header"};
    if (file.size() < fileHeaderSize + size) return Error{"BMP header cut off"};
    return InfoHeader{file, size};
}

bool isReadableKind(const InfoHeader& info)
{
    const int bits = info.bitsPerPixel();
    // In OS/2's long header the numbers from 3 mean other codings.
    if (info.size == os2HeaderSize && info.compression() >= masked) return false;
    switch (info.compression()) {
    case none:
        return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    case runs8:
        return bits == 8;
    case runs4:
        return bits == 4;
    case masked:
    case maskedWithAlpha:
        return bits == 16 || bits == 32;
    default:
        return false;
    }
}

// How many masks stand between a header without fields for them and the palette.
std::size_t looseMaskCount(const InfoHeader& info)
{
    if (info.size != version3Size) return 0;
    if (info.compression() == masked) return 3;
    return info.compression() == maskedWithAlpha ? 4 : 0;
}

bool isContiguous(std::uint32_t mask)
{
    return mask == 0 || std::has_single_bit((std::uint64_t{mask} >> std::countr_zero(mask)) + 1);
}

Result<std::array<std::uint32_t, 4>> readMasks(const InfoHeader& info)
{
    std::array<std::uint32_t, 4> masks{};
    // Where they do not count, long headers have some as well.
    if (info.compression() != masked && info.compression() != maskedWithAlpha) {
        if (info.bitsPerPixel() == 16) return std::array<std::uint32_t, 4>{0x7C00, 0x03E0, 0x001F, 0};
        return std::array<std::uint32_t, 4>{0xFF0000, 0x00FF00, 0x0000FF, 0};
    }
    // The fields of the longer headers lie where the loose masks of the short one do.
    const std::size_t count =
        info.size > version3Size ? (info.size - version3Size) / 4 : looseMaskCount(info);
    for (std::size_t i = 0; i < std::min(count, masks.size()); ++i) {
        const std::size_t at = fileHeaderSize + version3Size + 4 * i;
        if (at + 4 > info.bytes.size()) return Error{"BMP header cut off"};
        masks[i] = littleEndianAt<std::uint32_t>(info.bytes, at);
        if (!isContiguous(masks[i])) return Error{"BMP colour masks with gaps"};
    }
    return masks;
}

std::vector<BmpColor> readPalette(const InfoHeader& info, std::span<const std::byte> bytes)
{
    const std::size_t entrySize = info.isCore() ? 3 : 4;
    const std::size_t most = std::size_t{1} << static_cast<unsigned>(info.bitsPerPixel());
    const std::size_t given = info.colorsUsed() == 0 ? most : std::min<std::size_t>(info.colorsUsed(), most);
    std::vector<BmpColor> palette(std::min(given, bytes.size() / entrySize));
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const auto entry = bytes.subspan(i * entrySize, 3);
        palette[i] = {entry[2], entry[1], entry[0]};
    }
    return palette;
}

std::span<const std::byte> findProfile(const InfoHeader& info)
{
    if (info.size != version5Size || info.number(56) != embeddedProfile) return {};
    const std::size_t start = fileHeaderSize + info.number(112);
    const std::size_t size = info.number(116);
    if (start > info.bytes.size() || size > info.bytes.size() - start) return {};
    return info.bytes.subspan(start, size);
}

Status checkDimensions(std::int64_t width, std::int64_t height)
{
    if (width < 1 || height < 1) return Error{"BMP without pixels"};
    if (width * height > maximumDecodedPixels) {
        return Error{"more than " + std::to_string(maximumDecodedPixels / 1'000'000) + " megapixels"};
    }
    return Done{};
}

BmpCoding codingOf(const InfoHeader& info)
{
    if (info.compression() == runs8) return BmpCoding::runs8;
    return info.compression() == runs4 ? BmpCoding::runs4 : BmpCoding::plain;
}

} // namespace

Result<BmpLayout> readBmpLayout(std::span<const std::byte> file)
{
    const auto info = findInfoHeader(file);
    if (!info) return info.error();
    if (!isReadableKind(*info)) return Error{"unknown kind of BMP"};
    const std::int64_t height = info->signedHeight();
    if (const Status checked = checkDimensions(info->width(), std::abs(height)); !checked)
        return checked.error();
    const auto masks = readMasks(*info);
    if (!masks) return masks.error();

    const std::size_t palettePosition = fileHeaderSize + info->size + 4 * looseMaskCount(*info);
    const std::size_t pixelPosition = littleEndianAt<std::uint32_t>(file, 10);
    if (pixelPosition < palettePosition || pixelPosition > file.size())
        return Error{"BMP pixels out of place"};
    std::vector<BmpColor> palette;
    if (info->bitsPerPixel() <= 8) {
        palette = readPalette(*info, file.subspan(palettePosition, pixelPosition - palettePosition));
        if (palette.empty()) return Error{"BMP without palette"};
    }
    const BmpHeader header{info->width(), std::abs(height), info->bitsPerPixel(), (*masks)[3] != 0,
                           findProfile(*info)};
    return BmpLayout{
        header, height < 0, codingOf(*info), std::move(palette), *masks, file.subspan(pixelPosition)};
}

Result<BmpHeader> readBmpHeader(std::span<const std::byte> file)
{
    const auto layout = readBmpLayout(file);
    if (!layout) return layout.error();
    return layout->header;
}

} // namespace lumora
