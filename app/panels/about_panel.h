// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the program is: name, version, licence and the libraries in use. Main thread.
#pragma once

#include <QDialog>

namespace lumora {

class AboutPanel : public QDialog
{
public:
    explicit AboutPanel(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace lumora
