// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_metadata.h"

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

void appendText(Bytes& png, const std::string& keyword, const std::string& text)
{
    const bool isAscii = std::ranges::all_of(text, [](unsigned char c) { return c < 0x80; });
    if (isAscii) {
        appendChunk(png, "tEXt", keyword + '\0' + text);
    } else {
        // Not compressed, of no stated language, the keyword not translated.
        appendChunk(png, "iTXt", keyword + std::string("\0\0\0\0\0"sv) + text);
    }
}

} // namespace

void appendPngMetadata(Bytes& png, const MetadataBlobs& metadata)
{
    appendDensity(png, metadata.resolution);
    if (!metadata.exif.empty()) appendChunk(png, "eXIf", metadata.exif);
    if (!metadata.xmp.empty()) {
        appendChunk(png, "iTXt", std::string("XML:com.adobe.xmp\0\0\0\0\0"sv) + metadata.xmp);
    }
    if (!metadata.iptc.empty()) {
        appendChunk(png, "zTXt",
                    std::string("Raw profile type iptc\0\0"sv) + deflated(rawProfileText(metadata.iptc)));
    }
    for (const auto& [keyword, text] : metadata.texts)
        appendText(png, keyword, text);
}

} // namespace lumora
