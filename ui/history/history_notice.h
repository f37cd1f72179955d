// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What stands in the place of a history that is empty or cannot be read.
#pragma once

#include <QWidget>

class QLabel;

namespace lumora {

class HistoryNotice : public QWidget
{
    Q_OBJECT

public:
    explicit HistoryNotice(QWidget* parent = nullptr);

    void display(const QString& sentence, const QString& explanation);
    QString text() const;

private:
    QLabel* m_sentence;
    QLabel* m_explanation;
};

} // namespace lumora
