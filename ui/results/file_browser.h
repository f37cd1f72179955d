// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the views ask of the desktop about one file. The application supplies it; both calls return at once.
#pragma once

#include <filesystem>
#include <functional>

namespace lumora {

struct FileBrowser
{
    std::function<void(const std::filesystem::path&)> showInFolder; // opens the folder with the file selected
    std::function<void(const std::filesystem::path&)> open;         // in the program that the desktop prefers
};

} // namespace lumora
