// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How much memory a file will take, from its head alone. An estimate, and rather too high than too low. Pure
// function; thread-safe for different sources.
#pragma once

#include "formats/image_source.h"
#include "records/optimizer_settings.h"

#include <cstdint>

namespace lumora::ImageOptimizer {

// Bytes, of this program and of an external encoder together.
std::int64_t memoryNeed(const ImageSource& source, const OptimizerSettings& settings);

} // namespace lumora::ImageOptimizer
