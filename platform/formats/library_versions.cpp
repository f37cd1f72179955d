// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/library_versions.h"

#include <exiv2/exiv2.hpp>
#include <lcms2.h>
#include <libheif/heif.h>
#include <vips/vips.h>
#include <zimg.h>

namespace lumora {

namespace {

std::string dotted(unsigned major, unsigned minor, unsigned micro)
{
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(micro);
}

unsigned vipsVersion(int part)
{
    return static_cast<unsigned>(vips_version(part));
}

std::string zimgVersion()
{
    unsigned major = 0;
    unsigned minor = 0;
    unsigned micro = 0;
    zimg_get_version_info(&major, &minor, &micro);
    return dotted(major, minor, micro);
}

// The library gives 2.14 as 2140.
std::string lcmsVersion()
{
    const auto version = static_cast<unsigned>(cmsGetEncodedCMMversion());
    return std::to_string(version / 1000) + "." + std::to_string(version % 1000 / 10);
}

} // namespace

std::vector<LibraryVersion> imageLibraryVersions()
{
    return {
        {"libvips", dotted(vipsVersion(0), vipsVersion(1), vipsVersion(2))},
        {"zimg", zimgVersion()},
        {"Little CMS", lcmsVersion()},
        {"Exiv2", Exiv2::versionString()},
        {"libheif", heif_get_version()},
    };
}

} // namespace lumora
