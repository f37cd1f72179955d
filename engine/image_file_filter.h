// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a dropped item could be or hold images, judged fast enough for a hovering drag. Stateless, any
// thread.
#pragma once

#include <filesystem>

namespace lumora::ImageFileFilter {

// By the name's extension alone, case-insensitive, out of a closed list; the file need not exist.
bool isImage(const std::filesystem::path& path);

// An image by name, or a folder.
bool canContainImages(const std::filesystem::path& path);

} // namespace lumora::ImageFileFilter
