// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A button with a symbol, a text, or both, in one of the button styles. Space and Return press it; a click
// with the mouse leaves the keyboard focus where it is.
#pragma once

#include <QPushButton>

namespace lumora {

class ButtonStyle;

class StyledButton : public QPushButton
{
    Q_OBJECT

public:
    // The style must outlive the button: the styles are constants of the program. Either text may be empty; a
    // button without a text needs an accessible name.
    StyledButton(const ButtonStyle& style, QString symbolName, const QString& text,
                 QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int labelWidth() const;
    void paintLabel(QPainter& painter);

    const ButtonStyle& m_style;
    const QString m_symbolName;
};

} // namespace lumora
