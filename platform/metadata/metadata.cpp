// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/metadata.h"

namespace lumora {

void Metadata::remove(MetadataGroup group)
{
    switch (group) {
    case MetadataGroup::exif:
        exif.clear();
        return;
    case MetadataGroup::gps:
        gps.clear();
        return;
    case MetadataGroup::tiff:
        tiff.clear();
        return;
    case MetadataGroup::iptc:
        iptc.clear();
        return;
    case MetadataGroup::png:
        pngTexts.clear();
        pngDensity = {};
        pngTime.clear();
        return;
    case MetadataGroup::jfif:
        jfifDensity = {};
        jpegComments.clear();
        return;
    case MetadataGroup::gif:
        gifComments.clear();
        return;
    }
}

} // namespace lumora
