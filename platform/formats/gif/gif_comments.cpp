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

// Calls visit(kind, data) for each that is whole.
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
            if (auto data = reader.takeBlocks()) visit(kind, std::move(*data));
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

} // namespace

std::vector<std::string> gifComments(std::span<const std::byte> gif)
{
    std::vector<std::string> comments;
    visitExtensions(gif, [&](std::byte kind, std::string data) {
        if (kind == comment && !data.empty()) comments.push_back(std::move(data));
    });
    return comments;
}

std::string gifProfile(std::span<const std::byte> gif)
{
    constexpr std::string_view mark = "ICCRGBG1012";
    std::string profile;
    visitExtensions(gif, [&](std::byte kind, const std::string& data) {
        if (kind == application && data.starts_with(mark)) profile = data.substr(mark.size());
    });
    return profile;
}

std::vector<std::byte> withGifComments(std::vector<std::byte> gif, const std::vector<std::string>& comments)
{
    GifReader reader(gif);
    reader.skipHeader();
    if (comments.empty() || reader.position() == gif.size()) return gif;
    std::vector<std::byte> added;
    for (const std::string& text : comments)
        appendComment(added, text);
    gif.insert(gif.begin() + static_cast<std::ptrdiff_t>(reader.position()), added.begin(), added.end());
    return gif;
}

} // namespace lumora
