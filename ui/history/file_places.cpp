// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/file_places.h"

#include "history/file_state.h"
#include "system/content_digest.h"
#include "system/regular_file.h"

namespace lumora {
namespace {

Whereabouts lookInTrash(const std::filesystem::path& path, TrashContents& trash)
{
    return trash.find(path) ? Whereabouts::inTrash : Whereabouts::gone;
}

bool liesInTrash(const FileTrace& trace)
{
    return trace.isOriginalTrashed && trace.trashedOriginal && trace.source &&
           stateAt(*trace.trashedOriginal) == trace.source;
}

Whereabouts placeOfOriginal(const FileRecord& file, TrashContents& trash)
{
    if (liesInTrash(file.trace)) return Whereabouts::inTrash;
    const auto standing = stateAt(file.source);
    const bool isOutput = file.output == file.source && standing && standing == file.trace.output;
    if (!standing || isOutput) return lookInTrash(file.source, trash);
    return !file.trace.source || standing == file.trace.source ? Whereabouts::there : Whereabouts::changed;
}

// Of one whose time alone is another.
bool hasOurContent(const FileRecord& file)
{
    if (file.trace.outputDigest.empty()) return false;
    const auto opened = openRegularFile(*file.output);
    return opened && contentDigest(opened->get()) == file.trace.outputDigest;
}

Whereabouts placeOfOutput(const FileRecord& file, TrashContents& trash)
{
    const auto standing = stateAt(*file.output);
    if (!standing) return lookInTrash(*file.output, trash);
    const auto& written = file.trace.output;
    if (!written || standing == written) return Whereabouts::there;
    return standing->size == written->size && hasOurContent(file) ? Whereabouts::there : Whereabouts::changed;
}

} // namespace

FilePlaces placesOf(const FileRecord& file, TrashContents& trash)
{
    FilePlaces places{.original = placeOfOriginal(file, trash)};
    if (file.output) places.output = placeOfOutput(file, trash);
    return places;
}

QString placeText(Whereabouts place)
{
    switch (place) {
    case Whereabouts::there:
        return QStringLiteral("there");
    case Whereabouts::changed:
        return QStringLiteral("changed since");
    case Whereabouts::inTrash:
        return QStringLiteral("in the Trash");
    case Whereabouts::gone:
        break;
    }
    return QStringLiteral("gone");
}

} // namespace lumora
