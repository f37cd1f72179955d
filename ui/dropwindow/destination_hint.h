// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One quiet line that says before the drop where outputs go and what becomes of the originals. A press leads
// to where that is set.
#pragma once

#include <QPushButton>

namespace lumora {

class LumoraSettings;

class DestinationHint : public QPushButton
{
    Q_OBJECT

public:
    // The settings must outlive the line.
    explicit DestinationHint(LumoraSettings& settings, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();

    const LumoraSettings& m_settings;
    bool m_isWarning = false;
};

} // namespace lumora
