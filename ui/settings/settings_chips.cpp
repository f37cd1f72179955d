// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/settings_chips.h"

#include "ui/settings/setting_binding.h"

#include <QActionGroup>
#include <QMenu>

namespace lumora {
namespace {

// The menu's items are made each time it opens, so that they show the settings of that moment.
template <class Chip>
void giveMenu(Chip* chip, void (Chip::*fill)())
{
    auto* menu = new QMenu(chip);
    menu->setToolTipsVisible(true);
    chip->setMenu(menu);
    QObject::connect(menu, &QMenu::aboutToShow, chip, [chip, menu, fill] {
        menu->clear();
        (chip->*fill)();
    });
}

// A titled list of all cases, the stored one checked.
template <class Enum>
void addPicker(QMenu* menu, const QString& title, SettingValue<Enum>& setting)
{
    menu->setAccessibleName(title);
    menu->addSection(title);
    auto* group = new QActionGroup(menu);
    QObject::connect(menu, &QMenu::aboutToHide, group, &QObject::deleteLater);
    for (const Enum value : allCases<Enum>) {
        QAction* item = menu->addAction(text(lumora::title(value)));
        item->setCheckable(true);
        item->setChecked(setting() == value);
        group->addAction(item);
        QObject::connect(item, &QAction::triggered, menu, [&setting, value] { setting.set(value); });
    }
}

} // namespace

FormatSettingsChip::FormatSettingsChip(LumoraSettings& settings, QWidget* parent)
    : SettingsChip(QStringLiteral("Change output format"), parent), m_settings(settings)
{
    giveMenu(this, &FormatSettingsChip::fillMenu);
    followSettings(settings, {settings.outputFormat.key()}, this, [this] {
        display(QStringLiteral("photo"), lumora::text(title(m_settings.outputFormat())));
    });
}

void FormatSettingsChip::fillMenu()
{
    addPicker(menu(), QStringLiteral("Format"), m_settings.outputFormat);
}

ResizeSettingsChip::ResizeSettingsChip(LumoraSettings& settings, QWidget* parent)
    : SettingsChip(QStringLiteral("Change resize settings"), parent), m_settings(settings)
{
    giveMenu(this, &ResizeSettingsChip::fillMenu);
    followSettings(settings, {settings.resizeMode.key(), settings.maximumPixels.key()}, this,
                   [this] { display(resizeIconName(), resizeText()); });
}

QString ResizeSettingsChip::resizeIconName() const
{
    switch (m_settings.resizeMode()) {
    case ResizeMode::maxWidth:
        return QStringLiteral("arrow.left.and.right");
    case ResizeMode::maxHeight:
        return QStringLiteral("arrow.up.and.down");
    case ResizeMode::longestEdge:
        return QStringLiteral("arrow.up.left.and.arrow.down.right");
    case ResizeMode::none:
        break;
    }
    return QStringLiteral("aspectratio");
}

QString ResizeSettingsChip::resizeText() const
{
    if (m_settings.resizeMode() == ResizeMode::none) return QStringLiteral("No resize");
    return QStringLiteral("%1px").arg(m_settings.maximumPixels());
}

void ResizeSettingsChip::fillMenu()
{
    addPicker(menu(), QStringLiteral("Resize Mode"), m_settings.resizeMode);
    menu()->addSeparator();
    for (const int pixels : {1280, 1920, 2560, 3840}) {
        menu()->addAction(QStringLiteral("%1 px").arg(pixels), this,
                          [this, pixels] { choosePreset(pixels); });
    }
}

// Choosing a size while resizing is off turns it on.
void ResizeSettingsChip::choosePreset(int pixels)
{
    m_settings.maximumPixels.set(pixels);
    if (m_settings.resizeMode() == ResizeMode::none) m_settings.resizeMode.set(ResizeMode::maxWidth);
}

QualitySettingsChip::QualitySettingsChip(LumoraSettings& settings, QWidget* parent)
    : SettingsChip(QStringLiteral("Change compression quality"), parent), m_settings(settings)
{
    giveMenu(this, &QualitySettingsChip::fillMenu);
    followSettings(settings, {settings.outputFormat.key(), settings.quality.key()}, this, [this] {
        display(m_settings.usesLossyCompression() ? QStringLiteral("slider.horizontal.3")
                                                  : QStringLiteral("checkmark.seal"),
                qualityText());
    });
}

QString QualitySettingsChip::qualityText() const
{
    if (isLosslessOnly(m_settings.outputFormat())) return QStringLiteral("Lossless");
    return QStringLiteral("Quality %1").arg(wholeQuality(m_settings.quality()));
}

void QualitySettingsChip::fillMenu()
{
    menu()->setAccessibleName(QStringLiteral("Quality"));
    if (isLosslessOnly(m_settings.outputFormat())) {
        menu()->addAction(QStringLiteral("Lossless format"))->setEnabled(false);
        return;
    }
    for (const int quality : {60, 70, 80, 90, 100}) {
        menu()->addAction(QStringLiteral("Quality %1").arg(quality), this,
                          [this, quality] { m_settings.quality.set(quality); });
    }
}

MetadataSettingsChip::MetadataSettingsChip(LumoraSettings& settings, QWidget* parent)
    : SettingsChip(QStringLiteral("Toggle metadata removal"), parent)
{
    connect(this, &QPushButton::clicked, this,
            [&settings] { settings.removeMetadata.set(!settings.removeMetadata()); });
    followSettings(settings, {settings.removeMetadata.key()}, this, [this, &settings] {
        if (settings.removeMetadata()) {
            display(QStringLiteral("trash"), QStringLiteral("Remove metadata"));
        } else {
            display(QStringLiteral("doc.badge.gearshape"), QStringLiteral("Keep metadata"));
        }
        displayState(QStringLiteral("metadata removal"), settings.removeMetadata());
    });
}

ColorSettingsChip::ColorSettingsChip(LumoraSettings& settings, QWidget* parent)
    : SettingsChip(QStringLiteral("Toggle color optimization"), parent)
{
    connect(this, &QPushButton::clicked, this,
            [&settings] { settings.optimizeColorForSharing.set(!settings.optimizeColorForSharing()); });
    followSettings(settings, {settings.optimizeColorForSharing.key()}, this, [this, &settings] {
        const bool optimized = settings.optimizeColorForSharing();
        display(QStringLiteral("paintpalette"),
                optimized ? QStringLiteral("sRGB") : QStringLiteral("Original color"));
        displayState(QStringLiteral("color optimization"), optimized);
    });
}

} // namespace lumora
