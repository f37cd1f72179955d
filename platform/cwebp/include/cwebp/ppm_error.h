// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "system/result.h"

namespace lumora {

// Why the external encoder's input was not made.
struct PpmError
{
    enum class Step { drawing, writing };

    Step step;
    Error error;
};

} // namespace lumora
