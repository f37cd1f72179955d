// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/library_versions.h"

namespace lumora {

std::vector<LibraryVersion> imageLibraryVersions()
{
    return {
        {"libvips", LUMORA_VIPS}, {"zimg", LUMORA_ZIMG},    {"Little CMS", LUMORA_LCMS},
        {"Exiv2", LUMORA_EXIV2},  {"libheif", LUMORA_HEIF},
    };
}

} // namespace lumora
