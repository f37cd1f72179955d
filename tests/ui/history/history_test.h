// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The history's view, and what is to be seen in it.
#pragma once

#include "tests/ui/history/history_window.h"
#include "ui/controls/chip_button.h"
#include "ui/history/history_heading.h"

#include <QTest>

#include <gtest/gtest.h>

namespace lumora::test {

class HistoryViewTest : public testing::Test, protected HistoryWindow
{
protected:
    QStringList names() { return textsOf(files()); }
    QString spoken(int row) { return files().index(row).data(Qt::AccessibleDescriptionRole).toString(); }
    HistoryHeading& heading() { return *view->findChild<HistoryHeading*>(); }
    ChipButton* chip(const char* text)
    {
        for (ChipButton* candidate : view->findChildren<ChipButton*>()) {
            if (candidate->text() == QLatin1String(text)) return candidate;
        }
        return nullptr;
    }
    // Named by their numbers, from 0 on.
    static std::vector<FileRecord> many(std::size_t count)
    {
        std::vector<FileRecord> files(count);
        for (std::size_t number = 0; number < count; ++number)
            files[number] = written("/in/" + std::to_string(number) + ".jpg");
        return files;
    }
    // Where the keyboard's focus is.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QWidget* focused = view->focusWidget();
        QTest::keyClick(focused ? focused : view.get(), key, modifiers);
    }
};

} // namespace lumora::test
