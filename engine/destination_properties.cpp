// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/destination_properties.h"

namespace lumora::ImageOptimizer {

ImageProperties destinationProperties(const OptimizerSettings& settings,
                                      const ImageProperties& sourceProperties, bool includeCompression)
{
    ImageProperties properties = settings.removeMetadata ? ImageProperties{} : sourceProperties;
    if (includeCompression && settings.outputFormat != OutputFormat::png) {
        properties[PropertyKey::lossyCompressionQuality] =
            settings.usesLossyCompression() ? settings.normalizedQuality() : 1.0;
    }
    if (settings.removeMetadata) {
        for (const PropertyKey key : metadataKeys)
            properties.erase(key);
    }
    // The pixels stand upright already; a tag would turn them a second time.
    properties.erase(PropertyKey::orientation);
    if (settings.removeColorManagement) {
        properties.erase(PropertyKey::colorModel);
        properties.erase(PropertyKey::profileName);
    }
    return properties;
}

} // namespace lumora::ImageOptimizer
