// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The question before very many files and the message at the first closing.
#include "app/panels/closing_message.h"
#include "app/panels/many_files_question.h"

#include "tests/app/answer.h"
#include "tests/app/wait_for.h"
#include "ui/controls/message_dialog.h"

#include <QFontMetrics>
#include <QLabel>

#include <gtest/gtest.h>

namespace lumora {
namespace {

using test::Answer;

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
