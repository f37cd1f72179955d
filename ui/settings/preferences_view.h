// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The content of the preferences window. Every control writes its setting at once; there is nothing to apply.
// The view asks for at least 620 by 780 and scrolls what does not fit.
#pragma once

#include <QScrollArea>

#include <filesystem>
#include <functional>
#include <optional>

namespace lumora {

class LumoraSettings;
class StatsStore;

class PreferencesView : public QScrollArea
{
    Q_OBJECT

public:
    // Asks the user for a folder; absent when the user cancels. `parent` is the window to stand in front of.
    using FolderChooser = std::function<std::optional<std::filesystem::path>(QWidget* parent)>;

    // Asks whether something may be done that cannot be undone.
    using Confirmation = std::function<bool(QWidget* parent)>;

    PreferencesView(LumoraSettings& settings, StatsStore& stats, QWidget* parent = nullptr);
    PreferencesView(LumoraSettings& settings, StatsStore& stats, FolderChooser chooser,
                    Confirmation confirmReset, QWidget* parent = nullptr);

    // "Version 1.0.0 (1)", from the bundle's information dictionary; "Version 0.0 (0)" where it says nothing.
    static QString appVersionText(const std::filesystem::path& bundle);

    // Remembers the folder that the user chooses. A cancelled choice or a folder that is gone changes
    // nothing.
    void chooseDestinationFolder();

    QSize sizeHint() const override { return {620, 820}; }

Q_SIGNALS:
    // What was done is to be forgotten.
    void forgetRequested();

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    // Scrolling over a control scrolls the view; it never changes the control's setting.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static QWidget* makeHeader();

    LumoraSettings& m_settings;
    const FolderChooser m_chooser;
    const Confirmation m_confirmReset;
};

} // namespace lumora
