// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/jpeg_segments.h"

#include "metadata/jpeg_markers.h"
#include "metadata/xmp_size.h"
#include "system/file_bytes.h"

#include <algorithm>
#include <string_view>

namespace lumora {
namespace {

bool isOfInterest(unsigned char code)
{
    return code == JpegCode::remark ||
           (code >= JpegCode::firstApplication && code <= JpegCode::lastApplication);
}

// One piece of an extension: which it belongs to, how long the whole is and where in it the piece lies.
struct Piece
{
    static constexpr std::size_t identifierLength = 32;
    static constexpr std::size_t headLength = identifierLength + 8;

    explicit Piece(const std::string& content)
    {
        const std::string head = content.substr(jpegExtendedXmpSignature.size(), headLength);
        identifier = head.substr(0, identifierLength);
        wholeSize = bigEndianAt(head, identifierLength, 4);
        offset = bigEndianAt(head, identifierLength + 4, 4);
        bytes = content.substr(std::min(content.size(), jpegExtendedXmpSignature.size() + headLength));
    }

    std::string identifier;
    std::size_t wholeSize;
    std::size_t offset;
    std::string bytes;
};

// The name that the packet gives to its extension, as an attribute or as an element.
std::string extensionNamedIn(const std::string& packet)
{
    constexpr std::string_view property = "HasExtendedXMP";
    constexpr std::string_view digits = "0123456789ABCDEFabcdef";
    const std::size_t at = packet.find(property);
    if (at == std::string::npos) return {};
    const std::size_t first = packet.find_first_of("\"'>", at);
    if (first == std::string::npos) return {};
    const std::string name = packet.substr(first + 1, Piece::identifierLength);
    const bool isName =
        name.size() == Piece::identifierLength && name.find_first_not_of(digits) == std::string::npos;
    return isName ? name : std::string();
}

} // namespace

const std::string jpegXmpSignature("http://ns.adobe.com/xap/1.0/\0", 29);
const std::string jpegExtendedXmpSignature("http://ns.adobe.com/xmp/extension/\0", 35);

std::vector<JpegSegment> jpegSegments(int descriptor, std::uint64_t start)
{
    constexpr std::uint64_t startOfImage = 2;
    constexpr std::size_t mostBytes = std::size_t{1} << 26U;
    std::vector<JpegSegment> segments;
    std::size_t total = 0;
    auto marker = jpegMarkerAt(descriptor, start + startOfImage);
    for (; marker; marker = jpegMarkerAt(descriptor, marker->end())) {
        if (marker->code == JpegCode::startOfScan || marker->code == JpegCode::endOfImage) break;
        if (!isOfInterest(marker->code)) continue;
        const std::uint64_t at = marker->at + JpegMarker::headSize;
        auto content = bytesAt(descriptor, at, marker->end() - at);
        if (!content || total > mostBytes) break;
        total += content->size();
        segments.push_back({marker->code, at, std::move(*content)});
    }
    return segments;
}

std::string extendedXmpOf(const std::vector<JpegSegment>& segments, const std::string& packet)
{
    const std::string identifier = extensionNamedIn(packet);
    if (identifier.empty()) return {};
    std::string whole;
    std::size_t filled = 0;
    for (const JpegSegment& segment : segments) {
        if (!segment.content.starts_with(jpegExtendedXmpSignature)) continue;
        const Piece piece(segment.content);
        if (piece.identifier != identifier || piece.wholeSize > largestXmp) continue;
        if (whole.empty()) whole.resize(piece.wholeSize);
        if (piece.wholeSize != whole.size() || piece.offset > whole.size() ||
            piece.bytes.size() > whole.size() - piece.offset)
            continue;
        std::ranges::copy(piece.bytes, whole.begin() + static_cast<std::ptrdiff_t>(piece.offset));
        filled += piece.bytes.size();
    }
    return filled == whole.size() ? whole : std::string();
}

} // namespace lumora
