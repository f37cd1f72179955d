// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "gif/gif_comments.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace lumora {
namespace {

constexpr std::byte extension{0x21};
constexpr std::byte comment{0xFE};
constexpr std::byte application{0xFF};
constexpr std::byte picture{0x2C};
constexpr std::size_t longestBlock = 255;
constexpr std::string_view xmpMark = "XMP DataXMP";
constexpr std::size_t xmpTrailer = 258;

// Walks through the blocks of a file. What lies beyond its end reads as the mark of the end.
class GifReader
{
public:
    explicit GifReader(std::span<const std::byte> gif) : m_gif(gif) {}

    std::size_t position() const { return m_at; }
    std::byte take() { return m_at < m_gif.size() ? m_gif[m_at++] : std::byte{0x3B}; }
    void skip(std::size_t count) { m_at = std::min(m_at + count, m_gif.size()); }

    // The packed byte that ends at the current position tells of a colour table behind `more` bytes.
    void skipColorTable(std::size_t more)
    {
        const auto packed = std::to_integer<unsigned>(take());
        skip(more);
        if ((packed & 0x80U) != 0) skip(std::size_t{3} << ((packed & 7U) + 1));
    }

    void skipHeader()
    {
        constexpr std::size_t beforePacked = 10; // signature and size
        skip(beforePacked);
        skipColorTable(2);
    }

    void skipPicture()
    {
        constexpr std::size_t placeAndSize = 8;
        skip(placeAndSize);
        skipColorTable(0);
        skip(1);
        takeBlocks();
    }

    // Blocks of up to 255 bytes until an empty one; absent when the file ends before.
    std::optional<std::string> takeBlocks()
    {
        std::string text;
        while (m_at < m_gif.size()) {
            const auto size = std::to_integer<std::size_t>(take());
            if (size == 0) return text;
            const auto block = m_gif.subspan(m_at, std::min(size, m_gif.size() - m_at));
            std::ranges::transform(block, std::back_inserter(text),
                                   [](std::byte b) { return std::to_integer<char>(b); });
            skip(size);
        }
        return std::nullopt;
    }

private:
    std::span<const std::byte> m_gif;
    std::size_t m_at = 0;
};

std::string textOf(std::span<const std::byte> bytes)
{
    std::string text(bytes.size(), '\0');
    std::ranges::transform(bytes, text.begin(), [](std::byte b) { return std::to_integer<char>(b); });
    return text;
}

// Calls visit(kind, data, raw) for each that is whole; `raw` has the lengths of the blocks in it.
template <class Visit>
void visitExtensions(std::span<const std::byte> gif, Visit visit)
{
    GifReader reader(gif);
    reader.skipHeader();
    for (;;) {
        const std::byte mark = reader.take();
        if (mark == picture) {
            reader.skipPicture();
        } else if (mark == extension) {
            const std::byte kind = reader.take();
            const std::size_t start = reader.position();
            if (auto data = reader.takeBlocks())
                visit(kind, std::move(*data), gif.subspan(start, reader.position() - start));
        } else {
            return;
        }
    }
}

void appendComment(std::vector<std::byte>& bytes, std::string_view text)
{
    bytes.push_back(extension);
    bytes.push_back(comment);
    for (; !text.empty(); text.remove_prefix(std::min(text.size(), longestBlock))) {
        const auto block = text.substr(0, longestBlock);
        bytes.push_back(static_cast<std::byte>(block.size()));
        std::ranges::transform(block, std::back_inserter(bytes), [](char c) { return std::byte(c); });
    }
    bytes.push_back(std::byte{0});
}

// The packet stands there as it is, its letters being taken for lengths of blocks by whoever does not know
// it; the trailer leads each of them to the end. Adobe, XMP specification part 3, section on GIF.
void appendXmp(std::vector<std::byte>& bytes, std::string_view packet)
{
    bytes.push_back(extension);
    bytes.push_back(application);
    bytes.push_back(std::byte{xmpMark.size()});
    const auto append = [&](std::string_view text) {
        std::ranges::transform(text, std::back_inserter(bytes), [](char c) { return std::byte(c); });
    };
    append(xmpMark);
    append(packet);
    bytes.push_back(std::byte{1});
    for (int value = 255; value >= 0; --value)
        bytes.push_back(static_cast<std::byte>(value));
    bytes.push_back(std::byte{0});
}

} // namespace

std::vector<std::string> gifComments(std::span<const std::byte> gif)
{
    std::vector<std::string> comments;
    visitExtensions(gif, [&](std::byte kind, std::string data, auto) {
        if (kind == comment && !data.empty()) comments.push_back(std::move(data));
    });
    return comments;
}

std::string gifProfile(std::span<const std::byte> gif)
{
    constexpr std::string_view mark = "ICCRGBG1012";
    std::string profile;
    visitExtensions(gif, [&](std::byte kind, const std::string& data, auto) {
        if (kind == application && data.starts_with(mark)) profile = data.substr(mark.size());
    });
    return profile;
}

std::string gifXmp(std::span<const std::byte> gif)
{
    std::string packet;
    visitExtensions(gif, [&](std::byte kind, const std::string& data, std::span<const std::byte> raw) {
        const std::size_t head = 1 + xmpMark.size();
        if (kind == application && data.starts_with(xmpMark) && raw.size() > head + xmpTrailer)
            packet = textOf(raw.subspan(head, raw.size() - head - xmpTrailer));
    });
    return packet;
}

std::vector<std::byte> withGifMetadata(std::vector<std::byte> gif, const std::vector<std::string>& comments,
                                       const std::string& xmp)
{
    GifReader reader(gif);
    reader.skipHeader();
    if (reader.position() == gif.size()) return gif;
    std::vector<std::byte> added;
    for (const std::string& text : comments)
        appendComment(added, text);
    if (!xmp.empty()) appendXmp(added, xmp);
    gif.insert(gif.begin() + static_cast<std::ptrdiff_t>(reader.position()), added.begin(), added.end());
    return gif;
}

} // namespace lumora
