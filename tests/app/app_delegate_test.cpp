// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The road of files that a launch names.
#include "app/app_delegate.h"

#include "app/termination.h"
#include "tests/app/private_bus.h"
#include "tests/app/wait_for.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

using namespace lumora;
using test::waitFor;

namespace {

class AppDelegateTest : public testing::Test
{
protected:
    AppDelegateTest()
    {
        QObject::connect(&Termination::shared(), &Termination::begun, &m_context,
                         [this] { m_resultsAtTheEnd = model().resultCount(); });
    }
    ~AppDelegateTest() override { m_delegate.settings().exitWhenComplete.set(false); }

    ProcessingModel& model() { return m_delegate.processingModel(); }
    // Runs the program to its end; false when it stays.
    static bool ends()
    {
        QTimer guard;
        guard.setSingleShot(true);
        QObject::connect(&guard, &QTimer::timeout, [] { QCoreApplication::exit(1); });
        guard.start(10'000);
        return QCoreApplication::exec() == 0;
    }
    // No picture, but named like one: its result is a failure.
    std::filesystem::path makeFile(const char* name)
    {
        test::writeFile(m_folder / name, "x");
        return m_folder / name;
    }

    test::TemporaryDirectory m_folder;
    test::PrivateBus m_bus;
    AppDelegate m_delegate{m_bus.connect()};
    QObject m_context;
    std::optional<int> m_resultsAtTheEnd;
};

TEST_F(AppDelegateTest, OfTheFilesOfALaunchThoseThatCanBeNoImageAreLeftOut)
{
    m_delegate.open({makeFile("notes.txt"), makeFile("a.png"), makeFile("b.c")});
    ASSERT_TRUE(waitFor([this] { return model().statusText() == QStringLiteral("Done"); }));
    ASSERT_EQ(model().resultCount(), 1);
    EXPECT_EQ(model().resultAt(0).sourceURL, m_folder / "a.png");
}

TEST_F(AppDelegateTest, ALaunchWithNothingUsableIsToldSo)
{
    m_delegate.open({makeFile("notes.txt")});
    EXPECT_TRUE(
        waitFor([this] { return model().statusText() == QStringLiteral("No supported image files found"); }));
}

TEST_F(AppDelegateTest, AProgramThatEndsWithItsBatchEndsAlsoWithOneOfNothingUsable)
{
    m_delegate.settings().exitWhenComplete.set(true);
    m_delegate.open({makeFile("notes.txt")});
    EXPECT_TRUE(ends());
    EXPECT_EQ(m_resultsAtTheEnd, 0);
}

TEST_F(AppDelegateTest, AProgramThatEndsWithItsBatchTakesTheFilesAlongThatCameJustBefore)
{
    m_delegate.settings().exitWhenComplete.set(true);
    const auto late = makeFile("b.png");
    QObject::connect(
        &model(), &ProcessingModel::resultInserted, &m_context, [this, late] { m_delegate.open({late}); },
        static_cast<Qt::ConnectionType>(Qt::SingleShotConnection));
    m_delegate.open({makeFile("a.png")});
    ASSERT_TRUE(ends());
    EXPECT_EQ(m_resultsAtTheEnd, 2);
}

TEST_F(AppDelegateTest, AProgramThatEndsWithItsBatchWaitsForNoMoreOnceWhatCameWasOfNoUse)
{
    m_delegate.settings().exitWhenComplete.set(true);
    QObject::connect(
        &model(), &ProcessingModel::resultInserted, &m_context, [this] { m_delegate.open({}); },
        static_cast<Qt::ConnectionType>(Qt::SingleShotConnection));
    m_delegate.open({makeFile("a.png")});
    ASSERT_TRUE(ends());
    EXPECT_EQ(m_resultsAtTheEnd, 1);
}

TEST_F(AppDelegateTest, AProgramThatEndsWithItsBatchStaysWhereTheUserCancelsIt)
{
    m_delegate.settings().exitWhenComplete.set(true);
    QObject::connect(&model(), &ProcessingModel::isProcessingChanged, &m_context, [this] {
        if (model().isProcessing()) model().cancel();
    });
    m_delegate.open({makeFile("a.png")});
    ASSERT_TRUE(waitFor([this] { return model().statusText() == QStringLiteral("Done"); }));
    EXPECT_FALSE(m_resultsAtTheEnd);
}

} // namespace
