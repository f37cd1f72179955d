// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace lumora {

// A packet, and the part of it that did not fit, which files keep under a name beside it.
struct SplitXmp
{
    std::string packet;
    std::string extension = {};     // empty where the packet holds everything
    std::string extensionName = {}; // as the packet gives it: 32 hexadecimal digits

    bool operator==(const SplitXmp&) const = default;
};

} // namespace lumora
