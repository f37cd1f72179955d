// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The question before very many files and the message at the first closing.
#include "app/panels/closing_message.h"
#include "app/panels/many_files_question.h"

#include "tests/app/wait_for.h"
#include "ui/controls/message_dialog.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QTimer>

#include <gtest/gtest.h>

namespace lumora {
namespace {

MessageDialog* shownDialog()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<MessageDialog*>(window);
        if (dialog && dialog->isVisible()) return dialog;
    }
    return nullptr;
}

// Answers the next dialog once it shows: presses the button of this text, or closes it where there is none.
class Answer
{
public:
    explicit Answer(QString button) : m_button(std::move(button))
    {
        m_timer.setInterval(5);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { give(); });
        m_timer.start();
    }
    const QString& text() const { return m_text; }
    const QString& informativeText() const { return m_informativeText; }

private:
    void give()
    {
        MessageDialog* dialog = shownDialog();
        if (!dialog) return;
        m_timer.stop();
        m_text = dialog->text();
        m_informativeText = dialog->informativeText();
        for (auto* button : dialog->findChildren<QAbstractButton*>()) {
            if (button->text() == m_button) return button->click();
        }
        dialog->reject();
    }

    const QString m_button;
    QTimer m_timer;
    QString m_text;
    QString m_informativeText;
};

TEST(ManyFilesQuestion, TellsTheCountAndTakesOnlyAYesForOne)
{
    const Answer yes(QStringLiteral("Optimize"));
    EXPECT_TRUE(confirmManyFiles(12'345, 214, nullptr));
    EXPECT_EQ(yes.text(), QStringLiteral("Optimize 12,345 images?"));
    EXPECT_EQ(yes.informativeText(),
              QStringLiteral("They lie in 214 folders. Nothing has been written yet."));
    const Answer no(QStringLiteral("Cancel"));
    EXPECT_FALSE(confirmManyFiles(1000, 1, nullptr));
    EXPECT_EQ(no.informativeText(), QStringLiteral("They lie in one folder. Nothing has been written yet."));
    const Answer none{QString()};
    EXPECT_FALSE(confirmManyFiles(1000, 1, nullptr));
}

TEST(Messages, SayTheirExplanationInFullHoweverLong)
{
    const QString text = QStringLiteral("Images are being optimized. ").repeated(6).trimmed();
    MessageDialog dialog(QStringLiteral("Quit Lumora?"), text);
    dialog.show();
    const QLabel* explanation = nullptr;
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        if (label->text() == text) explanation = label;
    }
    ASSERT_TRUE(explanation);
    const QFontMetrics metrics(explanation->font());
    EXPECT_GE(explanation->height(), 2 * metrics.height());
    EXPECT_GE(explanation->height(), explanation->heightForWidth(explanation->width()));
    EXPECT_TRUE(dialog.rect().contains(explanation->geometry()));
}

TEST(ClosingMessage, KeepsRunningQuitsOrStaysOpen)
{
    const std::pair<const char*, ClosingAnswer> answers[] = {{"Keep Running", ClosingAnswer::keepsRunning},
                                                             {"Quit", ClosingAnswer::quits},
                                                             {"", ClosingAnswer::staysOpen}};
    for (const auto& [button, answer] : answers) {
        const Answer given{QLatin1String(button)};
        EXPECT_EQ(tellOfClosing(nullptr), answer) << button;
        EXPECT_EQ(given.informativeText(), QStringLiteral("Launch it again to bring the window back."));
    }
}

} // namespace
} // namespace lumora
