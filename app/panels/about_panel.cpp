// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/about_panel.h"

#include "engine/library_versions.h"
#include "system/bundle.h"
#include "ui/controls/styled_button.h"
#include "ui/settings/preferences_view.h"
#include "ui/theme/button_styles.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QPainter>

namespace lumora {
namespace {

constexpr int iconSide = 96;
const CopperButtonStyle copperStyle;

QString librariesText()
{
    QStringList lines{QStringLiteral("Qt %1").arg(QLatin1String(qVersion()))};
    for (const LibraryVersion& library : imageLibraryVersions())
        lines.append(QString::fromStdString(library.name + ' ' + library.version));
    return lines.join(QLatin1Char('\n'));
}

QLabel* label(const QString& text, const QFont& font, const QColor& colour, QWidget* parent)
{
    auto* line = new QLabel(text, parent);
    QPalette shades = line->palette();
    shades.setColor(QPalette::WindowText, colour);
    line->setPalette(shades);
    line->setTextFormat(Qt::PlainText);
    line->setAlignment(Qt::AlignCenter);
    line->setFont(font);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return line;
}

} // namespace

AboutPanel::AboutPanel(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("About Lumora"));
    setObjectName(QStringLiteral("LumoraAboutPanel"));
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setContentsMargins(28, 22, 28, 20);
    auto* icon = new QLabel(this);
    icon->setAlignment(Qt::AlignCenter);
    icon->setPixmap(QApplication::windowIcon().pixmap(iconSide));
    layout->addWidget(icon);
    using fonts::TextStyle;
    layout->addWidget(label(QStringLiteral("Lumora"), fonts::font(TextStyle::title2, QFont::Bold),
                            TidewellTheme::cream(), this));
    layout->addWidget(label(PreferencesView::appVersionText(mainBundlePath()), fonts::font(TextStyle::body),
                            TidewellTheme::creamMuted(), this));
    layout->addSpacing(8);
    layout->addWidget(label(QStringLiteral("Optimizes images on this computer.\n\u00A9 2026 Tidewell\n"
                                           "Licence: GPL-3.0-or-later"),
                            fonts::font(TextStyle::body), TidewellTheme::cream(), this));
    layout->addSpacing(8);
    layout->addWidget(
        label(librariesText(), fonts::font(TextStyle::caption), TidewellTheme::creamMuted(), this));
    auto* close = new StyledButton(copperStyle, QString(), QStringLiteral("Close"), this);
    connect(close, &QAbstractButton::clicked, this, &QDialog::reject);
    layout->addSpacing(8);
    layout->addWidget(close, 0, Qt::AlignCenter);
}

void AboutPanel::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), windowGradient(rect(), layoutDirection()));
}

} // namespace lumora
