// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "system/result.h"

#include <utility>

namespace lumora {

// Why a picture was not drawn.
struct DrawError : Error
{
    // As for any other error: the picture is damaged, or memory short.
    DrawError(Error error) : Error(std::move(error)) {}
    static DrawError inconvertible(Error error)
    {
        DrawError failure(std::move(error));
        failure.isInconvertible = true;
        return failure;
    }

    // The picture is good and can be had as it is; only this size or these colours cannot. Known before a row
    // is decoded.
    bool isInconvertible = false;
};

} // namespace lumora
