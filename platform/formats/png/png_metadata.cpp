// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_metadata.h"

#include "metadata/remarks.h"
#include "metadata/resolution.h"
#include "png/png_chunks.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace lumora {
namespace {

using namespace std::string_view_literals;

// IPTC has no chunk of its own; readers know it as a hexadecimal text under this keyword.
std::string rawProfileText(std::string_view iptc)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "\niptc\n" + std::to_string(iptc.size()) + "\n";
    for (std::size_t i = 0; i < iptc.size(); ++i) {
        const auto byte = static_cast<unsigned char>(iptc[i]);
        text += digits[byte >> 4U];
        text += digits[byte & 0xFU];
        if (i % 36 == 35) text += '\n';
    }
    return text + "\n";
}

void appendDensity(Bytes& png, const Resolution& resolution)
{
    constexpr double inchesInMetre = 1 / 0.0254;
    const auto perMetre = [](double dots) {
        return bigEndian(static_cast<std::size_t>(std::lround(dots * inchesInMetre)));
    };
    if (resolution.isKnown())
        appendChunk(png, "pHYs", perMetre(resolution.x) + perMetre(resolution.y) + '\1');
}

// XMP and what some programs store as hexadecimal text.
bool isWrittenOnItsOwn(const std::string& keyword)
{
    return keyword.starts_with("XML:") || keyword.starts_with("Raw profile type ");
}

void appendText(Bytes& png, const PngText& text)
{
    const bool isAscii = std::ranges::all_of(text.text, [](unsigned char c) { return c < 0x80; });
    if (isAscii) {
        appendChunk(png, "tEXt", text.keyword + '\0' + text.text);
    } else {
        // Not compressed, of no stated language, the keyword not translated.
        appendChunk(png, "iTXt", text.keyword + std::string("\0\0\0\0\0"sv) + text.text);
    }
}

// A text ends at the chunk's end; a zero in it would end it for readers.
std::string textOf(const std::string& remark)
{
    std::string text = remarkAsUtf8(remark);
    std::erase(text, '\0');
    return text;
}

} // namespace

void appendPngMetadata(Bytes& png, const Metadata& metadata, const PictureFacts& facts)
{
    appendDensity(png, resolutionOf(metadata));
    if (const std::string exif = exifBlock(metadata, facts); !exif.empty()) appendChunk(png, "eXIf", exif);
    if (const std::string xmp = xmpPacket(metadata, facts); !xmp.empty())
        appendChunk(png, "iTXt", std::string("XML:com.adobe.xmp\0\0\0\0\0"sv) + xmp);
    if (const std::string iptc = iptcBlock(metadata); !iptc.empty()) {
        appendChunk(png, "zTXt", std::string("Raw profile type iptc\0\0"sv) + deflated(rawProfileText(iptc)));
    }
    constexpr std::size_t timeLength = 7;
    if (metadata.pngTime.size() == timeLength) appendChunk(png, "tIME", metadata.pngTime);
    for (const auto* remarks : {&metadata.jpegComments, &metadata.gifComments}) {
        for (const std::string& remark : *remarks)
            appendText(png, {std::string(remarkKeyword), textOf(remark)});
    }
    for (const PngText& text : metadata.pngTexts) {
        if (!isWrittenOnItsOwn(text.keyword)) appendText(png, text);
    }
}

} // namespace lumora
