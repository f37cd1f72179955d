// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One function a format: the bytes of a whole file with a picture in storable form (see storableImage), its
// attached colour profile and the given metadata. For the codec layer only; any thread.
#pragma once

#include "metadata/metadata_blocks.h"
#include "system/result.h"

#include <cstddef>
#include <vector>

struct _VipsImage;

namespace lumora {

using Bytes = std::vector<std::byte>;

struct EncodeRequest
{
    _VipsImage* image;
    int quality; // 1 to 100
    // A picture that was not redrawn keeps its colour model even where a palette would be smaller.
    bool keepsModel;
    const MetadataBlobs& metadata;
};

// Below this quality the colours may be stored at half the resolution; from here on people ask for every
// edge.
inline constexpr int fullChromaQuality = 90;

Result<Bytes> encodeJpeg(const EncodeRequest& request);
Result<Bytes> encodePng(const EncodeRequest& request);
Result<Bytes> encodeHeic(const EncodeRequest& request);
Result<Bytes> encodeTiff(const EncodeRequest& request);
Result<Bytes> encodeGif(const EncodeRequest& request);
Result<Bytes> encodeBmpFile(const EncodeRequest& request);

bool canEncodeHeic();

} // namespace lumora
