// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Asks for the user's leave to write into a folder, where a sandbox stands between the program and it. Modal;
// main thread.
#pragma once

#include <filesystem>
#include <optional>

class QWidget;

namespace lumora {

// The folder that the user confirmed, whichever it is; absent when refused. `parent` may be hidden.
std::optional<std::filesystem::path> requestSaveAccess(const std::filesystem::path& folder, QWidget* parent);

} // namespace lumora
