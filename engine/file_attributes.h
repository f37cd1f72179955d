// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Attributes that an output takes over from its input.
#pragma once

#include <filesystem>

namespace lumora::ImageOptimizer {

// Gives the output the input's modification date; does nothing when either file refuses.
void preserveModificationDate(const std::filesystem::path& input, const std::filesystem::path& output);

} // namespace lumora::ImageOptimizer
