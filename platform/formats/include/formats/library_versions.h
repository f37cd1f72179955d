// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The libraries and the encoder in use, as they call themselves at run time. Thread-safe.
#pragma once

#include <string>
#include <vector>

namespace lumora {

struct LibraryVersion
{
    std::string name;
    std::string version;
};

std::vector<LibraryVersion> imageLibraryVersions();

} // namespace lumora
