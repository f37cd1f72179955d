// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/jpeg_segments.h"

#include "metadata/xmp_size.h"
#include "system/file_bytes.h"

#include <algorithm>
#include <string_view>

namespace lumora {
namespace {

constexpr unsigned char firstApplication = 0xE0;
constexpr unsigned char lastApplication = 0xEF;
constexpr unsigned char remark = 0xFE;
constexpr unsigned char startOfScan = 0xDA;
constexpr unsigned char endOfImage = 0xD9;

bool standsAlone(unsigned char marker)
{
    return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
}

bool isOfInterest(unsigned char marker)
{
    return marker == remark || (marker >= firstApplication && marker <= lastApplication);
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
    std::uint64_t at = start + startOfImage;
    for (;;) {
        const auto head = bytesAt(descriptor, at, 2);
        if (!head || (*head)[0] != '\xFF') return segments;
        const auto marker = static_cast<unsigned char>((*head)[1]);
        if (marker == startOfScan || marker == endOfImage) return segments;
        if (marker == 0xFF || standsAlone(marker)) {
            at += marker == 0xFF ? 1 : 2; // fill bytes may precede a marker
            continue;
        }
        const auto length = bytesAt(descriptor, at + 2, 2);
        const std::size_t size = length ? bigEndianAt(*length, 0, 2) : 0;
        if (size < 2) return segments;
        if (isOfInterest(marker)) {
            auto content = bytesAt(descriptor, at + 4, size - 2);
            if (!content || total > mostBytes) return segments;
            total += content->size();
            segments.push_back({marker, at + 4, std::move(*content)});
        }
        at += 2 + size;
    }
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
