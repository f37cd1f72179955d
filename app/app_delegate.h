// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Owns what lives as long as the program: settings, statistics, the processing model, both windows, the menu
// and the status item; and takes the files that come from outside the drop window. Main thread only.
#pragma once

#include "app/desktop/batch_notice.h"
#include "app/desktop/desktop_notifications.h"
#include "app/desktop/desktop_settings.h"
#include "app/desktop/launcher_progress.h"
#include "app/desktop/text_scale.h"
#include "app/history_commands.h"
#include "app/panels/about_panel.h"
#include "app/panels/overwrite_questions.h"
#include "app/tray/status_item.h"
#include "app/window/branded_window.h"
#include "app/window/closing.h"
#include "app/window/main_window_height.h"
#include "model/processing_model.h"
#include "model/settings_store.h"
#include "model/stats_store.h"
#include "ui/history/history_actions.h"
#include "ui/intake/file_chooser.h"
#include "ui/intake/file_intake.h"
#include "ui/results/file_browser.h"

#include <QDBusConnection>
#include <QMenu>
#include <QModelIndex>
#include <QObject>

#include <filesystem>
#include <memory>
#include <vector>

namespace lumora {

class ComparableResults;
class ComparisonView;

class AppDelegate : public QObject
{
    Q_OBJECT

public:
    explicit AppDelegate(QDBusConnection bus);
    ~AppDelegate() override;

    // Start-up: the menu, the status item, the drop window.
    void applicationDidFinishLaunching();

    // Files that a launch names. What can be no image is left out, then they are processed.
    void open(const std::vector<std::filesystem::path>& files);

    // Files from the launcher, a file manager or the status item. With the setting on, the program ends when
    // they and all that are still on their way here are done. Shows no window.
    void process(const std::vector<std::filesystem::path>& files);

    // Creates the window on first use, else brings the same one to the front.
    void showMainWindow();
    void showPreferences();
    void showAboutPanel();
    void showHistory();
    // One window, whichever result it shows.
    void showComparison(ComparableResults& results, const QModelIndex& index);

    ProcessingModel& processingModel() { return *m_processingModel; }
    LumoraSettings& settings() { return m_settingsStore.settings(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ProcessingServices services();
    FileBrowser fileBrowser();
    HistoryActions historyActions();
    void makeProcessingModel();
    void configureMenus();
    void configureStatusItem();
    void endWhenDone();
    Closing closing(const BrandedWindow* window);
    bool mayClose(BrandedWindow* window);
    bool isWindowShown() const;
    void quitWithoutWindow();
    std::unique_ptr<BrandedWindow> makeWindow(const WindowParameters& parameters, QWidget* view);
    bool mainWindowIsWatched() const;

    QDBusConnection m_bus;
    SettingsStore m_settingsStore;
    StatsStore m_statsStore;
    HistoryCommands m_historyCommands;
    DesktopSettings m_desktopSettings;
    TextScale m_textScale;
    DesktopNotifications m_notifications;
    FileIntake m_intake;
    FileChooser m_fileChooser;
    QMenu m_menu;
    QAction* m_undo = nullptr;
    QAction* m_quit = nullptr;
    std::unique_ptr<BrandedWindow> m_mainWindow;
    std::unique_ptr<BrandedWindow> m_preferencesWindow;
    std::unique_ptr<BrandedWindow> m_comparisonWindow;
    ComparisonView* m_comparison = nullptr; // in that window
    std::unique_ptr<BrandedWindow> m_historyWindow;
    std::unique_ptr<AboutPanel> m_aboutPanel;
    OverwriteQuestions m_overwriteQuestions;
    std::unique_ptr<ProcessingModel> m_processingModel;
    std::unique_ptr<MainWindowHeight> m_mainWindowHeight;
    std::unique_ptr<LauncherProgress> m_launcherProgress;
    std::unique_ptr<BatchNotice> m_batchNotice;
    std::unique_ptr<StatusItem> m_statusItem;
    bool m_isDone = false; // with the work that ends the program
};

} // namespace lumora
