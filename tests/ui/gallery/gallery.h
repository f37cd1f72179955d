// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of every view in its states, for people to look at. Each page is a function that makes widgets and
// hands them to `save`; the program runs all pages at scale 1 and 2.
#pragma once

#include <QImage>
#include <QString>

class QWidget;

namespace lumora::gallery {

class Gallery
{
public:
    Gallery(QString folder, double scale) : m_folder(std::move(folder)), m_scale(scale) {}

    double scale() const { return m_scale; }
    // Writes {name}@{scale}x.png; the widget is laid out and its events are run first.
    void save(QWidget& widget, const QString& name) const;
    void save(const QImage& image, const QString& name) const;

private:
    QString m_folder;
    double m_scale;
};

void dropWindowPages(const Gallery& gallery);
void zonePages(const Gallery& gallery);
void symbolPages(const Gallery& gallery);
void settingsPages(const Gallery& gallery);
void menuPages(const Gallery& gallery);
void dialogPages(const Gallery& gallery);
void windowPages(const Gallery& gallery);
void comparisonPages(const Gallery& gallery);
void historyPages(const Gallery& gallery);

} // namespace lumora::gallery
