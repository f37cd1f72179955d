// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/library_versions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <exiv2/exiv2.hpp>
#include <lcms2.h>
#include <libheif/heif_version.h>
#include <vips/vips.h>

#include <map>

namespace lumora {
namespace {

std::map<std::string, std::string> versions()
{
    std::map<std::string, std::string> named;
    for (const LibraryVersion& library : imageLibraryVersions())
        named[library.name] = library.version;
    return named;
}

TEST(LibraryVersions, NameEveryLibraryOnce)
{
    EXPECT_EQ(imageLibraryVersions().size(), 5U);
    EXPECT_THAT(versions(), testing::UnorderedElementsAre(testing::Key("libvips"), testing::Key("zimg"),
                                                          testing::Key("Little CMS"), testing::Key("Exiv2"),
                                                          testing::Key("libheif")));
    for (const auto& [name, version] : versions())
        EXPECT_THAT(version, testing::MatchesRegex("[0-9]+\\.[0-9]+(\\.[0-9]+)*")) << name;
}

// The libraries at hand are those that the program was built with, up to repairs.
TEST(LibraryVersions, AreThoseOfTheHeaders)
{
    auto named = versions();
    EXPECT_THAT(named["libvips"], testing::StartsWith(std::to_string(VIPS_MAJOR_VERSION) + "." +
                                                      std::to_string(VIPS_MINOR_VERSION) + "."));
    EXPECT_EQ(named["Little CMS"],
              std::to_string(LCMS_VERSION / 1000) + "." + std::to_string(LCMS_VERSION % 1000 / 10));
    EXPECT_THAT(named["Exiv2"], testing::StartsWith(std::to_string(EXIV2_MAJOR_VERSION) + "." +
                                                    std::to_string(EXIV2_MINOR_VERSION) + "."));
    EXPECT_THAT(named["libheif"], testing::StartsWith(std::to_string(LIBHEIF_NUMERIC_VERSION >> 24U) + "."));
}

} // namespace
} // namespace lumora
