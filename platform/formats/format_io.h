// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What reads and writes the files of a format. Every function may run on any thread.
#pragma once

#include "file_pieces.h"
#include "formats/encoded_shape.h"
#include "formats/left_out.h"
#include "formats/source_facts.h"
#include "metadata/blocks.h"
#include "metadata/metadata.h"
#include "pixels/row_stream.h"
#include "pixels/vips_library.h"
#include "system/output_file.h"
#include "system/result.h"
#include "types/format.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace lumora {

using Bytes = std::vector<std::byte>;

struct FormatReader
{
    // The first picture of an open file as a lazy image to be read once from the top down. Data that the
    // decoder reports as truncated or in error fails, here or when rows are read; mere warnings pass. The
    // descriptor stays the caller's.
    Result<VipsImagePtr> (*load)(int descriptor);
    // What the file says beside its pixels, and what the image library does not know of its pictures. Notes
    // on the image how its components were stored, where they no longer tell, and colours that are told in
    // numbers.
    void (*describe)(int descriptor, _VipsImage* image, Metadata& metadata, SourceFacts& facts);
    // The picture at 1/divisor (2, 4, 8) of its size, rounded up, as its codec can compute it from the lower
    // frequencies alone. Otherwise like `load`. May be null.
    Result<VipsImagePtr> (*loadReduced)(int divisor, int descriptor) = nullptr;
    // The image library's operation behind `load`, which is blocked until it is named here. May be null.
    const char* operation = nullptr;
    // Whether the decoder leaves what it cannot decode of a damaged picture as its memory was.
    bool leavesHoles = false;
    // About how many bytes the decoder holds of the picture besides a few rows; null for none.
    std::int64_t (*heldBytes)(_VipsImage* image) = nullptr;
    // What copyFile() takes of a file; absent where it has to refuse. Null where there are no such copies.
    std::optional<FilePieces> (*pieces)(int descriptor, const LeftOut& leftOut) = nullptr;
};

// Bytes of the picture as stored, for decoders that hold it whole, so often.
inline std::int64_t wholePicture(_VipsImage* image, int times = 1)
{
    return times * static_cast<std::int64_t>(rowBytesOf(image)) * streamFormOf(image).height;
}

struct EncodeRequest
{
    _VipsImage* image; // in storable form, see storableImage; its rows may be had once
    int quality;       // 1 to 100
    // A picture that was not redrawn keeps its colour model even where a palette would be smaller.
    bool keepsModel;
    const Metadata& metadata;
    PictureFacts facts;
};

struct FormatWriter
{
    // Writes the whole file with the picture, its attached colour profile and what the format holds of the
    // metadata, taking the picture's rows once, from the top down, and holding no more of it than the format
    // demands. Null when an external encoder writes the format. Throws std::bad_alloc.
    Status (*encode)(const EncodeRequest& request, OutputFile& file);
    bool (*isAvailable)() = nullptr; // null when it always is
    const char* operation = nullptr; // as of the reader
    // About how many bytes the encoder holds of the picture besides a few rows; null for none.
    std::int64_t (*heldBytes)(const EncodedShape& shape) = nullptr;
};

// Below this quality the colours may be stored at half the resolution; from here on people ask for every
// edge.
inline constexpr int fullChromaQuality = 90;

struct Codec
{
    const Format& format;
    FormatReader reader;
    std::optional<FormatWriter> writer = {}; // absent when the format is not written
};

// Each defined beside what it is made of.
extern const Codec jpegCodec;
extern const Codec pngCodec;
extern const Codec gifCodec;
extern const Codec tiffCodec;
extern const Codec bmpCodec;
extern const Codec heicCodec;
extern const Codec heifCodec;
extern const Codec avifCodec;
extern const Codec webpCodec;

// Every format has one.
const Codec& codecOf(const Format& format);

// Lets the image library run the operations that the table names, and no others. To be called before one
// runs.
void allowOperations();

} // namespace lumora
