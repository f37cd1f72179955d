// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The metadata library's view of an open file. The library itself opens files by name, and a name may lead to
// another file by then, or to a pipe.
#pragma once

#include "hidden_xmp.h"

#include <exiv2/basicio.hpp>

#include <vector>

namespace lumora {

// For reading alone, with the masked bytes, in order, instead of the file's. The descriptor stays the
// caller's, and its position where it is. One thread.
Exiv2::BasicIo::AutoPtr openedForReading(int descriptor, std::vector<Mask> masks = {});

} // namespace lumora
