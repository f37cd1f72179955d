// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/overwrite_question.h"

#include "tests/app/wait_for.h"
#include "ui/controls/message_dialog.h"
#include "ui/controls/styled_button.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

using namespace lumora;

namespace {

using Choice = OverwriteAnswer::Choice;

class OverwriteQuestion : public testing::Test
{
protected:
    // Asks, and answers as soon as the question stands.
    OverwriteAnswer ask(const std::filesystem::path& output,
                        const std::function<void(MessageDialog&)>& answer)
    {
        QTimer::singleShot(0, &m_context, [&] {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (auto* question = qobject_cast<MessageDialog*>(window)) return answer(*question);
            }
            FAIL() << "no question stands";
        });
        return askToOverwrite(output, nullptr, m_quit);
    }
    static StyledButton* button(MessageDialog& question, const char* text)
    {
        for (StyledButton* button : question.findChildren<StyledButton*>()) {
            if (button->text() == QLatin1String(text)) return button;
        }
        return nullptr;
    }
    static void choose(MessageDialog& question, const char* text)
    {
        StyledButton* chosen = button(question, text);
        ASSERT_TRUE(chosen) << text;
        chosen->click();
    }
    static bool shows(MessageDialog& question, const QString& text)
    {
        const auto labels = question.findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
            return label->isVisible() && label->text() == text && label->textFormat() == Qt::PlainText;
        });
    }
    static void type(MessageDialog& question, Qt::Key key)
    {
        QWidget* receiver = question.focusWidget() ? question.focusWidget() : &question;
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier);
            QCoreApplication::sendEvent(receiver, &event);
        }
    }

    QObject m_context;
    QAction m_quit;
};

TEST_F(OverwriteQuestion, NamesTheFileExplainsAndTellsTheFolder)
{
    ask("/folder/my photo.jpg", [](MessageDialog& question) {
        EXPECT_EQ(question.text(), QStringLiteral("Replace my photo.jpg?"));
        EXPECT_EQ(question.informativeText(), QStringLiteral("A file with this name already exists."));
        EXPECT_TRUE(shows(question, question.text()));
        EXPECT_TRUE(shows(question, question.informativeText()));
        EXPECT_TRUE(shows(question, QStringLiteral("In /folder")));
        EXPECT_TRUE(button(question, "Replace")->isDefault());
        question.close();
    });
}

TEST_F(OverwriteQuestion, ShowsANameThatLooksLikeMarkupAsItIs)
{
    ask("/folder/<b>x<b>.png", [](MessageDialog& question) {
        EXPECT_TRUE(shows(question, QStringLiteral("Replace <b>x<b>.png?")));
        question.close();
    });
}

TEST_F(OverwriteQuestion, ShortensALongNameInItsMiddle)
{
    const std::string name(240, 'x');
    ask("/folder/" + name + ".png", [&](MessageDialog& question) {
        EXPECT_EQ(question.text(), QStringLiteral("Replace %1.png?").arg(QString::fromStdString(name)));
        EXPECT_LT(question.width(), 700);
        question.close();
    });
}

TEST_F(OverwriteQuestion, OnlyReplaceReplaces)
{
    const auto answer = [this](const char* text) {
        return ask("/a.png", [text](MessageDialog& question) { choose(question, text); });
    };
    EXPECT_EQ(answer("Replace"), (OverwriteAnswer{Choice::replace, false}));
    EXPECT_EQ(answer("Skip"), (OverwriteAnswer{Choice::skip, false}));
    EXPECT_EQ(answer("Cancel Batch"), (OverwriteAnswer{Choice::cancelBatch, true}));
}

TEST_F(OverwriteQuestion, TheAnswerMayHoldForTheRemainingFiles)
{
    const auto answer = [this](const char* text) {
        return ask("/a.png", [text](MessageDialog& question) {
            auto* box = question.findChild<QCheckBox*>();
            ASSERT_TRUE(box);
            EXPECT_EQ(box->text(), QStringLiteral("Do the same for the remaining files"));
            EXPECT_FALSE(box->isChecked());
            box->click();
            choose(question, text);
        });
    };
    EXPECT_EQ(answer("Replace"), (OverwriteAnswer{Choice::replace, true}));
    EXPECT_EQ(answer("Skip"), (OverwriteAnswer{Choice::skip, true}));
}

TEST_F(OverwriteQuestion, ClosingOrEscapingIsSkip)
{
    EXPECT_EQ(ask("/a.png", [](MessageDialog& question) { question.close(); }), OverwriteAnswer{});
    EXPECT_EQ(ask("/a.png", [](MessageDialog& question) { question.reject(); }), OverwriteAnswer{});
}

TEST_F(OverwriteQuestion, KeysOfItsFirstHalfSecondAreNotForIt)
{
    QElapsedTimer open;
    const OverwriteAnswer answer = ask("/a.png", [&](MessageDialog& question) {
        open.start();
        type(question, Qt::Key_Escape);
        EXPECT_TRUE(question.isVisible());
        // Typed on and on, as by a hand that writes elsewhere; the first one that counts closes it.
        auto* hand = new QTimer(&question);
        QObject::connect(hand, &QTimer::timeout, &question, [&question] { type(question, Qt::Key_Return); });
        hand->start(10);
    });
    EXPECT_EQ(answer.choice, Choice::replace);
    EXPECT_GE(open.elapsed(), 450);
}

TEST_F(OverwriteQuestion, EndingTheProgramMeanwhileIsSkip)
{
    QObject::connect(&m_quit, &QAction::triggered, [] { QCoreApplication::exit(); });
    OverwriteAnswer answer{Choice::replace, true};
    QTimer::singleShot(0, &m_context, [&] {
        answer = ask("/a.png", [this](MessageDialog& question) {
            EXPECT_TRUE(question.actions().contains(&m_quit));
            m_quit.trigger();
        });
    });
    QCoreApplication::exec();
    EXPECT_EQ(answer, OverwriteAnswer{});
}

} // namespace
