// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_texts.h"

#include "metadata/png_chunk_reader.h"
#include "system/utf8.h"

#include <libdeflate.h>

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <memory>
#include <optional>
#include <string_view>

namespace lumora {
namespace {

constexpr std::size_t longestText = std::size_t{1} << 22U;
// A few kilobytes can unfold to millions, and a file can hold thousands of them.
constexpr std::size_t mostText = std::size_t{1} << 24U;

struct DecompressorDelete
{
    void operator()(libdeflate_decompressor* d) const { libdeflate_free_decompressor(d); }
};

std::string latin1AsUtf8(std::string_view text)
{
    std::string utf8;
    for (const char c : text)
        appendUtf8(utf8, static_cast<unsigned char>(c));
    return utf8;
}

std::optional<std::string> inflated(std::string_view data)
{
    const std::unique_ptr<libdeflate_decompressor, DecompressorDelete> decompressor(
        libdeflate_alloc_decompressor());
    if (!decompressor) return std::nullopt;
    std::string text;
    for (std::size_t room = 1024; room <= longestText; room *= 4) {
        text.resize(room);
        std::size_t size = 0;
        const auto outcome = libdeflate_zlib_decompress(decompressor.get(), data.data(), data.size(),
                                                        text.data(), text.size(), &size);
        if (outcome == LIBDEFLATE_INSUFFICIENT_SPACE) continue;
        if (outcome != LIBDEFLATE_SUCCESS) return std::nullopt;
        text.resize(size);
        return text;
    }
    return std::nullopt;
}

// Takes the bytes before the next zero off the front, and the zero; empty optional without one.
std::optional<std::string_view> takeString(std::string_view& data)
{
    const std::size_t end = data.find('\0');
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view taken = data.substr(0, end);
    data.remove_prefix(end + 1);
    return taken;
}

// What follows the keyword in an international text: two flags, a language, the keyword in that language.
std::optional<std::string> internationalText(std::string_view data)
{
    if (data.size() < 2) return std::nullopt;
    const bool isCompressed = data[0] != 0;
    data.remove_prefix(2);
    if (!takeString(data) || !takeString(data)) return std::nullopt;
    auto text = isCompressed ? inflated(data) : std::optional<std::string>(data);
    if (text && !isUtf8(*text)) return std::nullopt;
    return text;
}

std::optional<std::string> textOfChunk(std::string_view type, std::string_view data)
{
    if (type == "iTXt") return internationalText(data);
    if (type == "tEXt") return latin1AsUtf8(data);
    // One byte names the compression, of which there is one.
    const auto text = data.empty() ? std::nullopt : inflated(data.substr(1));
    return text ? std::optional(latin1AsUtf8(*text)) : std::nullopt;
}

// Gives the bytes that were added.
std::size_t addText(std::vector<PngText>& texts, std::string_view type, std::string_view data)
{
    constexpr std::size_t longestKeyword = 79;
    const auto keyword = takeString(data);
    if (!keyword || keyword->empty() || keyword->size() > longestKeyword) return 0;
    auto text = textOfChunk(type, data);
    if (!text) return 0;
    texts.push_back({std::string(*keyword), std::move(*text)});
    return texts.back().text.size();
}

bool readAt(int descriptor, std::size_t offset, char* to, std::size_t size)
{
    return pread(descriptor, to, size, static_cast<off_t>(offset)) == static_cast<ssize_t>(size);
}

int digitValue(char digit)
{
    constexpr std::string_view digits = "0123456789abcdef";
    const auto at = digits.find(static_cast<char>(std::tolower(static_cast<unsigned char>(digit))));
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

// Behind a name and a length, each on a line of its own.
std::string fromHexadecimal(std::string_view text)
{
    constexpr int linesBefore = 3;
    for (int i = 0; i < linesBefore; ++i)
        text.remove_prefix(std::min(text.find('\n') + 1, text.size()));
    std::string bytes;
    int high = -1;
    for (const char c : text) {
        const int value = digitValue(c);
        if (value < 0) continue;
        if (high >= 0) bytes += static_cast<char>(high * 16 + value);
        high = high < 0 ? value : -1;
    }
    return bytes;
}

} // namespace

std::string xmpAmong(const std::vector<PngText>& texts)
{
    for (const PngText& text : texts) {
        if (text.keyword == "XML:com.adobe.xmp") return text.text;
        if (text.keyword == "Raw profile type xmp") return fromHexadecimal(text.text);
    }
    return {};
}

std::string readPngTime(int descriptor)
{
    constexpr std::size_t timeLength = 7;
    auto chunk = pngChunkAt(descriptor, firstPngChunk);
    for (; chunk && chunk->type != "IEND"; chunk = pngChunkAt(descriptor, chunk->end())) {
        std::string time(timeLength, '\0');
        if (chunk->type == "tIME" && chunk->length == timeLength &&
            readAt(descriptor, chunk->dataAt, time.data(), time.size()))
            return time;
    }
    return {};
}

std::vector<PngText> readPngTexts(int descriptor)
{
    std::vector<PngText> texts;
    std::size_t total = 0;
    auto chunk = pngChunkAt(descriptor, firstPngChunk);
    for (; chunk && chunk->type != "IEND" && total < mostText; chunk = pngChunkAt(descriptor, chunk->end())) {
        const bool isText = chunk->type == "tEXt" || chunk->type == "zTXt" || chunk->type == "iTXt";
        if (!isText || chunk->length > longestText) continue;
        std::string data(chunk->length, '\0');
        if (!readAt(descriptor, chunk->dataAt, data.data(), data.size())) break;
        total += addText(texts, chunk->type, data);
    }
    return texts;
}

} // namespace lumora
