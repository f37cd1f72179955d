// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_search.h"

#include "ui/controls/chip_button.h"
#include "ui/history/search_field.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>

#include <utility>

namespace lumora {
namespace {

struct FilterName
{
    HistoryFilter filter;
    const char* chip;
    const char* item;
};

constexpr FilterName filters[] = {{HistoryFilter::all, "All Files", "All files"},
                                  {HistoryFilter::written, "Written", "Written"},
                                  {HistoryFilter::notWritten, "Failed or Left", "Failed or left alone"},
                                  {HistoryFilter::undone, "Undone", "Undone"}};

} // namespace

HistorySearch::HistorySearch(QWidget* parent)
    : QWidget(parent), m_field(new SearchField),
      m_chip(new ChipButton(QStringLiteral("Choose which files are listed")))
{
    m_field->setPlaceholderText(QStringLiteral("Search by name"));
    m_field->setAccessibleName(QStringLiteral("Search by name"));
    m_field->setAccessibleDescription(
        QStringLiteral("Lists the files of all batches whose name holds this (Ctrl+F)"));
    m_field->setToolTip(m_field->accessibleDescription());
    m_field->installEventFilter(this);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addWidget(m_field, 1);
    row->addWidget(m_chip);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    makeMenu();
    refresh();
    connect(m_field, &QLineEdit::textChanged, this, &HistorySearch::nameChanged);
}

void HistorySearch::makeMenu()
{
    auto* menu = new QMenu(m_chip);
    menu->setAccessibleName(QStringLiteral("Show"));
    auto* group = new QActionGroup(menu);
    for (const FilterName& name : filters) {
        QAction* item = menu->addAction(QLatin1String(name.item));
        item->setCheckable(true);
        group->addAction(item);
        connect(item, &QAction::triggered, this, [this, filter = name.filter] { setFilter(filter); });
        connect(menu, &QMenu::aboutToShow, item,
                [this, item, filter = name.filter] { item->setChecked(m_filter == filter); });
    }
    m_chip->setMenu(menu);
}

void HistorySearch::setFilter(HistoryFilter filter)
{
    if (std::exchange(m_filter, filter) == filter) return;
    refresh();
    Q_EMIT filterChanged();
}

void HistorySearch::refresh()
{
    for (const FilterName& name : filters) {
        if (name.filter != m_filter) continue;
        m_chip->display(QStringLiteral("list.bullet"), QLatin1String(name.chip));
        m_chip->setAccessibleName(QStringLiteral("Show, ") + QLatin1String(name.chip));
    }
}

std::string HistorySearch::name() const
{
    return m_field->text().toStdString();
}

void HistorySearch::begin()
{
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
}

void HistorySearch::append(const QString& text)
{
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->setText(m_field->text() + text);
}

bool HistorySearch::clear()
{
    const bool wasUsed = !m_field->text().isEmpty();
    m_field->clear();
    return wasUsed;
}

bool HistorySearch::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
            Q_EMIT listRequested();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace lumora
