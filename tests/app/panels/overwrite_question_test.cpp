// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/overwrite_question.h"

#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

using namespace lumora;

namespace {

class OverwriteQuestion : public testing::Test
{
protected:
    // Asks, and answers as soon as the question stands.
    bool ask(const std::filesystem::path& output, const std::function<void(QMessageBox&)>& answer)
    {
        QTimer::singleShot(0, &m_context, [&] {
            auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(question);
            answer(*question);
        });
        return confirmOverwrite(output, nullptr, m_quit);
    }
    static void choose(QMessageBox& question, const char* text)
    {
        for (QAbstractButton* button : question.buttons()) {
            if (button->text() == QLatin1String(text)) return button->click();
        }
        FAIL() << "no button " << text;
    }

    QObject m_context;
    QAction m_quit;
};

TEST_F(OverwriteQuestion, NamesTheFileWithoutItsFolderAndExplains)
{
    ask("/folder/my photo.jpg", [](QMessageBox& question) {
        EXPECT_EQ(question.text(), QStringLiteral("Replace my photo.jpg?"));
        EXPECT_EQ(question.informativeText(), QStringLiteral("A file with this name already exists."));
        EXPECT_EQ(question.icon(), QMessageBox::Warning);
        EXPECT_EQ(question.defaultButton()->text(), QStringLiteral("Replace"));
        question.close();
    });
}

TEST_F(OverwriteQuestion, ShowsANameThatLooksLikeMarkupAsItIs)
{
    ask("/folder/<b>x<b>.png", [](QMessageBox& question) {
        EXPECT_EQ(question.text(), QStringLiteral("Replace <b>x<b>.png?"));
        EXPECT_EQ(question.textFormat(), Qt::PlainText);
        question.close();
    });
}

TEST_F(OverwriteQuestion, OnlyReplaceReplaces)
{
    EXPECT_TRUE(ask("/a.png", [](QMessageBox& question) { choose(question, "Replace"); }));
    EXPECT_FALSE(ask("/a.png", [](QMessageBox& question) { choose(question, "Skip"); }));
}

TEST_F(OverwriteQuestion, ClosingOrEscapingIsSkip)
{
    EXPECT_FALSE(ask("/a.png", [](QMessageBox& question) { question.close(); }));
    EXPECT_FALSE(ask("/a.png", [](QMessageBox& question) { question.reject(); }));
}

TEST_F(OverwriteQuestion, EndingTheProgramMeanwhileIsSkip)
{
    QObject::connect(&m_quit, &QAction::triggered, [] { QCoreApplication::exit(); });
    bool answer = true;
    QTimer::singleShot(0, &m_context, [&] {
        answer = ask("/a.png", [this](QMessageBox& question) {
            EXPECT_TRUE(question.actions().contains(&m_quit));
            m_quit.trigger();
        });
    });
    QCoreApplication::exec();
    EXPECT_FALSE(answer);
}

} // namespace
