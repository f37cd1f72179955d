// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The content of the main window: header with the settings chips, drop zone, results, lifetime totals, links.
// Holds no lasting state. Main thread.
#pragma once

#include "ui/intake/files_and_folders_dialog.h"
#include "ui/results/file_browser.h"

#include <QModelIndex>
#include <QWidget>

#include <functional>

namespace lumora {

class ComparableResults;
class DropWindowFooter;
class DropZone;
class FileIntake;
class LifetimeStatsStrip;
class LumoraSettings;
class ProcessingModel;
class ResultsList;
class StatsStore;

class DropWindowView : public QWidget
{
    Q_OBJECT

public:
    using ChooseFiles = std::function<void(QWidget* parent, ChosenFiles chosen)>;

    // The three objects must outlive the view.
    DropWindowView(
        LumoraSettings& settings, ProcessingModel& processingModel, StatsStore& statsStore,
        std::function<void()> openPreferences, FileBrowser fileBrowser = {},
        std::function<bool()> reducesMotion = [] { return false; },
        ChooseFiles chooseFiles = chooseFilesAndFolders, QWidget* parent = nullptr);

    // The files that were copied in another program, as if they were dropped.
    void paste();

    QSize sizeHint() const override { return {820, 360}; }

Q_SIGNALS:
    // A result is to be seen beside its original.
    void compareRequested(lumora::ComparableResults& results, const QModelIndex& index);

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    // The whole window takes drops, and the zone shows it.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* makeHeader(LumoraSettings& settings, std::function<void()> openPreferences);
    void arrange();

    const std::function<void(const std::vector<std::filesystem::path>&)> m_process;
    FileIntake* m_intake;
    QWidget* m_header;
    DropZone* m_zone;
    ResultsList* m_results;
    LifetimeStatsStrip* m_strip;
    DropWindowFooter* m_footer;
};

} // namespace lumora
