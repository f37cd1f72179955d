// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixels/row_reader.h"
#include "system/result.h"

#include <functional>

struct _VipsImage;

namespace lumora {

// Reads all rows of a picture, from the top down, as they are stored; `take` gets whole strips. Fails with
// the first failure of either side.
using RowTaker = std::function<Status(int first, int count, const RowSpan& rows)>;
Status readRows(_VipsImage* image, const RowTaker& take);

} // namespace lumora
