// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/setting_controls.h"

#include "ui/theme/tidewell_theme.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>
#include <QSlider>

#include <algorithm>

namespace lumora {

QCheckBox* makeToggle(LumoraSettings& settings, SettingValue<bool>& setting, const QString& label)
{
    auto* toggle = new QCheckBox(label);
    QPalette shades = toggle->palette();
    shades.setColor(QPalette::WindowText, TidewellTheme::ink());
    toggle->setPalette(shades);
    QObject::connect(toggle, &QCheckBox::clicked, toggle, [&setting](bool on) { setting.set(on); });
    followSettings(settings, {setting.key()}, toggle, [toggle, &setting] { toggle->setChecked(setting()); });
    return toggle;
}

QLineEdit* makeNameField(LumoraSettings& settings, SettingValue<QString>& setting, const QString& placeholder)
{
    auto* field = new QLineEdit;
    field->setPlaceholderText(placeholder);
    field->setAccessibleName(placeholder);
    field->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[^/\\x00]*")), field));
    QObject::connect(field, &QLineEdit::textEdited, field,
                     [&setting](const QString& text) { setting.set(text); });
    followSettings(settings, {setting.key()}, field, [field, &setting] {
        // Setting the same text again would move the cursor under the user's hands.
        if (field->text() != setting()) field->setText(setting());
    });
    return field;
}

QSlider* makeQualitySlider(LumoraSettings& settings)
{
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setRange(1, 100);
    slider->setSingleStep(1);
    slider->setPageStep(10);
    slider->setAccessibleName(QStringLiteral("Quality"));
    QObject::connect(slider, &QSlider::valueChanged, slider,
                     [&settings](int value) { settings.quality.set(value); });
    followSettings(settings, {settings.quality.key()}, slider, [slider, &settings] {
        const QSignalBlocker quiet(slider);
        slider->setValue(
            static_cast<int>(std::clamp<std::int64_t>(wholeQuality(settings.quality()), 1, 100)));
    });
    return slider;
}

} // namespace lumora
