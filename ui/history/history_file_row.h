// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How a row of the history's files is painted.
#pragma once

#include "ui/history/file_places.h"

#include <QString>
#include <QStyleOptionViewItem>

#include <optional>

class QPainter;

namespace lumora {

struct HistoryFileRow
{
    const FileRecord& file;
    std::optional<FilePlaces> places; // absent: not looked up yet
    QString when;                     // empty where all rows are of one batch

    static int height();
    void paint(QPainter& painter, const QStyleOptionViewItem& option) const;
    // What became of its files, and when the batch was.
    QStringList placeTexts() const;

private:
    void paintSymbol(QPainter& painter, const QStyleOptionViewItem& option) const;
    void paintTexts(QPainter& painter, const QStyleOptionViewItem& option, const QRect& area,
                    const QString& lastLine) const;
    void paintPlaces(QPainter& painter, const QStyleOptionViewItem& option, const QRect& area) const;
};

} // namespace lumora
