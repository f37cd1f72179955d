// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// When a setting reaches its file, and what another program's writing meanwhile means for it.
#include "model/lumora_settings.h"

#include "tests/model/event_loop.h"
#include "tests/model/manual_delay.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <QCoreApplication>
#include <QStringList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <memory>
#include <tuple>

namespace lumora {
namespace {

using testing::HasSubstr;
using testing::Not;
using namespace std::chrono_literals;

class PreferencesStoreTest : public ::testing::Test
{
protected:
    test::TemporaryDirectory m_directory;
    const std::filesystem::path m_file = m_directory / "Lumora.ini";

    QString fileName() const { return QString::fromStdString(m_file.string()); }
    // Another program, which replaces the file as programs do.
    void storeFromOutside(const std::string& lines) const
    {
        test::writeFile(m_directory / "draft", "[General]\n" + lines + "\n");
        std::filesystem::rename(m_directory / "draft", m_file);
    }
    std::string stored() const { return test::readFile(m_file); }
    // Another one after every write, because writing replaces the file; all zero before the first. The number
    // of a file alone may come back.
    using Identity = std::tuple<ino_t, time_t, long>;
    Identity identity() const
    {
        struct stat status;
        if (::stat(m_file.c_str(), &status) != 0) return {};
        return {status.st_ino, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
    }
    bool waitUntilStored(const std::string& line) const
    {
        return test::waitUntil(
            [&] { return std::filesystem::exists(m_file) && stored().find(line) != std::string::npos; });
    }
};

TEST_F(PreferencesStoreTest, ManyQuickChangesAreReadAndToldAtOnceAndWrittenOnceTheLastRests)
{
    storeFromOutside("maximumPixels=5");
    const Identity before = identity();
    test::ManualDelay* delay = nullptr;
    PreferencesStore store(fileName(),
                           [&](auto call) { return std::make_unique<test::ManualDelay>(delay, call); });
    int told = 0;
    QObject::connect(&store, &PreferencesStore::touched, [&] { ++told; });
    for (int step = 1; step <= 100; ++step) {
        store.setValue(QStringLiteral("quality"), QString::number(step));
        EXPECT_EQ(store.value(QStringLiteral("quality")), QString::number(step));
        EXPECT_EQ(told, step);
        delay->advance(299ms);
    }
    EXPECT_EQ(identity(), before);
    delay->advance(1ms);
    EXPECT_THAT(stored(), HasSubstr("quality=100\n"));
    EXPECT_THAT(stored(), HasSubstr("maximumPixels=5\n"));

    const Identity after = identity();
    EXPECT_FALSE(delay->isRunning());
    store.setValue(QStringLiteral("quality"), QStringLiteral("100"));
    delay->advance(300ms);
    EXPECT_EQ(identity(), after) << "what is written already is not written again";
}

TEST_F(PreferencesStoreTest, APipeInTheFilesPlaceIsNotWaitedFor)
{
    ASSERT_EQ(::mkfifo(m_file.c_str(), 0600), 0);
    LumoraSettings settings(fileName());
    EXPECT_EQ(settings.quality(), 82.0);
    settings.quality.set(7);
    EXPECT_EQ(settings.quality(), 7.0);
}

TEST_F(PreferencesStoreTest, TheRealTimerWrites)
{
    LumoraSettings settings(fileName());
    settings.quality.set(7);
    EXPECT_FALSE(std::filesystem::exists(m_file));
    EXPECT_TRUE(waitUntilStored("quality=7"));
}

TEST_F(PreferencesStoreTest, TheEndOfTheLastHolderWrites)
{
    auto one = std::make_unique<LumoraSettings>(fileName());
    auto other = std::make_unique<LumoraSettings>(fileName());
    one->quality.set(40);
    one.reset();
    EXPECT_EQ(other->quality(), 40.0);
    other.reset();
    EXPECT_THAT(stored(), HasSubstr("quality=40\n"));
}

TEST_F(PreferencesStoreTest, TheEndOfTheProgramWrites)
{
    LumoraSettings settings(fileName());
    settings.quality.set(40);
    QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit, Qt::QueuedConnection);
    QCoreApplication::exec();
    EXPECT_THAT(stored(), HasSubstr("quality=40\n"));
}

TEST_F(PreferencesStoreTest, AChangeTakenBackIsNotWritten)
{
    storeFromOutside("quality=30");
    const Identity before = identity();
    {
        LumoraSettings settings(fileName());
        settings.quality.set(40);
        settings.quality.set(30);
        EXPECT_EQ(settings.quality(), 30.0);
    }
    EXPECT_EQ(identity(), before);
}

TEST_F(PreferencesStoreTest, AnotherProgramsSettingSurvivesTheWriting)
{
    storeFromOutside("quality=1");
    {
        LumoraSettings settings(fileName());
        settings.quality.set(2);
        storeFromOutside("quality=1\nmaximumPixels=77");
        EXPECT_EQ(settings.maximumPixels(), 77);
        EXPECT_EQ(settings.quality(), 2.0);
    }
    EXPECT_THAT(stored(), HasSubstr("maximumPixels=77\n"));
    EXPECT_THAT(stored(), HasSubstr("quality=2\n"));
}

TEST_F(PreferencesStoreTest, AnotherProgramsLaterValueOfTheSameSettingWins)
{
    storeFromOutside("quality=1");
    {
        LumoraSettings settings(fileName());
        QStringList told;
        QObject::connect(&settings, &LumoraSettings::changed, [&](const QString& key) { told.append(key); });
        settings.quality.set(2);
        settings.maximumPixels.set(3);
        storeFromOutside("quality=99");
        EXPECT_EQ(settings.quality(), 99.0);
        EXPECT_EQ(settings.maximumPixels(), 3);
        EXPECT_TRUE(test::waitUntil([&] { return told.count(QStringLiteral("quality")) == 2; }));
    }
    EXPECT_THAT(stored(), HasSubstr("quality=99\n"));
    EXPECT_THAT(stored(), HasSubstr("maximumPixels=3\n"));
}

TEST_F(PreferencesStoreTest, AValueSetAfterAnotherProgramsWins)
{
    storeFromOutside("quality=1");
    {
        LumoraSettings settings(fileName());
        settings.quality.set(2);
        storeFromOutside("quality=99");
        settings.quality.set(3);
        EXPECT_EQ(settings.quality(), 3.0);
    }
    EXPECT_THAT(stored(), HasSubstr("quality=3\n"));
    EXPECT_THAT(stored(), Not(HasSubstr("99")));
}

} // namespace
} // namespace lumora
