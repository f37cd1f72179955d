// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/metadata.h"

namespace lumora {

const MetadataGroup& groupOf(const ImageProperties& properties, PropertyKey key)
{
    static const MetadataGroup none;
    const auto found = properties.find(key);
    return found == properties.end() ? none : std::get<MetadataGroup>(found->second);
}

MetadataGroup& groupIn(ImageProperties& properties, PropertyKey key)
{
    return std::get<MetadataGroup>(properties.try_emplace(key, MetadataGroup{}).first->second);
}

} // namespace lumora
