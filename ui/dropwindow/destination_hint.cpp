// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropwindow/destination_hint.h"

#include "ui/settings/destination_text.h"
#include "ui/settings/setting_binding.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/symbols.h"
#include "ui/theme/tidewell_theme.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace lumora {
namespace {

constexpr int padding = 6;
constexpr int spacing = 5;
constexpr int leastText = 30;
constexpr double lineHeight = 18;

QFont lineFont(const QString& text)
{
    return fonts::shapedFor(text, fonts::systemFont(11, QFont::Medium));
}

Symbol sign(bool warning)
{
    return {warning ? QStringLiteral("exclamationmark.triangle.fill") : QStringLiteral("folder"), 10,
            QFont::DemiBold};
}

int widthAround(bool warning)
{
    return sign(warning).extent() + spacing + 2 * padding;
}

} // namespace

DestinationHint::DestinationHint(LumoraSettings& settings, QWidget* parent)
    : QPushButton(parent), m_settings(settings)
{
    setAutoDefault(true);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setAccessibleDescription(QStringLiteral("Opens the preferences, where this is set"));
    followSettings(settings,
                   {settings.destinationMode.key(), settings.destinationFolderBookmark.key(),
                    settings.moveOriginalToTrash.key()},
                   this, [this] { refresh(); });
}

void DestinationHint::refresh()
{
    m_isWarning = lacksDestinationFolder(m_settings);
    const QString line = destinationText(m_settings);
    setText(line);
    setAccessibleName(line);
    setToolTip(line.toHtmlEscaped());
    updateGeometry();
    update();
}

QSize DestinationHint::sizeHint() const
{
    return {QFontMetrics(lineFont(text())).horizontalAdvance(text()) + widthAround(m_isWarning) + 1,
            fonts::scaled(lineHeight)};
}

QSize DestinationHint::minimumSizeHint() const
{
    return {leastText + widthAround(m_isWarning), fonts::scaled(lineHeight)};
}

bool DestinationHint::event(QEvent* event)
{
    if (event->type() == QEvent::ApplicationFontChange) updateGeometry();
    // The folder may have gone or come back while another program was in use.
    if (event->type() == QEvent::WindowActivate) refresh();
    return QPushButton::event(event);
}

void DestinationHint::paintEvent(QPaintEvent*)
{
    using namespace TidewellTheme;
    QPainter painter(this);
    const QColor usual = m_isWarning ? copperBright() : creamMuted();
    const QColor colour = underMouse() || isDown() ? cream() : usual;
    const auto place = [this](int left, int width) {
        return QStyle::visualRect(layoutDirection(), rect(), QRect(left, 0, width, height()));
    };
    const Symbol symbol = sign(m_isWarning);
    symbol.paint(painter, place(padding, symbol.extent()), colour);
    painter.setFont(lineFont(text()));
    painter.setPen(colour);
    const QRect line = place(padding + symbol.extent() + spacing, width() - widthAround(m_isWarning));
    const Qt::Alignment edge = isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
    painter.drawText(line, static_cast<int>(edge | Qt::AlignAbsolute | Qt::AlignVCenter) | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(text(), Qt::ElideMiddle, line.width()));
    if (hasFocus()) paintFocusRing(painter, rect(), 5, copperBright());
}

} // namespace lumora
