// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Two lines above a list, shortened where they have no room, and a chip at their end, which loses its text
// before they do.
#pragma once

#include <QWidget>

namespace lumora {

class ChipButton;
class ElidedLabel;

class HistoryHeading : public QWidget
{
    Q_OBJECT

public:
    explicit HistoryHeading(ChipButton* chip, QWidget* parent = nullptr);

    void display(const QString& title, const QString& facts);
    QString title() const;
    QString facts() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    ChipButton* m_chip;
    ElidedLabel* m_title;
    ElidedLabel* m_facts;
};

} // namespace lumora
