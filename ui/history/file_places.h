// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Where the two files of a row of the history are by now. May take long where a volume sleeps; any thread.
#pragma once

#include "history/history_records.h"
#include "system/trash_search.h"

#include <QString>

#include <optional>

namespace lumora {

enum class Whereabouts { there, changed, inTrash, gone };

struct FilePlaces
{
    Whereabouts original = Whereabouts::there;
    std::optional<Whereabouts> output = {}; // absent: none was written

    bool operator==(const FilePlaces&) const = default;
};

FilePlaces placesOf(const FileRecord& file, TrashContents& trash);

// "there", "changed since", "in the Trash", "gone".
QString placeText(Whereabouts place);

} // namespace lumora
