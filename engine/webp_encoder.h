// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// WebP by the external encoder `cwebp`: the picture goes to it as a temporary binary PPM file and comes back
// as a temporary WebP file. Blocks its thread until the encoder ends, without a time limit.
#pragma once

#include "metadata/metadata.h"
#include "pixels/image.h"
#include "records/optimizer_settings.h"

#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::ImageOptimizer {

// The encoder to run: what LUMORA_CWEBP_PATH names when that is executable, else Contents/MacOS/cwebp of the
// bundle. Looked up anew for every file.
std::optional<std::filesystem::path> bundledCWebPExecutableURL(const std::filesystem::path& bundleURL);

// The value of the encoder's -metadata option.
std::string_view webPMetadataArgument(const OptimizerSettings& settings);

std::vector<std::string> cwebpArguments(const OptimizerSettings& settings, const std::filesystem::path& ppm,
                                        const std::filesystem::path& webp);

struct WebPEncoding
{
    std::filesystem::path bundleURL;
    std::stop_token kill; // ends a running encoder
};

// Encodes to the output URL, where no file may be. The source's properties change nothing yet: the PPM file
// cannot carry them. Leaves no temporary file on any way out. Throws ImageOptimizerError.
void encodeWebPWithCWebP(const Image& image, const std::filesystem::path& output,
                         const OptimizerSettings& settings, const ImageProperties& sourceProperties,
                         const WebPEncoding& encoding);

} // namespace lumora::ImageOptimizer
