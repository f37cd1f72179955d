// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One half of a stepper: a chevron that repeats while it is held.
#pragma once

#include <QAbstractButton>

namespace lumora {

class StepButton : public QAbstractButton
{
    Q_OBJECT

public:
    // Direction 1 points up, -1 down.
    explicit StepButton(int direction, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const int m_direction;
};

} // namespace lumora
