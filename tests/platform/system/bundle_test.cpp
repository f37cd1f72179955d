// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/bundle.h"

#include "system/child_process.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

class InfoDictionary : public testing::Test
{
protected:
    std::optional<std::string> valueIn(std::string_view dictionary, std::string_view key) const
    {
        std::filesystem::create_directories(m_bundle / "Contents");
        test::writeFile(m_bundle / "Contents" / "Info.plist", dictionary);
        return infoDictionaryValue(m_bundle.path(), key);
    }

    const test::TemporaryDirectory m_bundle;
};

constexpr std::string_view dictionary = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//EXAMPLE//DTD PLIST 1.0//EN" "http://example.org/plist.dtd">
<plist version="1.0">
<dict>
  <!-- <key>CFBundleVersion</key><string>commented</string> -->
  <key>Nested</key>
  <dict><key>CFBundleVersion</key><string>nested</string></dict>
  <key>CFBundleShortVersionString</key>
  <string>1.2.3 &amp; more</string>
  <key>CFBundleVersion</key>
  <integer>7</integer>
  <key>Empty</key>
  <string/>
</dict>
</plist>
)";

TEST_F(InfoDictionary, GivesTheStringUnderAKey)
{
    EXPECT_EQ(valueIn(dictionary, "CFBundleShortVersionString"), "1.2.3 & more");
    EXPECT_EQ(valueIn(dictionary, "Empty"), "");
}

TEST_F(InfoDictionary, HasNoValueForAMissingKeyOrAnotherKindOfValue)
{
    EXPECT_EQ(valueIn(dictionary, "Missing"), std::nullopt);
    EXPECT_EQ(valueIn(dictionary, "CFBundleVersion"), std::nullopt);
    EXPECT_EQ(valueIn(dictionary, "Nested"), std::nullopt);
}

TEST_F(InfoDictionary, SurvivesADamagedOrMissingFile)
{
    EXPECT_EQ(valueIn("", "Key"), std::nullopt);
    EXPECT_EQ(valueIn("bplist00\xFF\xFE", "Key"), std::nullopt);
    EXPECT_EQ(valueIn("<plist><dict><key>Key</key><string>cut", "Key"), std::nullopt);
    EXPECT_EQ(infoDictionaryValue(m_bundle / "none", "Key"), std::nullopt);
}

TEST(MainBundle, IsTheFolderOfAProgramOutsideABundle)
{
    EXPECT_EQ(mainBundlePath(), std::filesystem::read_symlink("/proc/self/exe").parent_path());
}

// Runs this very program again from inside a bundle; see the branch below.
TEST(MainBundle, IsTheBundleOfAProgramInside)
{
    if (const char* expected = std::getenv("LUMORA_TEST_EXPECTED_BUNDLE")) {
        ASSERT_EQ(mainBundlePath(), expected);
        return;
    }
    const test::TemporaryDirectory folder;
    const std::filesystem::path programs = folder / "Lumora" / "Contents" / "MacOS";
    std::filesystem::create_directories(programs);
    std::filesystem::copy_file("/proc/self/exe", programs / "program");
    setenv("LUMORA_TEST_EXPECTED_BUNDLE", (folder / "Lumora").c_str(), 1);
    const auto outcome =
        runProcess(programs / "program", {"--gtest_filter=MainBundle.IsTheBundleOfAProgramInside"});
    unsetenv("LUMORA_TEST_EXPECTED_BUNDLE");
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->exitStatus, 0);
}

} // namespace
} // namespace lumora
