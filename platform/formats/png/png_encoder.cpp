// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A PNG writer of our own, because the size of the file is what people come for: the exact colours go into a
// palette when they are few, filtering strategies are tried on a sample, and what is repeated is looked for
// as a picture repeats it (png/deflate_pieces.h). Samples are strips from all over the picture, so the pixels
// are held, filtered in their place.
#include "png/png_encoder.h"

#include "encoded_bytes.h"
#include "png/png_chunks.h"
#include "png/png_compression.h"
#include "png/png_layout.h"
#include "png/png_metadata.h"

#include <span>
#include <string>

namespace lumora {
namespace {

using namespace std::string_view_literals;

void appendPalette(Bytes& png, const std::vector<PaletteColor>& palette)
{
    std::string colors;
    std::string alphas;
    for (const PaletteColor& c : palette) {
        for (const std::uint8_t component : {c.red, c.green, c.blue})
            colors += static_cast<char>(component);
        if (c.alpha != 255) alphas += static_cast<char>(c.alpha);
    }
    appendChunk(png, "PLTE", colors);
    if (!alphas.empty()) appendChunk(png, "tRNS", alphas);
}

// Two bytes a component, however many bits the picture has.
std::string transparencyOf(const PngLayout& layout)
{
    std::string components;
    for (const std::uint8_t byte : layout.transparentColor) {
        if (layout.bitDepth < 16) components += '\0';
        components += static_cast<char>(byte);
    }
    return components;
}

// Everything before the pixels.
Bytes headOf(const PngLayout& layout, const EncodeRequest& request)
{
    const auto signature = std::as_bytes(std::span("\x89PNG\r\n\x1A\n"sv));
    Bytes png(signature.begin(), signature.end());
    std::string header = bigEndian(layout.width) + bigEndian(layout.height);
    header += static_cast<char>(layout.bitDepth);
    header += static_cast<char>(layout.colorType);
    header += "\0\0\0"sv; // deflate, five filters, not interlaced
    appendChunk(png, "IHDR", header);
    const std::string_view profile = blobOf(request.image, VIPS_META_ICC_NAME);
    if (!profile.empty()) appendChunk(png, "iCCP", std::string("ICC profile\0\0"sv) + deflated(profile));
    if (!layout.palette.empty()) appendPalette(png, layout.palette);
    if (!layout.transparentColor.empty()) appendChunk(png, "tRNS", transparencyOf(layout));
    appendPngMetadata(png, request.metadata, request.facts);
    return png;
}

} // namespace

Status encodePng(const EncodeRequest& request, OutputFile& file)
{
    auto layout = pngLayout(request.image, request.keepsModel);
    if (!layout) return layout.error();
    const Compression compression = bestCompression(*layout);
    if (auto status = file.append(headOf(*layout, request)); !status) return status;
    auto status = compressRows(*layout, compression, [&](ByteSpan piece) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
        return appendChunk(file, "IDAT", {reinterpret_cast<const char*>(piece.data()), piece.size()});
    });
    if (!status) return status;
    return appendChunk(file, "IEND", {});
}

} // namespace lumora
