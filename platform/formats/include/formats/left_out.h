// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

// What a copy of a picture's file lacks.
struct LeftOut
{
    bool metadata = false; // all that does not decide how the picture looks, and all that follows it
    bool profile = false;  // and whatever else says what its colours are
};

} // namespace lumora
