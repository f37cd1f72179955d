// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/jpeg_gain_map.h"

#include "system/file_bytes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lumora {
namespace {

using namespace std::string_view_literals;

constexpr unsigned char application1 = 0xE1;
constexpr unsigned char application2 = 0xE2;
constexpr auto listSignature = "MPF\0"sv;

bool speaksOfGainMap(const JpegSegment& segment)
{
    constexpr std::array names{"http://ns.adobe.com/hdr-gain-map/"sv, "http://ns.apple.com/HDRGainMap/"sv,
                               "urn:com:apple:photo:2020:aux:hdrgainmap"sv};
    const std::string_view content = segment.content;
    if (segment.marker == application2) return content.starts_with("urn:iso:std:iso:ts:21496:-1\0"sv);
    return segment.marker == application1 && content.starts_with(jpegXmpSignature) &&
           std::ranges::any_of(names,
                               [&](auto name) { return content.find(name) != std::string_view::npos; });
}

bool anySpeaksOfGainMap(const std::vector<JpegSegment>& segments)
{
    return std::ranges::any_of(segments, speaksOfGainMap);
}

// The list of the pictures in a file: a TIFF structure of one directory.
class PictureList
{
public:
    explicit PictureList(const JpegSegment& segment)
        : m_start(segment.at + listSignature.size()),
          m_bytes(std::string_view(segment.content).substr(listSignature.size()))
    {
    }

    // Where in the file the pictures behind the first begin.
    std::vector<std::uint64_t> starts() const
    {
        constexpr std::size_t entrySize = 16;
        constexpr std::size_t mostPictures = 16;
        std::vector<std::uint64_t> starts;
        const auto [at, size] = entries();
        for (std::size_t i = 0; i < std::min(size / entrySize, mostPictures); ++i) {
            const std::uint64_t offset = number(at + i * entrySize + 8, 4);
            if (offset != 0) starts.push_back(m_start + offset);
        }
        return starts;
    }

private:
    struct Range
    {
        std::size_t at;
        std::size_t size;
    };

    Range entries() const
    {
        constexpr std::uint32_t entriesTag = 0xB002;
        constexpr std::size_t fieldSize = 12;
        const std::size_t directory = number(4, 4);
        const std::size_t count = number(directory, 2);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t field = directory + 2 + i * fieldSize;
            if (number(field, 2) == entriesTag) return {number(field + 8, 4), number(field + 4, 4)};
        }
        return {0, 0};
    }

    std::uint64_t number(std::size_t at, std::size_t size) const
    {
        return m_bytes.starts_with('M') ? bigEndianAt(m_bytes, at, size) : littleEndianAt(m_bytes, at, size);
    }

    std::uint64_t m_start;
    std::string_view m_bytes;
};

} // namespace

bool hasGainMap(int descriptor, const std::vector<JpegSegment>& segments)
{
    if (anySpeaksOfGainMap(segments)) return true;
    for (const JpegSegment& segment : segments) {
        if (segment.marker != application2 || !segment.content.starts_with(listSignature)) continue;
        const auto starts = PictureList(segment).starts();
        return std::ranges::any_of(
            starts, [&](std::uint64_t start) { return anySpeaksOfGainMap(jpegSegments(descriptor, start)); });
    }
    return false;
}

} // namespace lumora
