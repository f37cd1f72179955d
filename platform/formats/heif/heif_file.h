// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a HEIF file holds beside its picture and the image library does not hand on.
#pragma once

#include "pixels/described_colors.h"

#include <optional>
#include <string>
#include <vector>

namespace lumora {

// Any thread; throws std::bad_alloc.
struct HeifExtras
{
    std::optional<std::string> xmp = "";     // the packet; empty without one, absent where it is too large
    std::vector<std::string> auxiliaryTypes; // what each further picture that belongs to the first is for
    std::optional<ColorDescription> colors;  // of the first picture, where they are told by numbers
};

// Empty when the file is damaged. Its position stays where it is.
HeifExtras heifExtras(int descriptor);

} // namespace lumora
