// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// WebP by the external encoder: what it is asked for, and what its failures are called.
#pragma once

#include "cwebp/cwebp.h"
#include "records/optimizer_settings.h"
#include "system/atomic_file.h"

#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::ImageOptimizer {

// The encoder of the running program, see findCwebp.
std::optional<std::filesystem::path> bundledCWebPExecutableURL();

// The value of the encoder's -metadata option.
std::string_view webPMetadataArgument(const OptimizerSettings& settings);

// The encoder's arguments but for the two files. A quality that is no integer of 64 bits ends the program.
std::vector<std::string> cwebpOptions(const OptimizerSettings& settings);

// Encodes the whole file, which still has to be given the name of the output. The source's metadata changes
// nothing: the PPM file cannot carry it. Blocks its thread until the encoder ends; a stop kills it. Throws
// ImageOptimizerError, and what `makePpm` throws.
AtomicFile encodeWebPWithCWebP(const PpmMaker& makePpm, const std::filesystem::path& output,
                               const OptimizerSettings& settings, const std::stop_token& stop);

} // namespace lumora::ImageOptimizer
