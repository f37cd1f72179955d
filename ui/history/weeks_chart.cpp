// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/weeks_chart.h"

#include "ui/history/history_words.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <numeric>
#include <utility>

namespace lumora {
namespace {

using fonts::TextStyle;
using namespace TidewellTheme;

constexpr QMargins padding(12, 9, 12, 8);
constexpr int barsHeight = 44;
constexpr int gap = 5;
constexpr double barPart = 0.68; // of a week's width
constexpr double leastBar = 2;

QString weekText(const WeekSaving& week)
{
    return QStringLiteral("Week of %1: %2")
        .arg(QLocale(QLocale::English).toString(week.monday, QStringLiteral("d MMMM")),
             savedText(week.saved));
}

QFont headFont()
{
    QFont font = fonts::font(TextStyle::caption2, QFont::Bold);
    font.setCapitalization(QFont::AllUppercase);
    return font;
}

} // namespace

WeeksChart::WeeksChart(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Saved by week"));
}

void WeeksChart::display(std::vector<WeekSaving> weeks)
{
    m_weeks = std::move(weeks);
    m_pointed.reset();
    QStringList texts;
    for (const WeekSaving& week : m_weeks) {
        if (week.saved != 0) texts << weekText(week);
    }
    setAccessibleDescription(texts.isEmpty()
                                 ? QStringLiteral("Nothing in the last %1 weeks").arg(m_weeks.size())
                                 : texts.join(QStringLiteral(", ")));
    update();
}

QSize WeeksChart::sizeHint() const
{
    const int texts = fonts::lineHeight(TextStyle::caption2) + fonts::lineHeight(TextStyle::caption);
    return {400, padding.top() + padding.bottom() + texts + 2 * gap + fonts::scaled(barsHeight)};
}

bool WeeksChart::event(QEvent* event)
{
    if (event->type() == QEvent::ApplicationFontChange) updateGeometry();
    return QWidget::event(event);
}

QRectF WeeksChart::barsArea() const
{
    const QRect inner = rect().marginsRemoved(padding);
    const int top = inner.top() + fonts::lineHeight(TextStyle::caption2) + gap;
    return QRectF(inner.left(), top, inner.width(), fonts::scaled(barsHeight));
}

QRectF WeeksChart::column(std::size_t week) const
{
    const QRectF area = barsArea();
    const double width = area.width() / static_cast<double>(std::max<std::size_t>(1, m_weeks.size()));
    const auto place = static_cast<double>(isRightToLeft() ? m_weeks.size() - 1 - week : week);
    return {area.left() + place * width, area.top(), width, area.height()};
}

std::optional<std::size_t> WeeksChart::weekAt(const QPoint& point) const
{
    for (std::size_t week = 0; week < m_weeks.size(); ++week) {
        const QRectF reach = column(week);
        if (point.x() >= reach.left() && point.x() < reach.right()) return week;
    }
    return std::nullopt;
}

void WeeksChart::setPointed(std::optional<std::size_t> week)
{
    if (std::exchange(m_pointed, week) != week) update();
}

// Left to whoever else wants it: the background moves the window.
void WeeksChart::mouseMoveEvent(QMouseEvent* event)
{
    setPointed(weekAt(event->position().toPoint()));
    event->ignore();
}

void WeeksChart::leaveEvent(QEvent*)
{
    setPointed(std::nullopt);
}

void WeeksChart::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintRounded(painter, rect(), 8, withOpacity(leatherRaised(), 0.78), withOpacity(cream(), 0.14));
    paintHead(painter);
    paintBars(painter);
    paintMonths(painter);
}

// Beside the title the sum, or the week under the pointer.
void WeeksChart::paintHead(QPainter& painter)
{
    const QRect inner = rect().marginsRemoved(padding);
    const QRect line(inner.left(), inner.top(), inner.width(), fonts::lineHeight(TextStyle::caption2));
    const Qt::Alignment leading = isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
    const Qt::Alignment trailing = isRightToLeft() ? Qt::AlignLeft : Qt::AlignRight;
    const auto flags = [](Qt::Alignment edge) {
        return static_cast<int>(edge | Qt::AlignAbsolute | Qt::AlignVCenter) | Qt::TextDontClip |
               Qt::TextSingleLine;
    };
    painter.setFont(headFont());
    painter.setPen(copperBright());
    painter.drawText(line, flags(leading), QStringLiteral("Saved by week"));
    const std::int64_t sum =
        std::accumulate(m_weeks.begin(), m_weeks.end(), std::int64_t{0},
                        [](std::int64_t part, const WeekSaving& week) { return part + week.saved; });
    painter.setFont(fonts::font(TextStyle::caption));
    painter.setPen(creamMuted());
    painter.drawText(line, flags(trailing),
                     m_pointed ? weekText(m_weeks[*m_pointed])
                               : QStringLiteral("%1 weeks: %2").arg(m_weeks.size()).arg(savedText(sum)));
}

void WeeksChart::paintBars(QPainter& painter)
{
    std::int64_t most = 1;
    for (const WeekSaving& week : m_weeks)
        most = std::max(most, week.saved);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (std::size_t week = 0; week < m_weeks.size(); ++week) {
        const QRectF reach = column(week);
        const double share =
            static_cast<double>(std::max<std::int64_t>(0, m_weeks[week].saved)) / static_cast<double>(most);
        const double height = share > 0 ? std::max(leastBar, share * reach.height()) : 0;
        const double width = reach.width() * barPart;
        const QRectF bar(reach.center().x() - width / 2, reach.bottom() - height, width, height);
        painter.setBrush(m_pointed == week ? cream() : copperBright());
        painter.drawRoundedRect(bar, std::min(2.0, height / 2), std::min(2.0, height / 2));
    }
    const QRectF area = barsArea();
    painter.fillRect(QRectF(area.left(), area.bottom() + 1, area.width(), 1), withOpacity(cream(), 0.2));
}

// Where a month begins, as far as the names leave each other room.
void WeeksChart::paintMonths(QPainter& painter)
{
    painter.setFont(fonts::font(TextStyle::caption));
    painter.setPen(creamSubtle());
    const QRect inner = rect().marginsRemoved(padding);
    const int height = fonts::lineHeight(TextStyle::caption);
    double free = 0; // from the leading edge on
    for (std::size_t week = 0; week < m_weeks.size(); ++week) {
        const QDate sunday = m_weeks[week].monday.addDays(6);
        const double left = static_cast<double>(week) * column(week).width();
        const QString name = QLocale(QLocale::English).toString(sunday, QStringLiteral("MMM"));
        const double width = painter.fontMetrics().horizontalAdvance(name);
        if (sunday.day() > 7 || left < free || left + width > inner.width()) continue;
        free = left + width + gap;
        const QRect place(inner.left() + static_cast<int>(left), inner.bottom() + 1 - height,
                          static_cast<int>(width) + 1, height);
        painter.drawText(QStyle::visualRect(layoutDirection(), inner, place),
                         static_cast<int>(Qt::AlignCenter) | Qt::TextDontClip | Qt::TextSingleLine, name);
    }
}

} // namespace lumora
