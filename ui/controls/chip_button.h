// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A capsule with a symbol and one line of text on the windows' dark ground. With a menu a press opens it,
// without one it is a plain button.
#pragma once

#include <QPushButton>

namespace lumora {

class ChipButton : public QPushButton
{
    Q_OBJECT

public:
    explicit ChipButton(const QString& helpText, QWidget* parent = nullptr);

    // The name of the symbol shown now.
    const QString& systemName() const { return m_systemName; }
    void display(const QString& systemName, const QString& text);
    // Without its text, which is then spoken alone.
    void setCompact(bool compact);
    int widthWhen(bool compact) const;
    // A checked chip looks pressed; without this, its text and symbol alone tell the state.
    void setMarksChecked() { m_marksChecked = true; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_systemName;
    bool m_isCompact = false;
    bool m_marksChecked = false;
};

} // namespace lumora
