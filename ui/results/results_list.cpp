// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/results/results_list.h"

#include "model/processing_model.h"
#include "ui/results/results_controls.h"
#include "ui/results/results_list_model.h"
#include "ui/results/results_list_view.h"
#include "ui/results/results_summary.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace lumora {
namespace {

constexpr int spacing = 10;
constexpr double cornerRadius = 8;

} // namespace

ResultsList::ResultsList(ProcessingModel& processing, FileBrowser fileBrowser, QWidget* parent)
    : QWidget(parent), m_processing(processing), m_model(new ResultsListModel(processing, this)),
      m_summary(new ResultsSummary(processing)), m_view(new ResultsListView(*m_model, std::move(fileBrowser)))
{
    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(spacing);
    stack->addWidget(m_summary);
    m_summary->addTrailing(new ResultsControls(*m_model));
    stack->addWidget(m_view);
    // After the rows' model, which heard of it first; a result that is filtered out counts too.
    connect(&processing, &ProcessingModel::resultInserted, this, &ResultsList::refresh);
    connect(m_model, &QAbstractItemModel::modelReset, this, &ResultsList::refresh);
    connect(m_model, &QAbstractItemModel::modelReset, m_view, &QAbstractItemView::scrollToTop);
    connect(m_view, &ResultsListView::compareRequested, this,
            [this](const QModelIndex& index) { Q_EMIT compareRequested(*m_model, index); });
    refresh();
}

QSize ResultsList::minimumSizeHint() const
{
    return {0, m_summary->sizeHint().height() + spacing + m_view->rowHeight()};
}

void ResultsList::refresh()
{
    m_view->setMaximumHeight(m_view->listHeight());
    m_view->updateGeometry();
    const bool empty = m_processing.resultCount() == 0;
    if (isHidden() != empty) setVisible(!empty);
    updateGeometry();
}

bool ResultsList::event(QEvent* event)
{
    if (event->type() == QEvent::ApplicationFontChange) refresh();
    return QWidget::event(event);
}

void ResultsList::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintRounded(painter, m_view->geometry(), cornerRadius,
                 TidewellTheme::withOpacity(TidewellTheme::leatherRaised(), 0.82),
                 TidewellTheme::withOpacity(TidewellTheme::cream(), 0.16));
}

} // namespace lumora
