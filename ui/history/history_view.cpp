// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_view.h"

#include "history/history.h"
#include "model/history_reader.h"
#include "ui/controls/chip_button.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/styled_label.h"
#include "ui/history/batch_list_model.h"
#include "ui/history/batch_list_view.h"
#include "ui/history/file_controls.h"
#include "ui/history/history_files_model.h"
#include "ui/history/history_files_view.h"
#include "ui/history/history_heading.h"
#include "ui/history/history_notice.h"
#include "ui/history/history_overview.h"
#include "ui/history/history_search.h"
#include "ui/history/history_words.h"
#include "ui/history/weeks_chart.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <utility>

namespace lumora {
namespace {

constexpr QMargins padding(22, 42, 22, 16);
constexpr int spacing = 12;
// In a lower window the rows need the room of the chart.
constexpr int leastHeightForChart = 560;

QString troubleText(const HistoryOverview& overview)
{
    QString text = QString::fromStdString(overview.trouble).simplified();
    if (text.isEmpty()) return text;
    text[0] = text[0].toUpper();
    return text + u'.';
}

} // namespace

HistoryView::HistoryView(std::shared_ptr<History> history, HistoryActions actions, QWidget* parent)
    : QWidget(parent), m_actions(std::move(actions)),
      m_reader(std::make_unique<HistoryReader>(std::move(history))), m_batches(new BatchListModel(this)),
      m_files(new HistoryFilesModel(*m_reader, this)), m_notice(new HistoryNotice),
      m_trouble(new ElidedLabel([] { return fonts::font(fonts::TextStyle::body); })), m_chart(new WeeksChart),
      m_search(new HistorySearch), m_batchList(new BatchListView(*m_batches)),
      m_undoBatch(new ChipButton(QStringLiteral("Take back what this batch did (Ctrl+U in its list)"))),
      m_heading(new HistoryHeading(m_undoBatch)),
      m_fileList(new HistoryFilesView(*m_files, m_actions.fileBrowser,
                                      [this](const FoundFile& file) { return whenOf(file); })),
      m_controls(new FileControls(*m_fileList))
{
    setFocusPolicy(Qt::ClickFocus);
    m_undoBatch->display(QStringLiteral("arrow.counterclockwise"), QStringLiteral("Undo Batch"));
    setCanUndo(true);
    lay();
    connectParts();
    m_notice->display(QStringLiteral("Reading the history..."), {});
    m_pages->setCurrentWidget(m_notice);
    refresh();
}

HistoryView::~HistoryView() = default;

void HistoryView::lay()
{
    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(padding);
    stack->setSpacing(spacing);
    stack->addWidget(makeHeader());
    m_pages = new QStackedLayout;
    m_pages->addWidget(makeContent());
    m_pages->addWidget(m_notice);
    stack->addLayout(m_pages, 1);
}

QWidget* HistoryView::makeHeader()
{
    using namespace TidewellTheme;
    auto* header = new QWidget;
    auto* titles = new QVBoxLayout(header);
    titles->setContentsMargins(0, 0, 0, 0);
    titles->setSpacing(4);
    titles->addWidget(new StyledLabel(
        QStringLiteral("History"), [] { return fonts::font(fonts::TextStyle::title2, QFont::Bold); },
        cream()));
    m_totals = new StyledLabel(
        QStringLiteral("What was done"), [] { return fonts::systemFont(13, QFont::Medium); }, creamMuted());
    titles->addWidget(m_totals);
    return header;
}

QWidget* HistoryView::makeContent()
{
    auto* content = new QWidget;
    auto* stack = new QVBoxLayout(content);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(spacing);
    stack->addWidget(m_trouble);
    stack->addWidget(m_chart);
    stack->addWidget(m_search);
    auto* panes = new QHBoxLayout;
    panes->setSpacing(spacing);
    panes->addWidget(m_batchList, 2);
    panes->addWidget(makeFilesPane(), 3);
    stack->addLayout(panes, 1);
    return content;
}

QWidget* HistoryView::makeFilesPane()
{
    auto* pane = new QWidget;
    auto* stack = new QVBoxLayout(pane);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(8);
    stack->addWidget(m_heading);
    stack->addWidget(m_fileList, 1);
    stack->addWidget(m_controls);
    return pane;
}

void HistoryView::connectParts()
{
    // Beneath a notice nobody would see what is typed there.
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_search, [this] {
        if (m_search->isVisible()) m_search->begin();
    });
    connect(new QShortcut(QKeySequence::Refresh, this), &QShortcut::activated, this, &HistoryView::refresh);
    connect(m_search, &HistorySearch::filterChanged, this, &HistoryView::showBatches);
    connect(m_search, &HistorySearch::nameChanged, this, &HistoryView::showFiles);
    connect(m_search, &HistorySearch::listRequested, this,
            [this] { (isSearching() ? static_cast<QWidget*>(m_fileList) : m_batchList)->setFocus(); });
    connect(m_batchList, &BatchListView::chosen, this, &HistoryView::showFiles);
    connect(m_batchList, &BatchListView::filesRequested, m_fileList,
            [this] { m_fileList->setFocus(Qt::TabFocusReason); });
    connect(m_batchList, &BatchListView::undoRequested, this,
            [this](std::int64_t batch) { m_actions.undoBatch(batch); });
    connect(m_undoBatch, &QAbstractButton::clicked, this,
            [this] { m_actions.undoBatch(m_batchList->chosenBatch()); });
    for (HistoryRowsView* list :
         {static_cast<HistoryRowsView*>(m_batchList), static_cast<HistoryRowsView*>(m_fileList)})
        connect(list, &HistoryRowsView::typed, m_search, &HistorySearch::append);
    connect(m_files, &HistoryFilesModel::listed, this, &HistoryView::describeFiles);
    connect(m_fileList, &HistoryFilesView::undoRequested, this,
            [this](const std::vector<std::int64_t>& files) { m_actions.undoFiles(files); });
    connect(m_fileList, &HistoryFilesView::compareRequested, this,
            [this](const QModelIndex& index) { Q_EMIT compareRequested(*m_files, index); });
}

