// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A line of text and a symbol that keep their place in the type scale when the desktop's text scale changes.
#pragma once

#include "ui/theme/symbols.h"

#include <QLabel>

#include <functional>

namespace lumora {

class StyledLabel : public QLabel
{
    Q_OBJECT

public:
    using FontMaker = std::function<QFont()>;

    StyledLabel(const QString& text, FontMaker font, const QColor& colour, QWidget* parent = nullptr);

    // Shown in capitals; text() and screen readers keep the written form.
    void setUpperCase();
    // A fixed column, grown with the text scale, with the text at its trailing edge.
    void setTrailingColumn(int width);

protected:
    bool event(QEvent* event) override;

private:
    void refresh();

    const FontMaker m_font;
    bool m_upperCase = false;
    int m_columnWidth = 0;
};

// A label whose digits all have one width.
class FiguresLabel : public StyledLabel
{
    Q_OBJECT

public:
    using StyledLabel::StyledLabel;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

class SymbolLabel : public QWidget
{
    Q_OBJECT

public:
    SymbolLabel(Symbol symbol, const QColor& colour, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    const Symbol m_symbol;
    const QColor m_colour;
};

} // namespace lumora
