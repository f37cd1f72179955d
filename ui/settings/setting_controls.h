// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Controls that are bound to one setting each: they show it, follow it, and write it at once. The settings
// must outlive the controls.
#pragma once

#include "ui/settings/setting_binding.h"

#include <QComboBox>

class QCheckBox;
class QLineEdit;
class QSlider;

namespace lumora {

// Gives a control its help text, for the pointer and for screen readers.
template <class Control>
Control* withHelp(Control* control, const char* help)
{
    control->setToolTip(QString::fromLatin1(help));
    control->setAccessibleDescription(control->toolTip());
    return control;
}

// A menu of all cases of an enum by their titles.
template <class Enum>
QComboBox* makePicker(LumoraSettings& settings, SettingValue<Enum>& setting, const QString& name)
{
    auto* picker = new QComboBox;
    picker->setAccessibleName(name);
    picker->setFocusPolicy(Qt::StrongFocus);
    for (const Enum value : allCases<Enum>)
        picker->addItem(text(title(value)));
    // All pickers of a window are of one width, unless a title needs more.
    picker->setMinimumContentsLength(15);
    QObject::connect(picker, &QComboBox::activated, picker,
                     [&setting](int index) { setting.set(allCases<Enum>[static_cast<std::size_t>(index)]); });
    followSettings(settings, {setting.key()}, picker,
                   [picker, &setting] { picker->setCurrentIndex(static_cast<int>(setting())); });
    return picker;
}

QCheckBox* makeToggle(LumoraSettings& settings, SettingValue<bool>& setting, const QString& label);

// Part of a file name: a "/" is refused, because it would name a folder.
QLineEdit* makeNameField(LumoraSettings& settings, SettingValue<QString>& setting,
                         const QString& placeholder);

// 1 to 100 in steps of 1. A stored value outside shows as the nearer end and stays as it is until the slider
// moves.
QSlider* makeQualitySlider(LumoraSettings& settings);

} // namespace lumora
