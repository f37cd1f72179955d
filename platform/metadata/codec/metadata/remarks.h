// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What people wrote beside a picture for whoever opens it, wherever the container keeps such words. Any
// thread; throws std::bad_alloc.
#pragma once

#include "metadata/metadata.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumora {

// The keyword under which a PNG keeps such words.
inline constexpr std::string_view remarkKeyword = "Comment";

// As bytes of no stated alphabet: those of a JPEG or a GIF as they are, those of a PNG as UTF-8.
std::vector<std::string> remarksOf(const Metadata& metadata);

// The words as UTF-8: bytes that are not are taken as Latin-1.
std::string remarkAsUtf8(const std::string& remark);

} // namespace lumora
