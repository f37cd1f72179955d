// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/jpeg_pieces.h"

#include "metadata/jpeg_markers.h"
#include "system/file_bytes.h"

#include <unistd.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace lumora {
namespace {

using namespace std::string_view_literals;

enum class Use { picture, colors, profile, pictureList, metadata };

// How decoders tell brightness and differences of colours from others is said by segments of at least so many
// bytes; what follows in them are a density, a small copy of the picture, or nothing.
constexpr std::size_t jfifSize = 14;
constexpr std::size_t adobeSize = 12;

Use useOf(unsigned char code, std::string_view content)
{
    constexpr unsigned char application0 = 0xE0;
    constexpr unsigned char application2 = 0xE2;
    constexpr unsigned char application14 = 0xEE;
    const bool isApplication = code >= JpegCode::firstApplication && code <= JpegCode::lastApplication;
    if (code == JpegCode::remark) return Use::metadata;
    if (!isApplication) return Use::picture;
    if (code == application0 && content.starts_with("JFIF\0"sv) && content.size() >= jfifSize)
        return Use::colors;
    if (code == application14 && content.starts_with("Adobe"sv) && content.size() >= adobeSize)
        return Use::colors;
    if (code == application2 && content.starts_with("ICC_PROFILE\0"sv)) return Use::profile;
    if (code == application2 && content.starts_with("MPF\0"sv)) return Use::pictureList;
    return Use::metadata;
}

// The segment that says of colours the same as one with this content, and nothing else.
std::string plainSegment(unsigned char code, std::string_view content)
{
    constexpr std::size_t versionEnd = 7;
    const bool isJfif = content.starts_with("JFIF"sv);
    const std::string plain = isJfif ? std::string(content.substr(0, versionEnd)).append("\0\0\1\0\1\0\0"sv)
                                     : std::string(content.substr(0, adobeSize));
    return std::string{'\xFF', static_cast<char>(code), '\0', static_cast<char>(plain.size() + 2)} + plain;
}

// Where the coded data from `at` on ends, at a marker that does not belong to it; absent without one.
std::optional<std::uint64_t> endOfCodedData(int descriptor, std::uint64_t at)
{
    constexpr std::size_t size = std::size_t{1} << 16U;
    const auto buffer = std::make_unique_for_overwrite<unsigned char[]>(size);
    bool isAfterMark = false;
    for (;;) {
        const ssize_t count = pread(descriptor, buffer.get(), size, static_cast<off_t>(at));
        if (count <= 0) return std::nullopt;
        for (ssize_t i = 0; i < count; ++i) {
            const unsigned char byte = buffer[static_cast<std::size_t>(i)];
            const bool isRestart = byte >= 0xD0 && byte <= 0xD7;
            const bool isMark = byte == 0xFF;
            if (isAfterMark && byte != 0 && !isMark && !isRestart)
                return at + static_cast<std::uint64_t>(i) - 1;
            isAfterMark = isMark;
        }
        at += static_cast<std::uint64_t>(count);
    }
}

class Walk
{
public:
    Walk(int descriptor, const LeftOut& leftOut) : m_descriptor(descriptor), m_leftOut(leftOut) {}

    std::optional<FilePieces> pieces() &&
    {
        constexpr std::uint64_t startOfImage = 2;
        m_pieces.keep(0, startOfImage);
        m_at = startOfImage;
        for (;;) {
            const auto marker = jpegMarkerAt(m_descriptor, m_at);
            if (!marker || !take(*marker)) return std::nullopt;
            if (m_isDone) return std::move(m_pieces);
        }
    }

private:
    bool take(const JpegMarker& marker)
    {
        m_at = marker.end();
        if (marker.code == JpegCode::startOfScan) return takeScan(marker);
        if (marker.code == JpegCode::endOfImage) {
            m_pieces.keep(marker.at, marker.size);
            m_isDone = true;
            return true;
        }
        return marker.size > 2 && takeSegment(marker); // no other marker is there by itself
    }

    // Other metadata than a profile does not have to be looked for behind the start of the picture.
    bool takeScan(const JpegMarker& marker)
    {
        if (!m_leftOut.metadata) {
            m_pieces.keepFrom(marker.at);
            m_isDone = true;
            return !m_lacksProfile || !m_hasList;
        }
        const auto end = endOfCodedData(m_descriptor, m_at);
        if (!end) return false;
        m_pieces.keep(marker.at, *end - marker.at);
        m_at = *end;
        return true;
    }

    bool takeSegment(const JpegMarker& marker)
    {
        const std::uint64_t contentAt = marker.at + JpegMarker::headSize;
        const auto content = bytesAt(m_descriptor, contentAt, marker.end() - contentAt);
        if (!content) return false;
        const Use use = useOf(marker.code, *content);
        m_hasList = m_hasList || use == Use::pictureList;
        if (use == Use::profile && m_leftOut.profile) {
            m_lacksProfile = true;
        } else if (use == Use::picture || use == Use::profile || !m_leftOut.metadata) {
            m_pieces.keep(marker.at, marker.size);
        } else if (use == Use::colors) {
            m_pieces.put(plainSegment(marker.code, *content));
        }
        return true;
    }

    int m_descriptor;
    LeftOut m_leftOut;
    FilePieces m_pieces;
    std::uint64_t m_at = 0;
    bool m_lacksProfile = false;
    bool m_hasList = false; // of pictures behind the first, by their distance
    bool m_isDone = false;
};

} // namespace

std::optional<FilePieces> jpegPieces(int descriptor, const LeftOut& leftOut)
{
    if (leftOut.metadata || leftOut.profile) return Walk(descriptor, leftOut).pieces();
    FilePieces whole;
    whole.keepFrom(0);
    return whole;
}

} // namespace lumora
