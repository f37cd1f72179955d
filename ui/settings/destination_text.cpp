// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/destination_text.h"

#include "model/folder_bookmark.h"
#include "model/lumora_settings.h"
#include "ui/controls/path_text.h"

#include <QDir>

namespace lumora {
namespace {

QString placeText(const LumoraSettings& settings)
{
    if (settings.destinationMode() == DestinationMode::originalLocation)
        return QStringLiteral("Next to the originals");
    return lacksDestinationFolder(settings) ? chosenFolderText(settings)
                                            : QStringLiteral("Into %1").arg(chosenFolderText(settings));
}

} // namespace

QString folderText(const std::filesystem::path& folder)
{
    const QString text = pathText(folder);
    const QString home = QDir::homePath();
    if (text == home) return QStringLiteral("~");
    return text.startsWith(home + u'/') ? u'~' + text.mid(home.size()) : text;
}

bool lacksDestinationFolder(const LumoraSettings& settings)
{
    return settings.destinationMode() == DestinationMode::selectedFolder &&
           !resolveFolderBookmark(settings.destinationFolderBookmark());
}

QString chosenFolderText(const LumoraSettings& settings)
{
    const QByteArray bookmark = settings.destinationFolderBookmark();
    if (bookmark.isEmpty()) return QStringLiteral("No folder chosen yet");
    const QString folder = folderText(bookmark.toStdString());
    return resolveFolderBookmark(bookmark) ? folder : QStringLiteral("%1 is gone").arg(folder);
}

QString destinationText(const LumoraSettings& settings)
{
    return placeText(settings) + (settings.moveOriginalToTrash() ? QStringLiteral(", originals to the Trash")
                                                                 : QStringLiteral(", originals kept"));
}

} // namespace lumora
