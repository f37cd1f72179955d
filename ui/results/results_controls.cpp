// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/results/results_controls.h"

#include "ui/controls/chip_button.h"
#include "ui/results/results_list_model.h"

#include <QActionGroup>
#include <QEvent>
#include <QMenu>
#include <QStyle>

namespace lumora {
namespace {

constexpr int gap = 6;

struct OrderName
{
    ResultsOrder order;
    const char* chip;
    const char* item;
};

constexpr OrderName orders[] = {{ResultsOrder::newest, "Newest", "Newest first"},
                                {ResultsOrder::saving, "Saving", "Largest saving first"},
                                {ResultsOrder::name, "Name", "Name"}};

int rowWidth(const std::vector<ChipButton*>& chips, bool compact)
{
    int width = 0;
    for (const ChipButton* chip : chips)
        width += chip->widthWhen(compact) + (width > 0 ? gap : 0);
    return width;
}

} // namespace

ResultsControls::ResultsControls(ResultsListModel& results, QWidget* parent)
    : QWidget(parent), m_results(results),
      m_failures(new ChipButton(QStringLiteral("Show only the files that failed"), this)),
      m_retry(new ChipButton(QStringLiteral("Optimize the failed files again"), this)),
      m_sort(new ChipButton(QStringLiteral("Change the order of the results"), this)),
      m_clear(new ChipButton(QStringLiteral("Empty the list; no file is touched"), this))
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_failures->setCheckable(true);
    m_failures->setMarksChecked();
    m_retry->display(QStringLiteral("arrow.counterclockwise"), QStringLiteral("Try Again"));
    m_retry->setAccessibleName(QStringLiteral("Try failed files again"));
    m_clear->display(QStringLiteral("xmark"), QStringLiteral("Clear"));
    m_clear->setAccessibleName(QStringLiteral("Clear results"));
    makeSortMenu();
    connect(m_failures, &QAbstractButton::clicked, &results,
            [this](bool only) { m_results.arrange(m_results.order(), only); });
    connect(m_retry, &QAbstractButton::clicked, &results, [this] { m_results.retryFailed(); });
    connect(m_clear, &QAbstractButton::clicked, &results, [this] { m_results.clear(); });
    connect(&results, &QAbstractItemModel::modelReset, this, &ResultsControls::refresh);
    connect(&results, &ResultsListModel::failureCountChanged, this, &ResultsControls::refresh);
    refresh();
}

void ResultsControls::makeSortMenu()
{
    auto* menu = new QMenu(m_sort);
    menu->setAccessibleName(QStringLiteral("Sort by"));
    menu->addSection(QStringLiteral("Sort by"));
    auto* group = new QActionGroup(menu);
    for (const OrderName& name : orders) {
        QAction* item = menu->addAction(QLatin1String(name.item));
        item->setCheckable(true);
        group->addAction(item);
        connect(item, &QAction::triggered, &m_results,
                [this, order = name.order] { m_results.arrange(order, m_results.showsFailuresOnly()); });
        connect(menu, &QMenu::aboutToShow, item,
                [this, item, order = name.order] { item->setChecked(m_results.order() == order); });
    }
    m_sort->setMenu(menu);
}

void ResultsControls::refresh()
{
    const int failures = m_results.failureCount();
    m_failures->display(QStringLiteral("exclamationmark.triangle.fill"),
                        QStringLiteral("%1 failed").arg(failures));
    m_failures->setChecked(m_results.showsFailuresOnly());
    m_failures->setAccessibleName(
        QStringLiteral("%1, shown alone %2")
            .arg(m_failures->text(), m_failures->isChecked() ? QStringLiteral("on") : QStringLiteral("off")));
    for (const OrderName& name : orders) {
        if (name.order != m_results.order()) continue;
        m_sort->display(QStringLiteral("arrow.up.arrow.down"), QLatin1String(name.chip));
        m_sort->setAccessibleName(QStringLiteral("Sort by, ") + QLatin1String(name.chip));
    }
    updateGeometry();
    arrange();
}

std::vector<ChipButton*> ResultsControls::wanted() const
{
    if (m_results.failureCount() == 0) return {m_sort, m_clear};
    return {m_failures, m_retry, m_sort, m_clear};
}

QSize ResultsControls::sizeHint() const
{
    return {rowWidth(wanted(), false), m_clear->sizeHint().height()};
}

QSize ResultsControls::minimumSizeHint() const
{
    return {0, m_clear->sizeHint().height()};
}

bool ResultsControls::event(QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::LayoutRequest || type == QEvent::LayoutDirectionChange ||
        type == QEvent::ApplicationFontChange) {
        updateGeometry();
        arrange();
    }
    return QWidget::event(event);
}

void ResultsControls::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void ResultsControls::arrange()
{
    std::vector<ChipButton*> chips = wanted();
    const bool compact = width() < rowWidth(chips, false);
    while (compact && !chips.empty() && width() < rowWidth(chips, true))
        chips.pop_back();
    for (ChipButton* chip : {m_failures, m_retry, m_sort, m_clear}) {
        chip->setCompact(compact);
        chip->setVisible(std::find(chips.begin(), chips.end(), chip) != chips.end());
    }
    int left = width() - rowWidth(chips, compact);
    for (ChipButton* chip : chips) {
        const QSize size(chip->widthWhen(compact), chip->sizeHint().height());
        chip->setGeometry(QStyle::visualRect(layoutDirection(), rect(),
                                             QRect(QPoint(left, (height() - size.height()) / 2), size)));
        left += size.width() + gap;
    }
}

} // namespace lumora
