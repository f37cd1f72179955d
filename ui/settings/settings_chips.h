// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The five chips. Each shows the stored settings, follows every change, and writes its own through.
#pragma once

#include "ui/settings/settings_chip.h"

class QMenu;

namespace lumora {

class LumoraSettings;

class FormatSettingsChip : public SettingsChip
{
    Q_OBJECT

public:
    explicit FormatSettingsChip(LumoraSettings& settings, QWidget* parent = nullptr);

private:
    void fillMenu();

    LumoraSettings& m_settings;
};

class ResizeSettingsChip : public SettingsChip
{
    Q_OBJECT

public:
    explicit ResizeSettingsChip(LumoraSettings& settings, QWidget* parent = nullptr);

private:
    QString resizeIconName() const;
    QString resizeText() const;
    void fillMenu();
    void choosePreset(int pixels);

    LumoraSettings& m_settings;
};

class QualitySettingsChip : public SettingsChip
{
    Q_OBJECT

public:
    explicit QualitySettingsChip(LumoraSettings& settings, QWidget* parent = nullptr);

private:
    QString qualityText() const;
    void fillMenu();

    LumoraSettings& m_settings;
};

class MetadataSettingsChip : public SettingsChip
{
    Q_OBJECT

public:
    explicit MetadataSettingsChip(LumoraSettings& settings, QWidget* parent = nullptr);
};

class ColorSettingsChip : public SettingsChip
{
    Q_OBJECT

public:
    explicit ColorSettingsChip(LumoraSettings& settings, QWidget* parent = nullptr);
};

} // namespace lumora
