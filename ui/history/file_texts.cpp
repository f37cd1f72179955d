// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/file_texts.h"

#include "model/result_text.h"
#include "ui/controls/path_text.h"
#include "ui/controls/tool_tip.h"

#include <QLocale>
#include <QStringList>

namespace lumora {

ProcessingResult resultOf(const FileRecord& file)
{
    return {file.source, file.output, file.originalBytes, file.outputBytes, file.message, file.isSuccess};
}

QString messageOf(const FileRecord& file)
{
    return QString::fromStdString(file.message).simplified();
}

QString sizesOf(const FileRecord& file)
{
    return file.output ? metricsText(resultOf(file), QLocale()) : QString();
}

QString outputPlaceText(const FileRecord& file, const FilePlaces& places)
{
    if (file.isUndone) return QStringLiteral("Undone");
    return places.output ? QStringLiteral("Output %1").arg(placeText(*places.output)) : QString();
}

QString originalPlaceText(const FilePlaces& places)
{
    return QStringLiteral("Original %1").arg(placeText(places.original));
}

QString fileToolTip(const FileRecord& file)
{
    QStringList lines{pathText(file.source)};
    if (file.output && *file.output != file.source) lines << pathText(*file.output);
    lines << QString::fromStdString(file.message) << sizesOf(file);
    return toolTipOf(lines);
}

QString spokenFile(const FileRecord& file, const std::optional<FilePlaces>& places)
{
    QStringList texts{messageOf(file), sizesOf(file)};
    if (places)
        texts << outputPlaceText(file, *places) << originalPlaceText(*places);
    else if (file.isUndone)
        texts << QStringLiteral("Undone");
    texts.removeAll(QString());
    return texts.join(QStringLiteral(", "));
}

} // namespace lumora
