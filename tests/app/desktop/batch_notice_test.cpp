// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop/batch_notice.h"

#include "tests/app/fake_model.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace lumora;

namespace {

class BatchNoticeTest : public testing::Test
{
protected:
    void finish(int files, const std::string& name = "picture")
    {
        ASSERT_TRUE(m_model.finish(files, name));
        QCoreApplication::processEvents();
    }

    test::FakeModel m_model;
    bool m_isWatched = false;
    BatchNotice::Clock::time_point m_time{};
    QStringList m_summaries;
    QStringList m_bodies;
    BatchNotice m_notice{m_model.model(), [this] { return m_isWatched; },
                         [this](const QString& summary, const QString& body) {
                             m_summaries.append(summary);
                             m_bodies.append(body);
                         },
                         [this] { return m_time; }};
};

TEST_F(BatchNoticeTest, TellsTheCountAndTheSavedBytesOfTheBatchAlone)
{
    finish(5);
    m_notice.expect();
    finish(2);
    EXPECT_EQ(m_summaries, QStringList{QStringLiteral("Optimized 2 images")});
    EXPECT_EQ(m_bodies, QStringList{QStringLiteral("Total Saved: 4 KB")});
}

TEST_F(BatchNoticeTest, SaysHowManyFailed)
{
    m_notice.expect();
    finish(1, "bad");
    EXPECT_EQ(m_summaries.value(0), QStringLiteral("Optimized 0 images"));
    EXPECT_TRUE(m_bodies.value(0).endsWith(QStringLiteral("\n1 failed"))) << m_bodies.value(0).toStdString();
}

TEST_F(BatchNoticeTest, IsSilentWhileTheWindowIsWatched)
{
    m_isWatched = true;
    m_notice.expect();
    finish(1);
    EXPECT_TRUE(m_summaries.isEmpty());
}

TEST_F(BatchNoticeTest, IsSilentAboutDropsOnTheWindow)
{
    finish(1);
    m_notice.expect();
    finish(1);
    finish(1);
    EXPECT_EQ(m_summaries.size(), 1);
}

TEST_F(BatchNoticeTest, TellsOfAnyBatchThatTookLongerThanTenSeconds)
{
    finish(3);
    QObject context;
    std::chrono::seconds perFile{2};
    QObject::connect(&m_model.model(), &ProcessingModel::resultInserted, &context,
                     [&] { m_time += perFile; });
    finish(5, "short");
    EXPECT_TRUE(m_summaries.isEmpty());
    finish(6, "long");
    EXPECT_EQ(m_summaries, QStringList{QStringLiteral("Optimized 6 images")});
    m_isWatched = true;
    finish(6, "watched");
    EXPECT_EQ(m_summaries.size(), 1);
}

TEST_F(BatchNoticeTest, CountsResultsThatWereClearedMeanwhile)
{
    QObject context;
    QObject::connect(&m_model.model(), &ProcessingModel::isProcessingChanged, &context, [&] {
        if (m_model.model().isProcessing()) return;
        m_time += std::chrono::seconds(11);
        m_model.model().clearResults();
    });
    const int before = m_model.model().resultCount();
    m_model.model().process({"/fake/a.png", "/fake/b.png"});
    ASSERT_EQ(before, 0);
    ASSERT_TRUE(test::waitFor([this] { return !m_summaries.isEmpty(); }));
    EXPECT_EQ(m_summaries.first(), QStringLiteral("Optimized 2 images"));
}

} // namespace
