// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "hidden_xmp.h"

#include "metadata/jpeg_segments.h"
#include "metadata/png_chunk_reader.h"
#include "metadata/xmp_size.h"
#include "system/file_bytes.h"

#include <algorithm>
#include <functional>
#include <string_view>

namespace lumora {
namespace {

using namespace std::string_view_literals;

constexpr auto hiddenLetters = "zzZz"sv; // no chunk is called so
constexpr char hiddenTag = '\xFE';       // twice; nobody's tag

void take(XmpInFile& found, int descriptor, std::uint64_t at, std::size_t size)
{
    if (!found.packet.empty()) return;
    if (size > largestXmp) {
        found.hasMore = true;
        return;
    }
    if (auto packet = bytesAt(descriptor, at, size)) found.packet = std::move(*packet);
}

void findInJpeg(int descriptor, XmpInFile& found)
{
    const auto segments = jpegSegments(descriptor);
    for (const JpegSegment& segment : segments) {
        if (!segment.content.starts_with(jpegXmpSignature)) continue;
        if (found.packet.empty()) found.packet = segment.content.substr(jpegXmpSignature.size());
        found.masks.push_back({segment.at, std::string(hiddenLetters)});
    }
    found.extension = extendedXmpOf(segments, found.packet);
}

// The directory that a TIFF structure begins with, read through `read`, which is given offsets from the start
// of the structure.
using ReadTiff = std::function<std::optional<std::string>(std::uint64_t at, std::size_t size)>;

struct TiffXmp
{
    std::uint64_t entry; // where it stands
    std::uint64_t at;
    std::size_t size;
};

std::vector<TiffXmp> xmpEntries(const ReadTiff& read)
{
    constexpr std::uint32_t xmpTag = 0x02BC;
    constexpr std::size_t entrySize = 12;
    const auto head = read(0, 8);
    if (!head || !beginsTiff(*head)) return {};
    const auto number = head->front() == 'I' ? littleEndianAt : bigEndianAt;
    const std::uint64_t directory = number(*head, 4, 4);
    const auto count = read(directory, 2);
    const std::size_t entries = count ? number(*count, 0, 2) : 0;
    const auto table = read(directory + 2, entries * entrySize);
    std::vector<TiffXmp> found;
    for (std::size_t i = 0; table && i < entries; ++i) {
        const std::size_t at = i * entrySize;
        if (number(*table, at, 2) == xmpTag)
            found.push_back({directory + 2 + at, number(*table, at + 8, 4), number(*table, at + 4, 4)});
    }
    return found;
}

void findInTiff(int descriptor, std::uint64_t start, XmpInFile& found)
{
    const auto read = [&](std::uint64_t at, std::size_t size) {
        return bytesAt(descriptor, start + at, size);
    };
    for (const TiffXmp& xmp : xmpEntries(read)) {
        take(found, descriptor, start + xmp.at, xmp.size);
        found.masks.push_back({start + xmp.entry, std::string(2, hiddenTag)});
    }
}

void findInPng(int descriptor, XmpInFile& found)
{
    constexpr auto keyword = "XML:com.adobe.xmp\0"sv;
    constexpr auto asHexadecimal = "Raw profile type xmp\0"sv;
    bool isCompressed = false;
    for (auto chunk = pngChunkAt(descriptor, firstPngChunk); chunk;
         chunk = pngChunkAt(descriptor, chunk->end())) {
        const auto begins = [&](std::string_view word) {
            const auto start =
                chunk->length >= word.size() ? bytesAt(descriptor, chunk->dataAt, word.size()) : std::nullopt;
            return start && *start == word;
        };
        if (chunk->type == "eXIf") findInTiff(descriptor, chunk->dataAt, found);
        const bool isText = chunk->type == "tEXt" || chunk->type == "zTXt" || chunk->type == "iTXt";
        if (!isText || (!begins(keyword) && !begins(asHexadecimal))) continue;
        found.masks.push_back({chunk->typeAt(), std::string(hiddenLetters)});
        // Two flags and two empty words stand before a text that is not compressed.
        constexpr auto plain = "XML:com.adobe.xmp\0\0\0\0\0"sv;
        if (chunk->type == "iTXt" && begins(plain))
            take(found, descriptor, chunk->dataAt + plain.size(), chunk->length - plain.size());
        else
            isCompressed = true;
    }
    if (isCompressed && found.packet.empty()) found.hasMore = true;
}

void findInWebp(int descriptor, XmpInFile& found)
{
    constexpr std::uint64_t firstChunk = 12;
    std::uint64_t at = firstChunk;
    while (const auto head = bytesAt(descriptor, at, 8)) {
        const std::uint64_t length = littleEndianAt(*head, 4, 4);
        if (head->starts_with("XMP ")) {
            take(found, descriptor, at + 8, length);
            found.masks.push_back({at, std::string(hiddenLetters)});
        }
        at += 8 + length + length % 2;
    }
}

} // namespace

XmpInFile findXmp(int descriptor)
{
    XmpInFile found;
    const auto start = bytesAt(descriptor, 0, 4);
    if (!start) return found;
    if (start->starts_with("\xFF\xD8"sv)) findInJpeg(descriptor, found);
    if (start->starts_with("\x89PNG"sv)) findInPng(descriptor, found);
    if (start->starts_with("RIFF"sv)) findInWebp(descriptor, found);
    findInTiff(descriptor, 0, found);
    std::ranges::sort(found.masks, {}, &Mask::at);
    return found;
}

bool beginsTiff(std::string_view block)
{
    return block.starts_with("II*\0"sv) || block.starts_with("MM\0*"sv);
}

void hideXmpOfTiff(std::string& block)
{
    const auto read = [&](std::uint64_t at, std::size_t size) -> std::optional<std::string> {
        if (at > block.size() || size > block.size() - at) return std::nullopt;
        return block.substr(at, size);
    };
    for (const TiffXmp& xmp : xmpEntries(read))
        std::ranges::fill_n(block.begin() + static_cast<std::ptrdiff_t>(xmp.entry), 2, hiddenTag);
}

bool isHiddenXmp(std::uint16_t tag)
{
    return tag == 0xFEFE;
}

} // namespace lumora
