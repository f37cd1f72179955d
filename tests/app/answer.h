// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A hand for the dialogs that wait for one.
#pragma once

#include "ui/controls/message_dialog.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>

#include <utility>

namespace lumora::test {

inline MessageDialog* shownDialog()
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

} // namespace lumora::test
