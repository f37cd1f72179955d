// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a HEIF file holds beside its picture and the image library does not hand on. Any thread; throws
// std::bad_alloc.
#pragma once

#include <string>
#include <vector>

namespace lumora {

struct HeifExtras
{
    std::string xmp;                         // the packet; empty without one
    std::vector<std::string> auxiliaryTypes; // what each further picture that belongs to the first is for
};

// Empty when the file is damaged. Its position stays where it is.
HeifExtras heifExtras(int descriptor);

} // namespace lumora
