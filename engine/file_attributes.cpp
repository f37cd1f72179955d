// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/file_attributes.h"

#include "system/file_services.h"

namespace lumora::ImageOptimizer {

void preserveModificationDate(const std::filesystem::path& input, const std::filesystem::path& output)
{
    // A date that cannot be carried over is no reason to fail a finished file.
    if (const auto date = modificationDate(input)) static_cast<void>(setModificationDate(output, *date));
}

} // namespace lumora::ImageOptimizer
