// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exiv2_library.h"
#include "metadata/split_xmp.h"

#include <functional>

namespace lumora {

using EncodeXmp = std::function<std::string(const Exiv2::XmpData& data, bool isExtension)>;

// A packet of at most `longest` bytes and an extension with the largest properties, whole ones; empty when
// that cannot be had. Any thread. Throws Exiv2::Error and standard exceptions.
SplitXmp split(const Exiv2::XmpData& data, std::size_t longest, const EncodeXmp& encode);

} // namespace lumora
