// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// BMP files of every kind for tests, field by field, so that a wrong one is as easily made as a right one.
#pragma once

#include "bmp/little_endian.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <vector>

namespace lumora::test {

struct BmpBuilder
{
    std::uint32_t headerSize = 40;
    std::int32_t width = 2;
    std::int32_t height = 2; // negative: rows from the top down
    std::uint16_t bits = 24;
    std::uint32_t compression = 0;
    std::uint32_t colorsUsed = 0;
    std::vector<std::uint32_t> masks = {};   // in the header where it has fields for them, after it otherwise
    std::vector<std::uint32_t> palette = {}; // 0xRRGGBB
    std::vector<std::uint8_t> pixels = {};
    std::optional<std::uint32_t> pixelPosition = {}; // the right one by default

    std::vector<std::byte> file() const
    {
        std::vector<std::byte> bytes;
        put<std::uint16_t>(bytes, 0x4D42);
        put<std::uint32_t>(bytes, 0);
        put<std::uint32_t>(bytes, 0);
        const std::size_t positionField = bytes.size();
        put<std::uint32_t>(bytes, 0);
        headerSize == 12 ? putCoreHeader(bytes) : putInfoHeader(bytes);
        putPalette(bytes);
        const auto position = pixelPosition.value_or(static_cast<std::uint32_t>(bytes.size()));
        for (std::size_t i = 0; i < 4; ++i)
            bytes[positionField + i] = std::byte((position >> (8 * i)) & 0xFFU);
        for (const std::uint8_t value : pixels)
            bytes.push_back(std::byte(value));
        return bytes;
    }

private:
    template <class Unsigned>
    static void put(std::vector<std::byte>& bytes, Unsigned value)
    {
        appendLittleEndian(bytes, value);
    }

    void putCoreHeader(std::vector<std::byte>& bytes) const
    {
        put(bytes, headerSize);
        put(bytes, static_cast<std::uint16_t>(width));
        put(bytes, static_cast<std::uint16_t>(height));
        put<std::uint16_t>(bytes, 1);
        put(bytes, bits);
    }

    void putInfoHeader(std::vector<std::byte>& bytes) const
    {
        const std::size_t start = bytes.size();
        put(bytes, headerSize);
        put(bytes, static_cast<std::uint32_t>(width));
        put(bytes, static_cast<std::uint32_t>(height));
        put<std::uint16_t>(bytes, 1);
        put(bytes, bits);
        put(bytes, compression);
        for (int field = 0; field < 3; ++field)
            put<std::uint32_t>(bytes, 0);
        put(bytes, colorsUsed);
        put<std::uint32_t>(bytes, 0);
        for (const std::uint32_t mask : masks)
            put(bytes, mask);
        // OS/2's short form ends within these fields; the long ones have more.
        if (bytes.size() < start + headerSize || headerSize == 16) bytes.resize(start + headerSize);
    }

    void putPalette(std::vector<std::byte>& bytes) const
    {
        for (const std::uint32_t color : palette) {
            for (const unsigned shift : {0U, 8U, 16U})
                bytes.push_back(std::byte((color >> shift) & 0xFFU));
            if (headerSize != 12) bytes.push_back(std::byte{0});
        }
    }
};

} // namespace lumora::test