void HistoryView::refresh()
{
    m_readsAgain = m_isReading;
    if (std::exchange(m_isReading, true)) return;
    m_reader->ask([today = QDate::currentDate()](History& history) { return readOverview(history, today); },
                  [this](const std::shared_ptr<const HistoryOverview>& overview) {
                      m_isReading = false;
                      take(overview);
                      if (m_readsAgain) refresh();
                  });
}

void HistoryView::setCanUndo(bool canUndo)
{
    m_canUndo = canUndo;
    m_batchList->setCanUndo(canUndo && m_actions.undoBatch);
    m_fileList->setCanUndo(canUndo && m_actions.undoFiles);
    describeFiles();
}

void HistoryView::take(const std::shared_ptr<const HistoryOverview>& overview)
{
    m_overview = overview;
    const QString trouble = overview ? troubleText(*overview) : QString();
    const bool isEmpty = !overview || overview->batches.empty();
    if (!overview)
        m_notice->display(QStringLiteral("The history cannot be read."),
                          QStringLiteral("Another program may be using it, or its folder is not to be "
                                         "written to. F5 tries again."));
    else
        m_notice->display(QStringLiteral("Nothing is remembered yet."),
                          trouble.isEmpty()
                              ? QStringLiteral("Each batch is listed here while \"Remember what was done\" "
                                               "is on in the preferences (Ctrl+,).")
                              : trouble);
    m_trouble->display(trouble, TidewellTheme::copperBright());
    m_trouble->setVisible(!trouble.isEmpty());
    m_pages->setCurrentIndex(isEmpty ? 1 : 0);
    m_totals->setText(
        isEmpty ? QStringLiteral("What was done")
                : filesText(overview->files) + QStringLiteral(" in ") +
                      counted(static_cast<std::int64_t>(overview->batches.size()), "batch", "batches") +
                      QStringLiteral(", ") + savedText(overview->saved));
    if (overview) m_chart->display(overview->weeks);
    showBatches();
    Q_EMIT refreshed();
}

void HistoryView::showBatches()
{
    if (!m_overview) return;
    const std::int64_t chosen = m_batchList->chosenBatch();
    const int scrolled = m_batchList->verticalScrollBar()->value();
    m_batches->show({m_overview, &m_overview->batches}, m_search->filter());
    m_batchList->verticalScrollBar()->setValue(scrolled);
    m_batchList->setPlaceholder(QStringLiteral("No batch has such files."));
    {
        const QSignalBlocker once(m_batchList);
        m_batchList->choose(chosen);
    }
    showFiles();
}

void HistoryView::showFiles()
{
    m_batchList->setVisible(!isSearching());
    m_undoBatch->setVisible(!isSearching());
    const std::string name = m_search->name();
    FileQuery query{.name = name, .filter = m_search->filter()};
    if (name.empty()) query.batch = m_batchList->chosenBatch();
    m_files->show(query);
    describeFiles();
}

void HistoryView::describeFiles()
{
    const bool isListed = m_files->isListed();
    const std::int64_t number = m_files->rowCount();
    m_fileList->setPlaceholder(isListed ? QStringLiteral("No such files.") : QString());
    const DatedBatch* batch = m_batches->find(m_batchList->chosenBatch());
    m_undoBatch->setEnabled(m_canUndo && m_actions.undoBatch && batch &&
                            batch->summary.undone < batch->summary.written);
    if (isSearching())
        return m_heading->display(isListed ? counted(number, "file found", "files found")
                                           : QStringLiteral("Searching..."),
                                  QStringLiteral("In all batches"));
    if (!batch) return m_heading->display({}, {});
    const BatchRecord& record = batch->summary.batch;
    QString files = filesText(batch->summary.files);
    if (isListed && number != batch->summary.files) files = QStringLiteral("%1 of %2").arg(number).arg(files);
    m_heading->display(QStringLiteral("%1 %2, %3").arg(dayText(batch->day), timeText(record.time), files),
                       settingsText(record));
}

bool HistoryView::isSearching() const
{
    return !m_search->name().empty();
}

QString HistoryView::whenOf(const FoundFile& file) const
{
    const DatedBatch* batch = m_files->query().batch ? nullptr : m_batches->find(file.batch);
    return batch ? whenText(batch->summary.batch.time) : QString();
}

// Files may have gone elsewhere while the user was.
bool HistoryView::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate) m_files->lookAgain();
    return QWidget::event(event);
}

// Nothing is marked as focused before the keyboard is used.
void HistoryView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!window()->focusWidget()) setFocus();
}

void HistoryView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_chart->setVisible(height() >= fonts::scaled(leastHeightForChart));
}

void HistoryView::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (key == Qt::Key_Escape) {
        if (!m_search->clear()) Q_EMIT closeRequested();
    } else if (key == Qt::Key_Up || key == Qt::Key_Down) {
        (isSearching() ? static_cast<QWidget*>(m_fileList) : m_batchList)->setFocus(Qt::TabFocusReason);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void HistoryView::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), windowGradient(rect(), layoutDirection()));
}

} // namespace lumora
