// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

class QWidget;

namespace lumora {

// Asks, above `parent`, whether the images of a very large tree shall all be optimized. Modal; main thread.
bool confirmManyFiles(std::size_t files, std::size_t folders, QWidget* parent);

} // namespace lumora
