// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One line of a user's text, such as a path, shortened in its middle where it does not fit; the tooltip then
// has all of it.
#pragma once

#include <QColor>
#include <QFont>
#include <QWidget>

#include <functional>

namespace lumora {

class ElidedLabel : public QWidget
{
    Q_OBJECT

public:
    explicit ElidedLabel(std::function<QFont()> font, QWidget* parent = nullptr);

    void display(const QString& text, const QColor& colour);
    const QString& text() const { return m_text; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString shortened() const;

    const std::function<QFont()> m_font;
    QString m_text;
    QColor m_colour;
};

} // namespace lumora
