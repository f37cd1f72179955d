// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A small round control in the corner of the drop zone.
#pragma once

#include <QAbstractButton>

namespace lumora {

class ZoneButton : public QAbstractButton
{
    Q_OBJECT

public:
    enum class Glyph { cross, chevron };

    explicit ZoneButton(Glyph glyph, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    const Glyph m_glyph;
};

} // namespace lumora
