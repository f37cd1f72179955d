// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bmp/bmp_codec.h"
#include "bmp/little_endian.h"

#include <algorithm>

namespace lumora {
namespace {

using Bytes = std::vector<std::byte>;

constexpr std::uint32_t fileHeaderSize = 14;
constexpr std::uint32_t version3Size = 40;
constexpr std::uint32_t version4Size = 108;           // the first header with a place for the alpha mask
constexpr std::uint32_t version5Size = 124;           // the first one with a place for a colour profile
constexpr std::uint32_t sRGBColors = 0x73524742;      // "sRGB"
constexpr std::uint32_t embeddedProfile = 0x4D424544; // "MBED"
constexpr std::uint32_t greyPaletteColors = 256;

struct Plan
{
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t channels;
    std::uint32_t profileSize;

    std::uint32_t rowSize() const { return width * channels; }
    std::uint32_t padding() const { return (4 - rowSize() % 4) % 4; }
    std::uint32_t pixelSize() const { return (rowSize() + padding()) * height; }
    std::uint32_t infoSize() const
    {
        if (profileSize > 0) return version5Size;
        return channels == 4 ? version4Size : version3Size;
    }
    std::uint32_t paletteColors() const { return channels == 1 ? greyPaletteColors : 0; }
    std::uint32_t pixelPosition() const { return fileHeaderSize + infoSize() + 4 * paletteColors(); }
    std::uint32_t profilePosition() const { return pixelPosition() + pixelSize(); }
};

void appendHeaders(Bytes& file, const Plan& plan)
{
    file.push_back(std::byte{'B'});
    file.push_back(std::byte{'M'});
    appendLittleEndian(file, plan.profilePosition() + plan.profileSize);
    appendLittleEndian(file, std::uint32_t{0}); // reserved
    appendLittleEndian(file, plan.pixelPosition());

    appendLittleEndian(file, plan.infoSize());
    appendLittleEndian(file, plan.width);
    appendLittleEndian(file, plan.height);      // positive: rows from the bottom up, which every reader knows
    appendLittleEndian(file, std::uint16_t{1}); // planes
    appendLittleEndian(file, static_cast<std::uint16_t>(8 * plan.channels));
    appendLittleEndian(file, std::uint32_t{plan.channels == 4 ? 3U : 0U}); // masks, or plain
    appendLittleEndian(file, plan.pixelSize());
    for (int axis = 0; axis < 2; ++axis)
        appendLittleEndian(file, std::uint32_t{2835}); // 72 dots an inch, a metre
    appendLittleEndian(file, plan.paletteColors());
    appendLittleEndian(file, std::uint32_t{0}); // all colours are important
}

// What the headers from version 4 on add. End points and gamma count for neither kind of colours.
void appendColors(Bytes& file, const Plan& plan)
{
    for (const std::uint32_t mask : {0x00FF0000U, 0x0000FF00U, 0x000000FFU, 0xFF000000U}) {
        appendLittleEndian(file, plan.channels == 4 ? mask : 0U);
    }
    appendLittleEndian(file, plan.profileSize > 0 ? embeddedProfile : sRGBColors);
    file.resize(fileHeaderSize + version4Size);
    if (plan.profileSize == 0) return;
    constexpr std::uint32_t perceptual = 4;
    appendLittleEndian(file, perceptual);
    appendLittleEndian(file, plan.profilePosition() - fileHeaderSize);
    appendLittleEndian(file, plan.profileSize);
    appendLittleEndian(file, std::uint32_t{0}); // reserved
}

void appendGreyPalette(Bytes& file)
{
    for (std::uint32_t grey = 0; grey < greyPaletteColors; ++grey)
        appendLittleEndian(file, grey * 0x010101U);
}

// Stored as blue, green, red.
void appendRow(Bytes& file, std::span<const std::byte> row, const Plan& plan)
{
    const std::size_t start = file.size();
    file.insert(file.end(), row.begin(), row.end());
    for (std::size_t at = start; plan.channels >= 3 && at < file.size(); at += plan.channels) {
        std::swap(file[at], file[at + 2]);
    }
    file.resize(file.size() + plan.padding());
}

} // namespace

Status encodeBmp(int width, int height, int channels, std::span<const std::byte> rows,
                 std::span<const std::byte> profile, const BmpTaker& take)
{
    constexpr std::size_t pieceSize = std::size_t{1} << 18U;
    const Plan plan{static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height),
                    static_cast<std::uint32_t>(channels), static_cast<std::uint32_t>(profile.size())};
    Bytes piece;
    appendHeaders(piece, plan);
    if (plan.infoSize() >= version4Size) appendColors(piece, plan);
    if (channels == 1) appendGreyPalette(piece);
    for (std::size_t y = plan.height; y-- > 0;) {
        appendRow(piece, rows.subspan(y * plan.rowSize(), plan.rowSize()), plan);
        if (piece.size() < pieceSize) continue;
        if (auto status = take(piece); !status) return status;
        piece.clear();
    }
    piece.insert(piece.end(), profile.begin(), profile.end());
    return take(piece);
}

} // namespace lumora
