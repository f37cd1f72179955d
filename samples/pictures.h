// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures made from nothing, written by the image library itself and not by the code under test. Each throws
// std::runtime_error when the library fails.
#pragma once

#include <cstdint>
#include <filesystem>

namespace lumora::samples {

struct SampleSize
{
    int width;
    int height;
};

// Something like a photograph: soft colours, structure at every scale and a little noise. Equal seeds give
// equal pictures. The type follows the name's extension.
void writePhotograph(const std::filesystem::path& file, SampleSize size, int seed);

// A photograph stored on its side, to be shown after a quarter turn to the right; `size` is the stored one.
void writeRotatedPhotograph(const std::filesystem::path& file, SampleSize size, int seed);

// A disc of colours that fades into transparency.
void writeDisc(const std::filesystem::path& file, SampleSize size);

// One colour everywhere, whatever the size; memory does not grow with it.
void writeOneColour(const std::filesystem::path& file, SampleSize size);

} // namespace lumora::samples
