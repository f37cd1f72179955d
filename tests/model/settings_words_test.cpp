// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/settings_words.h"

#include "tests/support/settings.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace lumora {
namespace {

using test::settings;

TEST(SettingsWords, SayWhatABatchWasGiven)
{
    EXPECT_EQ(settingsWords(settings()),
              "WebP Lossy, quality 82, at most 2560 wide, sRGB, without profile, without metadata");
    EXPECT_EQ(settingsWords(settings({.resizeMode = ResizeMode::none,
                                      .outputFormat = OutputFormat::png,
                                      .optimizeColorForSharing = false,
                                      .removeColorManagement = false,
                                      .removeMetadata = false,
                                      .moveOriginalToTrash = true})),
              "PNG, not resized, originals to the Trash");
    EXPECT_EQ(settingsWords(settings({.resizeMode = ResizeMode::longestEdge,
                                      .maximumPixels = 800,
                                      .outputFormat = OutputFormat::jpeg,
                                      .quality = 70.5,
                                      .removeColorManagement = false})),
              "JPEG, quality 70.5, at most 800 wide and high, sRGB, without metadata");
}

TEST(SettingsWords, NameTheFolderFromTheRootOn)
{
    EXPECT_THAT(settingsWords(settings({.destinationMode = DestinationMode::selectedFolder,
                                        .destinationFolderURL = std::filesystem::path("out")})),
                testing::EndsWith(", to " + (std::filesystem::current_path() / "out").native()));
}

} // namespace
} // namespace lumora
