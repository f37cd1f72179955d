// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/app_delegate.h"

#include "app/desktop/desktop_files.h"
#include "app/panels/closing_message.h"
#include "app/panels/folder_access_panel.h"
#include "app/panels/many_files_question.h"
#include "app/panels/quit_question.h"
#include "app/termination.h"
#include "engine/worker/worker_processes.h"
#include "system/bundle.h"
#include "ui/comparison/comparison_view.h"
#include "ui/dropwindow/drop_window_view.h"
#include "ui/history/history_view.h"
#include "ui/settings/preferences_view.h"

#include <QAction>
#include <QApplication>
#include <QDialog>

namespace lumora {
namespace {

WindowParameters mainWindowParameters()
{
    return {QStringLiteral("Lumora"), QStringLiteral("LumoraMainWindow"), {820, 360}, {720, 320}};
}

WindowParameters preferencesWindowParameters()
{
    return {QStringLiteral("Preferences"), QStringLiteral("LumoraPreferencesWindow"), {620, 840}, {620, 780}};
}

WindowParameters comparisonWindowParameters()
{
    return {QStringLiteral("Comparison"), QStringLiteral("LumoraComparisonWindow"), {1000, 720}, {480, 360}};
}

WindowParameters historyWindowParameters()
{
    return {QStringLiteral("History"), QStringLiteral("LumoraHistoryWindow"), {940, 680}, {560, 400}};
}

// Among the few values that no view shows: the user knows that the program goes on without a window.
const QString toldOfClosing = QStringLiteral("toldOfClosing");

} // namespace

AppDelegate::AppDelegate(QDBusConnection bus)
    : m_bus(std::move(bus)), m_desktopSettings(m_bus),
      m_textScale(m_desktopSettings, QGuiApplication::platformName() == QLatin1String("xcb")),
      m_notifications(m_bus), m_intake(m_bus), m_fileChooser(m_bus),
      m_overwriteQuestions(
          [this](const auto& output) { return askToOverwrite(output, m_mainWindow.get(), *m_quit); })
{
    makeProcessingModel();
    connect(&m_notifications, &DesktopNotifications::showRequested, this, &AppDelegate::showMainWindow);
    connect(&m_intake, &FileIntake::idle, this, &AppDelegate::endWhenDone);
    qApp->installEventFilter(this);
}

AppDelegate::~AppDelegate()
{
    // The views watch the model, and the model may still ask a question over a window: both lose sight of
    // each other before either goes.
    m_statusItem.reset();
    m_mainWindowHeight.reset();
    m_comparisonWindow.reset();
    m_historyWindow.reset();
    m_mainWindow.reset();
    m_preferencesWindow.reset();
}

void AppDelegate::makeProcessingModel()
{
    m_processingModel = std::make_unique<ProcessingModel>(m_settingsStore, m_statsStore, services());
    m_overwriteQuestions.follow(*m_processingModel);
    m_launcherProgress = std::make_unique<LauncherProgress>(m_bus, *m_processingModel);
    m_batchNotice = std::make_unique<BatchNotice>(
        *m_processingModel, [this] { return mainWindowIsWatched(); },
        [this](const QString& summary, const QString& body) { m_notifications.notify(summary, body); });
    // Queued, after the notice and after a batch that follows at once.
    connect(m_processingModel.get(), &ProcessingModel::isProcessingChanged, this,
            &AppDelegate::quitWithoutWindow, Qt::QueuedConnection);
}

ProcessingServices AppDelegate::services()
{
    ProcessingServices services = ProcessingServices::system();
    services.confirmOverwrite = [this](const std::filesystem::path& output) {
        return m_overwriteQuestions.confirm(output);
    };
    services.confirmManyFiles = [this](std::size_t files, std::size_t folders) {
        return confirmManyFiles(files, folders, m_mainWindow.get());
    };
    services.requestSaveAccess = saveAccessRequest([this](const std::filesystem::path& folder) {
        return requestSaveAccess(folder, m_mainWindow.get());
    });
    services.history = [this] { return m_historyCommands.history(); };
    services.keepsHistory = [this] { return settings().keepHistory(); };
    services.origin = "lumora";
    return services;
}

void AppDelegate::applicationDidFinishLaunching()
{
    settings().preferencesFile().setValue(QStringLiteral("NSQuitAlwaysKeepsWindows"), false);
    configureMenus();
    configureStatusItem();
    showMainWindow();
}

void AppDelegate::configureMenus()
{
    m_menu.addAction(QStringLiteral("About Lumora"), this, &AppDelegate::showAboutPanel);
    m_menu.addSeparator();
    QAction* preferences =
        m_menu.addAction(QStringLiteral("Preferences..."), this, &AppDelegate::showPreferences);
    preferences->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    m_menu.addAction(QStringLiteral("History..."), this, &AppDelegate::showHistory)
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_H));
    m_undo = m_menu.addAction(QStringLiteral("Undo Last Batch..."), this, [this] {
        m_historyCommands.undoLastBatch(*m_processingModel, QApplication::activeWindow());
    });
    m_undo->setShortcut(QKeySequence::Undo);
    connect(m_processingModel.get(), &ProcessingModel::isProcessingChanged, m_undo,
            [this] { m_undo->setEnabled(!m_processingModel->isProcessing()); });
    m_menu.addSeparator();
    m_quit = m_menu.addAction(QStringLiteral("Quit Lumora"), [] { Termination::shared().begin(); });
    m_quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
}

