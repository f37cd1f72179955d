// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A number field with a stepper for a bound in pixels. The stepper moves by 64 between 64 and 12000; a typed
// number is taken as it is when it is a whole number, and dropped otherwise. Up and Down in the field step as
// well.
#pragma once

#include "ui/settings/setting_binding.h"

#include <QLineEdit>
#include <QWidget>

class QAbstractButton;

namespace lumora {

class PixelField : public QWidget
{
    Q_OBJECT

public:
    PixelField(LumoraSettings& settings, SettingValue<std::int64_t>& setting, const QString& name);

    // One step up (1) or down (-1).
    void step(int direction);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void refresh();
    void takeTyped();

    SettingValue<std::int64_t>& m_setting;
    QLineEdit* m_field;
    QAbstractButton* m_up;
    QAbstractButton* m_down;
};

} // namespace lumora
