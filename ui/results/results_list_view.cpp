// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/results/results_list_view.h"

#include "records/processing_result.h"
#include "ui/controls/path_text.h"
#include "ui/results/drag_picture.h"
#include "ui/results/result_row.h"
#include "ui/results/results_list_model.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDrag>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include <algorithm>

namespace lumora {
namespace {

constexpr int mostRows = 8;
constexpr double cornerRadius = 8;

void copyText(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
}

const std::filesystem::path& shownPath(const ProcessingResult& result)
{
    return result.outputURL ? *result.outputURL : result.sourceURL;
}

} // namespace

ResultsListView::ResultsListView(ResultsListModel& results, FileBrowser fileBrowser, QWidget* parent)
    : UniformRowView(parent), m_results(results), m_fileBrowser(std::move(fileBrowser))
{
    setModel(&results);
    setFrameShape(QFrame::NoFrame);
    setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    setDragEnabled(true);
    setDragDropMode(DragOnly);
    setDefaultDropAction(Qt::CopyAction);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    setAccessibleName(QStringLiteral("Results"));
    setAccessibleDescription(
        QStringLiteral("Return shows the output file in the file browser, Space compares it "
                       "with its original"));
}

int ResultsListView::rowHeight() const
{
    return ResultRow::height();
}

int ResultsListView::listHeight() const
{
    return std::clamp(m_results.resultCount(), 1, mostRows) * rowHeight();
}

QSize ResultsListView::sizeHint() const
{
    return {400, listHeight()};
}

QSize ResultsListView::minimumSizeHint() const
{
    return {0, 0};
}

QRect ResultsListView::revealButton(const QModelIndex& index) const
{
    return ResultRow(index, rowOption(index)).revealButton();
}

QModelIndex ResultsListView::revealButtonAt(const QPoint& point) const
{
    const QModelIndex index = indexAt(point);
    return index.isValid() && revealButton(index).contains(point) ? index : QModelIndex();
}

void ResultsListView::showInFolder(const QModelIndex& index) const
{
    if (!index.isValid() || !m_fileBrowser.showInFolder) return;
    if (const auto& output = m_results.result(index).outputURL) m_fileBrowser.showInFolder(*output);
}

void ResultsListView::compare(const QModelIndex& index)
{
    if (index.isValid() && m_results.result(index).outputURL) Q_EMIT compareRequested(index);
}

bool ResultsListView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        if (const QModelIndex index = revealButtonAt(help->pos()); index.isValid()) {
            QToolTip::showText(help->globalPos(), QStringLiteral("Show in Finder"), viewport(),
                               revealButton(index));
            return true;
        }
    }
    return UniformRowView::viewportEvent(event);
}

void ResultsListView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    // Inside the outline that the list paints behind its rows, so that no highlight covers it.
    QPainterPath shape;
    shape.addRoundedRect(QRectF(viewport()->rect()).adjusted(1, 1, -1, -1), cornerRadius - 1,
                         cornerRadius - 1);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipPath(shape);
    forEachRowIn(event->rect(), [&](const QModelIndex& index) {
        const QStyleOptionViewItem option = rowOption(index);
        const ResultRow row(index, option);
        row.paint(painter, pointer() && row.revealButton().contains(*pointer()));
    });
}

void ResultsListView::mousePressEvent(QMouseEvent* event)
{
    m_pressedButton =
        event->button() == Qt::LeftButton ? revealButtonAt(event->position().toPoint()) : QModelIndex();
    if (!m_pressedButton.isValid()) UniformRowView::mousePressEvent(event);
}

void ResultsListView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_pressedButton.isValid()) return UniformRowView::mouseReleaseEvent(event);
    if (revealButtonAt(event->position().toPoint()) == m_pressedButton) showInFolder(m_pressedButton);
    m_pressedButton = QModelIndex();
}

// The second click on the button is one more press of it.
void ResultsListView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QPoint place = event->position().toPoint();
    const bool isOnRow = event->button() == Qt::LeftButton && !revealButtonAt(place).isValid();
    if (!isOnRow) return mousePressEvent(event);
    UniformRowView::mouseDoubleClickEvent(event);
    compare(indexAt(place));
}

void ResultsListView::startDrag(Qt::DropActions)
{
    QMimeData* file = m_results.mimeData({currentIndex()});
    if (!file) return;
    auto* drag = new QDrag(this);
    drag->setMimeData(file);
    drag->setPixmap(
        dragPicture(fileNameText(shownPath(m_results.result(currentIndex()))), devicePixelRatioF()));
    drag->exec(Qt::CopyAction);
}

void ResultsListView::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn) return showInFolder(currentIndex());
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) return compare(currentIndex());
    if (event->matches(QKeySequence::Copy) && currentIndex().isValid())
        return copyText(pathText(shownPath(m_results.result(currentIndex()))));
    UniformRowView::keyPressEvent(event);
}

QMenu* ResultsListView::makeContextMenu(const QModelIndex& index)
{
    const ProcessingResult& result = m_results.result(index);
    auto* menu = new QMenu(this);
    const auto add = [menu](const QString& text, bool enabled, auto&& action) {
        menu->addAction(text, menu, action)->setEnabled(enabled);
    };
    const QPersistentModelIndex row(index);
    add(QStringLiteral("Show in Finder"), result.outputURL.has_value(), [this, row] { showInFolder(row); });
    add(QStringLiteral("Open"), result.outputURL && m_fileBrowser.open,
        [this, row] { m_fileBrowser.open(*m_results.result(row).outputURL); });
    add(QStringLiteral("Compare"), result.outputURL.has_value(), [this, row] { compare(row); });
    add(QStringLiteral("Undo"), m_results.canUndo(index), [this, row] { m_results.undo(row); });
    if (!result.isSuccess) add(QStringLiteral("Try Again"), true, [this, row] { m_results.retry(row); });
    menu->addSeparator();
    add(QStringLiteral("Copy Path"), true,
        [this, row] { copyText(pathText(shownPath(m_results.result(row)))); });
    add(QStringLiteral("Copy Message"), true,
        [this, row] { copyText(QString::fromStdString(m_results.result(row).message)); });
    return menu;
}

// Before a row is chosen, the first one in sight.
QModelIndex ResultsListView::rowForKeys() const
{
    return currentIndex().isValid() ? currentIndex() : indexAt(QPoint(0, 0));
}

void ResultsListView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = byKeyboard ? rowForKeys() : indexAt(event->pos());
    if (!index.isValid()) return;
    QMenu* menu = makeContextMenu(index);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(byKeyboard ? viewport()->mapToGlobal(visualRect(index).center()) : event->globalPos());
}

} // namespace lumora
