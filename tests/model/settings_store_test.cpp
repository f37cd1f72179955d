// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/settings_store.h"

#include "model/folder_bookmark.h"
#include "tests/model/event_loop.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <QSettings>
#include <QStringList>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <limits>

namespace lumora {
namespace {

using test::TemporaryDirectory;
namespace fs = std::filesystem;

class SettingsStoreTest : public ::testing::Test
{
protected:
    TemporaryDirectory m_directory;
    const fs::path m_file = m_directory / "Lumora.ini";

    QString fileName() const { return QString::fromStdString(m_file.string()); }
    void store(const std::string& lines) const { test::writeFile(m_file, "[General]\n" + lines + "\n"); }
    std::string stored() const { return test::readFile(m_file); }
};

TEST_F(SettingsStoreTest, FirstLaunchReadsTheDefaultsAndWritesNothing)
{
    SettingsStore store(fileName());
    const OptimizerSettings settings = store.snapshot();
    EXPECT_EQ(settings.resizeMode, ResizeMode::maxWidth);
    EXPECT_EQ(settings.maximumPixels, 2560);
    EXPECT_EQ(settings.outputFormat, OutputFormat::webp);
    EXPECT_EQ(settings.quality, 82.0);
    EXPECT_TRUE(settings.optimizeColorForSharing);
    EXPECT_TRUE(settings.removeColorManagement);
    EXPECT_TRUE(settings.removeMetadata);
    EXPECT_EQ(settings.destinationMode, DestinationMode::originalLocation);
    EXPECT_EQ(settings.destinationFolderURL, std::nullopt);
    EXPECT_EQ(settings.filenamePrefix, "");
    EXPECT_EQ(settings.filenameSuffix, "");
    EXPECT_FALSE(settings.moveOriginalToTrash);
    EXPECT_TRUE(settings.preserveModificationTime);
    EXPECT_FALSE(settings.warnBeforeOverwrite);
    EXPECT_TRUE(settings.trashReplaced);
    EXPECT_FALSE(settings.skipOptimized);
    EXPECT_FALSE(settings.onlySmaller);
    EXPECT_FALSE(settings.keepFolders);
    EXPECT_TRUE(store.settings().keepHistory());
    EXPECT_FALSE(store.settings().exitWhenComplete());
    EXPECT_FALSE(store.settings().quitWhenClosed());
    EXPECT_FALSE(fs::exists(m_file));
}

TEST_F(SettingsStoreTest, SafetyAndOrderReachTheBatch)
{
    SettingsStore store(fileName());
    store.settings().trashReplaced.set(false);
    store.settings().skipOptimized.set(true);
    store.settings().onlySmaller.set(true);
    store.settings().keepFolders.set(true);
    const OptimizerSettings settings = store.snapshot();
    EXPECT_FALSE(settings.trashReplaced);
    EXPECT_TRUE(settings.skipOptimized);
    EXPECT_TRUE(settings.onlySmaller);
    EXPECT_TRUE(settings.keepFolders);
}

TEST_F(SettingsStoreTest, EverySettingComesBackInTheNextLaunch)
{
    {
        LumoraSettings settings(fileName());
        settings.resizeMode.set(ResizeMode::none);
        settings.maximumPixels.set(-5'000'000'000);
        settings.outputFormat.set(OutputFormat::webpLossless);
        settings.quality.set(0.1);
        settings.optimizeColorForSharing.set(false);
        settings.destinationMode.set(DestinationMode::selectedFolder);
        settings.filenamePrefix.set(QStringLiteral("a, \"b\" ä=;@%\\"));
        settings.filenameSuffix.set(QStringLiteral("@ 日本"));
        settings.exitWhenComplete.set(true);
    }
    LumoraSettings settings(fileName());
    EXPECT_EQ(settings.resizeMode(), ResizeMode::none);
    EXPECT_EQ(settings.maximumPixels(), -5'000'000'000);
    EXPECT_EQ(settings.outputFormat(), OutputFormat::webpLossless);
    EXPECT_EQ(settings.quality(), 0.1);
    EXPECT_FALSE(settings.optimizeColorForSharing());
    EXPECT_EQ(settings.destinationMode(), DestinationMode::selectedFolder);
    EXPECT_EQ(settings.filenamePrefix(), QStringLiteral("a, \"b\" ä=;@%\\"));
    EXPECT_EQ(settings.filenameSuffix(), QStringLiteral("@ 日本"));
    EXPECT_TRUE(settings.exitWhenComplete());
}

TEST_F(SettingsStoreTest, OnlyWhatIsAssignedIsWritten)
{
    LumoraSettings(fileName()).outputFormat.set(OutputFormat::jpeg);
    EXPECT_NE(stored().find("outputFormat=jpeg"), std::string::npos);
    EXPECT_EQ(stored().find("quality"), std::string::npos);
}

TEST_F(SettingsStoreTest, WhatIsNoValueOfItsTypeReadsAsTheDefaultAndStaysStored)
{
    const std::string lines = "resizeMode=MAXHEIGHT\nmaximumPixels=12.5\noutputFormat=gif\nquality=nan\n"
                              "optimizeColorForSharing=maybe\nremoveMetadata=\nfilenamePrefix=a, b\n"
                              "destinationMode=@Invalid()\nremoveColorManagement=@Size(1 2)";
    store(lines);
    LumoraSettings settings(fileName());
    EXPECT_EQ(settings.resizeMode(), ResizeMode::maxWidth);
    EXPECT_EQ(settings.maximumPixels(), 2560);
    EXPECT_EQ(settings.outputFormat(), OutputFormat::webp);
    EXPECT_EQ(settings.quality(), 82.0);
    EXPECT_TRUE(settings.optimizeColorForSharing());
    EXPECT_TRUE(settings.removeMetadata());
    EXPECT_EQ(settings.filenamePrefix(), QString());
    EXPECT_EQ(settings.destinationMode(), DestinationMode::originalLocation);
    EXPECT_TRUE(settings.removeColorManagement());
    EXPECT_EQ(stored(), "[General]\n" + lines + "\n");
}

// The toolkit takes a truth value and a number, or a list and a text, for equal when one can be turned into
// the other.
TEST_F(SettingsStoreTest, AValueOfAnotherTypeIsReplacedByItsNearestText)
{
    store("quality=@Variant(\\0\\0\\0\\x1\\x1)");
    LumoraSettings settings(fileName());
    EXPECT_EQ(settings.quality(), 82.0);
    QStringList told;
    QObject::connect(&settings, &LumoraSettings::changed, [&](const QString& key) { told.append(key); });
    settings.quality.set(1);
    EXPECT_EQ(settings.quality(), 1.0);
    EXPECT_EQ(told, QStringList(QStringLiteral("quality")));
    EXPECT_EQ(LumoraSettings(fileName()).quality(), 1.0);
}

TEST_F(SettingsStoreTest, ABadValueOutlivesTheAssignmentOfAnotherSetting)
{
    store("outputFormat=gif");
    LumoraSettings(fileName()).quality.set(50);
    EXPECT_NE(stored().find("quality=50"), std::string::npos);
    EXPECT_NE(stored().find("outputFormat=gif"), std::string::npos);
    LumoraSettings(fileName()).outputFormat.set(OutputFormat::png);
    EXPECT_EQ(stored().find("gif"), std::string::npos);
}

TEST_F(SettingsStoreTest, NumbersThatAreNotFiniteReadAsTheDefault)
{
    LumoraSettings settings(fileName());
    for (const char* number : {"nan", "inf", "-inf", "1e999", "82x", ""}) {
        store(std::string("quality=") + number);
        EXPECT_EQ(settings.quality(), 82.0) << number;
    }
    store("maximumPixels=9223372036854775808");
    EXPECT_EQ(settings.maximumPixels(), 2560);
}

TEST_F(SettingsStoreTest, AQualityBeyondTheScaleReachesTheSnapshotAsItIs)
{
    store("quality=250");
    SettingsStore store(fileName());
    EXPECT_EQ(store.snapshot().quality, 250.0);
    EXPECT_EQ(store.snapshot().normalizedQuality(), 1.0);
    EXPECT_EQ(store.settings().normalizedQuality(), 1.0);
}

TEST_F(SettingsStoreTest, LiveSettingsAndSnapshotAgreeOnCompression)
{
    SettingsStore store(fileName());
    for (OutputFormat format : allCases<OutputFormat>) {
        store.settings().outputFormat.set(format);
        EXPECT_EQ(store.settings().usesLossyCompression(), store.snapshot().usesLossyCompression());
    }
}

TEST_F(SettingsStoreTest, NoFolderIsChosenAtFirst)
{
    SettingsStore store(fileName());
    EXPECT_EQ(store.destinationFolderURL(), std::nullopt);
}

TEST_F(SettingsStoreTest, AChosenFolderOfAnyBytesIsFoundAgain)
{
    std::string name;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/') name += static_cast<char>(byte);
    }
    const fs::path folder = m_directory / name.substr(0, 250);
    fs::create_directory(folder);
    {
        SettingsStore store(fileName());
        store.setDestinationFolder(folder);
    }
    SettingsStore store(fileName());
    EXPECT_EQ(store.destinationFolderURL(), folder);
    EXPECT_EQ(store.snapshot().destinationFolderURL, folder);
}

TEST_F(SettingsStoreTest, ADeletedFolderResolvesToNoneAndStaysStored)
{
    SettingsStore store(fileName());
    const fs::path folder = m_directory / "gone";
    fs::create_directory(folder);
    store.setDestinationFolder(folder);
    fs::remove(folder);
    EXPECT_EQ(store.destinationFolderURL(), std::nullopt);
    EXPECT_EQ(store.settings().destinationFolderBookmark().toStdString(), folder.string());
    fs::create_directory(folder);
    EXPECT_EQ(store.destinationFolderURL(), folder);
}

TEST_F(SettingsStoreTest, ChoosingWhatIsNoFolderChangesNothing)
{
    SettingsStore store(fileName());
    store.setDestinationFolder(m_directory.path());
    store.setDestinationFolder(m_directory / "missing");
    EXPECT_EQ(store.destinationFolderURL(), m_directory.path());
}

TEST_F(SettingsStoreTest, OneViewsAssignmentIsToldToAll)
{
    LumoraSettings settings(fileName());
    QStringList told;
    QObject::connect(&settings, &LumoraSettings::changed, [&](const QString& key) { told.append(key); });
    settings.quality.set(70);
    settings.quality.set(70);
    settings.removeMetadata.set(false);
    test::handleEvents();
    EXPECT_EQ(told, QStringList({QStringLiteral("quality"), QStringLiteral("removeMetadata")}));
}

TEST_F(SettingsStoreTest, AnotherObjectsAssignmentIsReadAtOnceAndTold)
{
    LumoraSettings one(fileName());
    LumoraSettings other(fileName());
    QStringList told;
    QObject::connect(&other, &LumoraSettings::changed, [&](const QString& key) { told.append(key); });
    one.outputFormat.set(OutputFormat::heic);
    EXPECT_EQ(other.outputFormat(), OutputFormat::heic);
    EXPECT_TRUE(test::waitUntil([&] { return told.contains(QStringLiteral("outputFormat")); }));
}

TEST_F(SettingsStoreTest, AnOutsideEditOfTheFileIsReadAtOnceAndTold)
{
    LumoraSettings settings(fileName());
    QStringList told;
    QObject::connect(&settings, &LumoraSettings::changed, [&](const QString& key) { told.append(key); });
    for (const int quality : {7, 33, 100}) { // three sizes: writes in place keep a file's identity
        told.clear();
        store("quality=" + std::to_string(quality));
        EXPECT_EQ(settings.quality(), quality);
        EXPECT_TRUE(test::waitUntil([&] { return told.contains(QStringLiteral("quality")); })) << quality;
    }
}

TEST_F(SettingsStoreTest, AnEditOfAFileInAFolderThatDidNotExistIsTold)
{
    const fs::path folder = m_directory / "config";
    LumoraSettings settings(QString::fromStdString((folder / "Lumora.ini").string()));
    bool isTold = false;
    QObject::connect(&settings, &LumoraSettings::changed, [&] { isTold = true; });
    fs::create_directory(folder);
    test::handleEvents();
    test::writeFile(folder / "draft", "[General]\nquality=9\n");
    fs::rename(folder / "draft", folder / "Lumora.ini");
    EXPECT_TRUE(test::waitUntil([&] { return isTold; }));
    EXPECT_EQ(settings.quality(), 9.0);
}

TEST_F(SettingsStoreTest, GarbageReadsAsDefaultsAndCanBeReplaced)
{
    test::writeFile(m_file, std::string("\x00\xff\xfe[[[=\n=\n%%%\n@Variant(\\0\\0", 22));
    SettingsStore store(fileName());
    EXPECT_EQ(store.snapshot().quality, 82.0);
    store.settings().quality.set(40);
    EXPECT_EQ(LumoraSettings(fileName()).quality(), 40.0);
}

TEST_F(SettingsStoreTest, AFolderInPlaceOfTheFileKeepsTheValuesInMemory)
{
    fs::create_directory(m_file);
    LumoraSettings settings(fileName());
    settings.quality.set(40);
    EXPECT_EQ(settings.quality(), 40.0);
}

TEST_F(SettingsStoreTest, TwoWritersOfDifferentSettingsKeepBoth)
{
    store("quality=1");
    {
        LumoraSettings settings(fileName());
        EXPECT_EQ(settings.quality(), 1.0);
        store("quality=1\nmaximumPixels=77"); // another program, after this one has read
        settings.quality.set(2);
        EXPECT_EQ(settings.maximumPixels(), 77);
    }
    EXPECT_NE(stored().find("maximumPixels=77"), std::string::npos);
    EXPECT_NE(stored().find("quality=2"), std::string::npos);
}

pid_t startWriter(const fs::path& file, const char* setting)
{
    const pid_t child = ::fork();
    if (child != 0) return child;
    ::execl(LUMORA_WRITE_SETTING, LUMORA_WRITE_SETTING, file.c_str(), setting, nullptr);
    ::_exit(127);
}

int exitStatusOf(pid_t child)
{
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
}

TEST_F(SettingsStoreTest, TwoProgramsThatWriteAtOnceLoseNeitherSetting)
{
    store("filenamePrefix=kept");
    const pid_t one = startWriter(m_file, "quality");
    const pid_t other = startWriter(m_file, "maximumPixels");
    ASSERT_EQ(exitStatusOf(one), 0);
    ASSERT_EQ(exitStatusOf(other), 0);

    LumoraSettings settings(fileName());
    EXPECT_EQ(settings.quality(), 200.0);
    EXPECT_EQ(settings.maximumPixels(), 200);
    EXPECT_EQ(settings.filenamePrefix(), QStringLiteral("kept"));
}

} // namespace
} // namespace lumora
