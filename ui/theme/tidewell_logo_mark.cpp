// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/tidewell_logo_mark.h"

#include "system/bundle.h"
#include "ui/theme/symbols.h"
#include "ui/theme/tidewell_theme.h"

#include <QFile>
#include <QPainter>

namespace lumora {

TidewellLogoMark::TidewellLogoMark(QWidget* parent) : TidewellLogoMark(mainBundlePath(), parent) {}

TidewellLogoMark::TidewellLogoMark(const std::filesystem::path& bundle, QWidget* parent) : QWidget(parent)
{
    setFixedSize(46, 46);
    const std::filesystem::path file = bundle / "Contents" / "Resources" / "TidewellLogo.svg";
    const QString name = QFile::decodeName(QByteArray::fromStdString(file.string()));
    if (QFile::exists(name)) m_logo.load(name);
}

void TidewellLogoMark::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_logo.isValid()) {
        m_logo.render(&painter, rect());
    } else {
        const Symbol seal{QStringLiteral("seal.fill"), 23, QFont::DemiBold};
        seal.paint(painter, rect(), TidewellTheme::cream());
    }
}

} // namespace lumora
