// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The one place where errno of a file operation becomes a sentence for people.
#pragma once

#include "system/result.h"

#include <filesystem>
#include <string_view>

namespace lumora {

// "{name} could not be {done}: {text of code}", for example "a.png could not be removed: Permission denied".
// The name keeps its bytes.
Error fileError(const std::filesystem::path& path, std::string_view done, int code);

} // namespace lumora
