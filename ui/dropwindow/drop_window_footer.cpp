// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropwindow/drop_window_footer.h"

#include "ui/controls/link_button.h"

#include <QEvent>
#include <QStyle>

namespace lumora {
namespace {

constexpr int leastGap = 8;

} // namespace

DropWindowFooter::DropWindowFooter(QWidget* parent)
    : QWidget(parent), m_full(new TidewellLink(false, this)), m_compact(new TidewellLink(true, this)),
      m_coffee(new BuyMeACoffeeLink(this))
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize DropWindowFooter::sizeHint() const
{
    return {m_full->sizeHint().width() + leastGap + m_coffee->sizeHint().width(),
            m_coffee->sizeHint().height()};
}

QSize DropWindowFooter::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

void DropWindowFooter::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

bool DropWindowFooter::event(QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::LayoutRequest || type == QEvent::LayoutDirectionChange) arrange();
    return QWidget::event(event);
}

void DropWindowFooter::arrange()
{
    const bool full = width() >= sizeHint().width();
    m_full->setVisible(full);
    m_compact->setVisible(!full);
    const auto place = [this](QWidget* link, int left) {
        link->setGeometry(
            QStyle::visualRect(layoutDirection(), rect(), QRect(QPoint(left, 0), link->sizeHint())));
    };
    place(m_full, 0);
    place(m_compact, 0);
    place(m_coffee, width() - m_coffee->sizeHint().width());
}

} // namespace lumora
