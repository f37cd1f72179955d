// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/local/destination_properties.h"

namespace lumora::ImageOptimizer {

DestinationProperties destinationProperties(const OptimizerSettings& settings, const Metadata& sourceMetadata,
                                            bool includeCompression)
{
    DestinationProperties properties;
    if (!settings.removeMetadata) properties.metadata = sourceMetadata;
    if (includeCompression && settings.outputFormat != OutputFormat::png) {
        properties.lossyCompressionQuality =
            settings.usesLossyCompression() ? settings.normalizedQuality() : 1.0;
    }
    if (settings.removeMetadata) {
        for (const MetadataGroup group : metadataKeys)
            properties.metadata.remove(group);
    }
    // The pixels stand upright already; a tag would turn them a second time.
    properties.metadata.orientation.reset();
    if (settings.removeColorManagement) {
        properties.metadata.colorModel.clear();
        properties.metadata.profileName.clear();
    }
    return properties;
}

} // namespace lumora::ImageOptimizer
