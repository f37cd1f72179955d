// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A field on the window's dark ground, with a magnifier at its leading edge.
#pragma once

#include "ui/theme/symbols.h"

#include <QLineEdit>

namespace lumora {

class SearchField : public QLineEdit
{
public:
    explicit SearchField(QWidget* parent = nullptr);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void makeRoom();

    const Symbol m_magnifier{QStringLiteral("magnifyingglass"), 13};
};

} // namespace lumora
