// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Which properties of the source travel into the output, and the quality it is encoded with.
#pragma once

#include "metadata/metadata.h"
#include "records/optimizer_settings.h"

#include <array>

namespace lumora::ImageOptimizer {

// The groups that "remove metadata" strips, in a fixed order.
inline constexpr std::array metadataKeys{PropertyKey::exif, PropertyKey::gps, PropertyKey::tiff,
                                         PropertyKey::iptc, PropertyKey::png, PropertyKey::jfif,
                                         PropertyKey::gif};

ImageProperties destinationProperties(const OptimizerSettings& settings,
                                      const ImageProperties& sourceProperties = {},
                                      bool includeCompression = true);

} // namespace lumora::ImageOptimizer
