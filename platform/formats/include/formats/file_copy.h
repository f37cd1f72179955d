// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A picture's file once more, with less around the picture. Any thread.
#pragma once

#include "formats/left_out.h"
#include "system/output_file.h"
#include "system/result.h"

#include <string_view>

namespace lumora {

// Appends what an open file of the type holds, the data of its picture bit by bit. False when there are no
// such copies of it: of another type than JPEG and PNG, animated, or of parts that cannot be told or taken
// apart. What was appended then means nothing. What is left may show another picture where colours depended
// on what is left out.
Result<bool> copyFile(int descriptor, std::string_view typeIdentifier, const LeftOut& leftOut,
                      OutputFile& output);

} // namespace lumora