void AppDelegate::configureStatusItem()
{
    m_statusItem = std::make_unique<StatusItem>(
        StatusItemActions{[this] { showMainWindow(); }, [this] { showPreferences(); },
                          [this](const std::vector<std::filesystem::path>& files) { process(files); }},
        m_intake, m_desktopSettings, m_bus);
}

void AppDelegate::open(const std::vector<std::filesystem::path>& files)
{
    m_intake.load(files, [this, files](const FileIntake::Paths& usable) {
        // The batch of nothing usable says so and completes, which ends a program that waits for that.
        process(usable.empty() ? files : usable);
    });
}

void AppDelegate::process(const std::vector<std::filesystem::path>& files)
{
    if (!files.empty()) m_isDone = false;
    m_batchNotice->expect();
    m_processingModel->process(files);
    if (!settings().exitWhenComplete()) return;
    m_processingModel->setOnComplete([this] {
        // Who cancels wants to see what became of the files.
        if (m_processingModel->wasCancelled()) return;
        m_isDone = true;
        endWhenDone();
    });
}

// Files under way are acknowledged: who sent them will not send them again.
void AppDelegate::endWhenDone()
{
    if (!m_isDone || m_intake.isLoading()) return;
    m_batchNotice->update();
    Termination::shared().begin();
}

Closing AppDelegate::closing(const BrandedWindow* window)
{
    const auto isOtherShown = [window](const BrandedWindow* other) {
        return other && other != window && other->isVisible();
    };
    PreferencesFile& file = m_settingsStore.settings().preferencesFile();
    const bool isLast = !isOtherShown(m_mainWindow.get()) && !isOtherShown(m_preferencesWindow.get()) &&
                        !isOtherShown(m_comparisonWindow.get()) && !isOtherShown(m_historyWindow.get());
    return closingOf({.isLast = isLast,
                      .hasStatusItem = m_statusItem && m_statusItem->isPresent(),
                      .canBeLaunchedAgain = m_bus.isConnected(),
                      .isProcessing = m_processingModel->isProcessing(),
                      .quitsByPreference = m_settingsStore.settings().quitWhenClosed(),
                      .wasTold = file.value(toldOfClosing).toBool()});
}

bool AppDelegate::mayClose(BrandedWindow* window)
{
    const Closing way = closing(window);
    if (way == Closing::asksToQuit) return confirmQuit(window);
    if (way != Closing::tells) return true;
    const ClosingAnswer answer = tellOfClosing(window);
    if (answer == ClosingAnswer::staysOpen) return false;
    settings().preferencesFile().setValue(toldOfClosing, true);
    if (answer == ClosingAnswer::quits) Termination::shared().begin();
    return true;
}

bool AppDelegate::isWindowShown() const
{
    return (m_mainWindow && m_mainWindow->isVisible()) ||
           (m_preferencesWindow && m_preferencesWindow->isVisible()) ||
           (m_comparisonWindow && m_comparisonWindow->isVisible()) ||
           (m_historyWindow && m_historyWindow->isVisible());
}

// The last window was closed while a batch ran.
void AppDelegate::quitWithoutWindow()
{
    const bool wasOpen = m_mainWindow != nullptr;
    if (m_processingModel->isProcessing() || isWindowShown() || !wasOpen) return;
    if (closing(nullptr) == Closing::quits) Termination::shared().begin();
}

std::unique_ptr<BrandedWindow> AppDelegate::makeWindow(const WindowParameters& parameters, QWidget* view)
{
    auto window = std::make_unique<BrandedWindow>(parameters, view, m_menu);
    BrandedWindow* made = window.get();
    made->setMayClose([this, made] { return mayClose(made); });
    connect(made, &BrandedWindow::closed, this, [this, made] {
        const Closing way = closing(made);
        if (way == Closing::quits || way == Closing::asksToQuit) Termination::shared().begin();
    });
    return window;
}

