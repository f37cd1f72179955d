// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Which properties of the source travel into the output, and the quality it is encoded with.
#pragma once

#include "formats/image_destination.h"
#include "metadata/metadata.h"
#include "records/optimizer_settings.h"

#include <array>

namespace lumora::ImageOptimizer {

// The groups that "remove metadata" strips, in a fixed order.
inline constexpr std::array metadataKeys{MetadataGroup::exif, MetadataGroup::gps, MetadataGroup::tiff,
                                         MetadataGroup::iptc, MetadataGroup::png, MetadataGroup::jfif,
                                         MetadataGroup::gif};

DestinationProperties destinationProperties(const OptimizerSettings& settings,
                                            const Metadata& sourceMetadata = {},
                                            bool includeCompression = true);

} // namespace lumora::ImageOptimizer
