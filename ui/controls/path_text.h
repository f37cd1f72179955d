// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// File names, which are bytes, as text to show: what is not UTF-8 and what would break a line or be invisible
// becomes a replacement character. Never turn such a text back into a path.
#pragma once

#include <QString>

#include <filesystem>

namespace lumora {

QString pathText(const std::filesystem::path& path);

// The last component, also of a path that ends in a separator.
QString fileNameText(const std::filesystem::path& path);

} // namespace lumora
