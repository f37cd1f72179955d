// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The HEIF library's decoder of HEVC in our own hands. The library's passes over every damage that the codec
// notices, and shows what the codec made up instead.
#pragma once

namespace lumora {

// From here on the HEIF library decodes HEVC with it in the whole process, whoever asks. Any thread; throws
// std::bad_alloc.
void ensureHevcDecoder();

struct HevcWish
{
    // Where the stream says that its colours are the usual ones (hevc_rgb.h); in its components otherwise.
    bool isInRgb = false;
    // No other piece of the picture is decoded before or after, so that new memory need not be filled any
    // more once this one is whole (system/freed_memory.h).
    bool isAlone = false;
};

// For what this thread decodes from now on.
void wishForHevc(HevcWish wish);

} // namespace lumora
