// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// lumora_gallery DIR: writes the pictures into the folder DIR.
#include "tests/ui/gallery/gallery.h"

#include "ui/theme/fonts.h"
#include "ui/theme/lumora_style.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QLocale>
#include <QTextStream>
#include <QWidget>

namespace lumora::gallery {

void Gallery::save(QWidget& widget, const QString& name) const
{
    widget.show();
    // A new text travels up through nested layouts and its room comes back down.
    for (int round = 0; round < 3; ++round)
        QCoreApplication::processEvents();
    QImage image(widget.size() * m_scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(m_scale);
    image.fill(Qt::transparent);
    widget.render(&image);
    save(image, name);
}

void Gallery::save(const QImage& image, const QString& name) const
{
    image.save(QStringLiteral("%1/%2@%3x.png").arg(m_folder, name).arg(m_scale));
}

} // namespace lumora::gallery

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1]))) {
        QTextStream(stderr) << "usage: lumora_gallery DIR\n";
        return 2;
    }
    QLocale::setDefault(QLocale::c());
    QApplication::setFont(QFont(QStringLiteral("Inter")));
    QApplication::setStyle(new lumora::LumoraStyle);
    QApplication::setWindowIcon(QIcon(QStringLiteral(LUMORA_APPLICATION_ICON)));
    lumora::fonts::install(application, 1);
    for (const double scale : {1.0, 2.0}) {
        const lumora::gallery::Gallery gallery(QString::fromLocal8Bit(argv[1]), scale);
        lumora::gallery::dropWindowPages(gallery);
        lumora::gallery::zonePages(gallery);
        lumora::gallery::symbolPages(gallery);
        lumora::gallery::settingsPages(gallery);
        lumora::gallery::menuPages(gallery);
        lumora::gallery::dialogPages(gallery);
        lumora::gallery::windowPages(gallery);
        lumora::gallery::comparisonPages(gallery);
        lumora::gallery::historyPages(gallery);
    }
    return 0;
}
