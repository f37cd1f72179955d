// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The common look of the drop window's settings: a capsule with a symbol and one line of text. With a menu a
// press opens it, without one it is a plain button.
#pragma once

#include <QPushButton>

namespace lumora {

class SettingsChip : public QPushButton
{
    Q_OBJECT

public:
    explicit SettingsChip(const QString& helpText, QWidget* parent = nullptr);

    // The name of the symbol shown now.
    const QString& systemName() const { return m_systemName; }
    void display(const QString& systemName, const QString& text);
    // Of a chip that switches `what` on and off: its spoken name tells which, behind the text that it shows.
    void displayState(const QString& what, bool on);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_systemName;
};

} // namespace lumora
