// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A button of the window chrome: a glyph of thin lines that lies on the window's ground. Main thread.
#pragma once

#include <QAbstractButton>

namespace lumora {

class WindowControl : public QAbstractButton
{
public:
    enum class Glyph { menu, minimize, zoom, close };

    // `name` is the tool tip and what assistive technology reads.
    WindowControl(Glyph glyph, const QString& name, QWidget* parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    const Glyph m_glyph;
};

} // namespace lumora
