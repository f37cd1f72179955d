// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The tables, and the state that a connection has to be in. One thread at a time.
#pragma once

#include "history/sqlite.h"

namespace lumora {

// What a file in the history's place can be.
enum class FoundDatabase { ours, damaged, newer };

// Makes the tables in an empty database. Waits for whoever does that at the same moment.
FoundDatabase prepareDatabase(Sqlite& database);

} // namespace lumora