// A dialog takes the keys of the window below it.
bool AppDelegate::eventFilter(QObject* watched, QEvent* event)
{
    auto* dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
    if (dialog && m_quit && !dialog->actions().contains(m_quit)) dialog->addAction(m_quit);
    return QObject::eventFilter(watched, event);
}

void AppDelegate::showMainWindow()
{
    if (!m_mainWindow) {
        const auto reducesMotion = [this] { return m_desktopSettings.reducesMotion(); };
        auto* view = new DropWindowView(
            settings(), *m_processingModel, m_statsStore, [this] { showPreferences(); }, fileBrowser(),
            reducesMotion,
            [this](QWidget* parent, const ChosenFiles& chosen) { m_fileChooser.open(parent, chosen); });
        connect(view, &DropWindowView::compareRequested, this, &AppDelegate::showComparison);
        m_mainWindow = makeWindow(mainWindowParameters(), view);
        m_mainWindowHeight =
            std::make_unique<MainWindowHeight>(*m_mainWindow, *m_processingModel, reducesMotion);
    }
    m_mainWindow->bringToFront();
}

void AppDelegate::showPreferences()
{
    if (!m_preferencesWindow) {
        auto* view = new PreferencesView(settings(), m_statsStore);
        connect(view, &PreferencesView::forgetRequested, this,
                [this] { m_historyCommands.forget(m_preferencesWindow.get()); });
        m_preferencesWindow = makeWindow(preferencesWindowParameters(), view);
    }
    m_preferencesWindow->bringToFront();
}

void AppDelegate::showHistory()
{
    if (!m_historyWindow) {
        auto* view = new HistoryView(m_historyCommands.history(), historyActions());
        m_historyWindow = makeWindow(historyWindowParameters(), view);
        BrandedWindow* window = m_historyWindow.get();
        connect(view, &HistoryView::compareRequested, this, &AppDelegate::showComparison);
        connect(view, &HistoryView::closeRequested, window, &QWidget::close);
        connect(&m_historyCommands, &HistoryCommands::forgotten, view, &HistoryView::refresh);
        const auto follow = [this, view] {
            view->setCanUndo(!m_processingModel->isProcessing());
            if (!m_processingModel->isProcessing()) view->refresh();
        };
        connect(m_processingModel.get(), &ProcessingModel::isProcessingChanged, view, follow);
        view->setCanUndo(!m_processingModel->isProcessing());
        // What it holds of a long history is not kept for nobody.
        connect(window, &BrandedWindow::closed, this, [this] { m_historyWindow.release()->deleteLater(); });
    }
    m_historyWindow->bringToFront();
}

// Queued: the view may go while the user is asked.
HistoryActions AppDelegate::historyActions()
{
    const auto undoBatch = [this](std::int64_t batch) {
        m_historyCommands.undoBatch(batch, *m_processingModel, m_historyWindow.get());
    };
    const auto undoFiles = [this](const std::vector<std::int64_t>& files) {
        const auto undo = [this, files] {
            m_historyCommands.undoFiles(files, *m_processingModel, m_historyWindow.get());
        };
        QMetaObject::invokeMethod(this, undo, Qt::QueuedConnection);
    };
    return {.fileBrowser = fileBrowser(), .undoBatch = undoBatch, .undoFiles = undoFiles};
}

FileBrowser AppDelegate::fileBrowser()
{
    return {[this](const std::filesystem::path& file) { showInFileBrowser(m_bus, file); }, openFile};
}

void AppDelegate::showAboutPanel()
{
    if (!m_aboutPanel) {
        m_aboutPanel = std::make_unique<AboutPanel>();
    }
    m_aboutPanel->show();
    m_aboutPanel->raise();
    m_aboutPanel->activateWindow();
}

void AppDelegate::showComparison(ComparableResults& results, const QModelIndex& index)
{
    if (!m_comparisonWindow) {
        m_comparison = new ComparisonView(ImageOptimizer::findWorker(mainBundlePath()));
        m_comparisonWindow = makeWindow(comparisonWindowParameters(), m_comparison);
        BrandedWindow* window = m_comparisonWindow.get();
        connect(m_comparison, &ComparisonView::titleChanged, window, &QWidget::setWindowTitle);
        connect(m_comparison, &ComparisonView::closeRequested, window, &QWidget::close);
        // Nobody looks at the pictures any more.
        connect(window, &BrandedWindow::closed, this,
                [this] { m_comparisonWindow.release()->deleteLater(); });
    }
    m_comparison->compare(results, index);
    m_comparisonWindow->bringToFront();
}

bool AppDelegate::mainWindowIsWatched() const
{
    return m_mainWindow && m_mainWindow->isVisible() && m_mainWindow->isActiveWindow();
}

} // namespace lumora
