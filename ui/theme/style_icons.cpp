// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/style_icons.h"

#include "ui/theme/symbols.h"
#include "ui/theme/tidewell_theme.h"

namespace lumora {
namespace {

constexpr double iconSize = 13;

// Of the tools above the list, on the window's ground.
const char* toolSymbol(QStyle::StandardPixmap kind)
{
    switch (kind) {
    case QStyle::SP_ArrowBack:
    case QStyle::SP_FileDialogBack:
        return "arrow.left";
    case QStyle::SP_ArrowForward:
        return "arrow.right";
    case QStyle::SP_FileDialogToParent:
        return "arrow.up";
    case QStyle::SP_FileDialogNewFolder:
        return "folder.badge.plus";
    case QStyle::SP_FileDialogListView:
        return "square.grid.2x2";
    case QStyle::SP_FileDialogDetailedView:
        return "list.bullet";
    default:
        return nullptr;
    }
}

// Of the list's entries, on a card.
const char* entrySymbol(QStyle::StandardPixmap kind)
{
    switch (kind) {
    case QStyle::SP_DirIcon:
    case QStyle::SP_DirOpenIcon:
    case QStyle::SP_DirClosedIcon:
    case QStyle::SP_DirLinkIcon:
    case QStyle::SP_DirHomeIcon:
        return "folder";
    case QStyle::SP_FileIcon:
    case QStyle::SP_FileLinkIcon:
        return "doc";
    case QStyle::SP_ComputerIcon:
    case QStyle::SP_DesktopIcon:
    case QStyle::SP_DriveHDIcon:
        return "desktopcomputer";
    default:
        return nullptr;
    }
}

} // namespace

std::optional<QIcon> styleIcon(QStyle::StandardPixmap kind)
{
    if (const char* tool = toolSymbol(kind))
        return Symbol{QLatin1String(tool), iconSize, QFont::DemiBold}.icon(TidewellTheme::cream());
    const char* entry = entrySymbol(kind);
    if (!entry) return std::nullopt;
    QIcon icon = Symbol{QLatin1String(entry), iconSize}.icon(TidewellTheme::copperStrong());
    // A chosen row is copper itself.
    icon.addPixmap(Symbol{QLatin1String(entry), iconSize}.pixmap(TidewellTheme::cream(), 2), QIcon::Selected);
    return icon;
}

} // namespace lumora
