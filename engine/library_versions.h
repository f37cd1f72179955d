// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The libraries that workers do pixels with, in the versions that they were built with: only workers load
// them. Thread-safe.
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
