// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Rows read by a thread of their own while the ones before them are worked on: most decoders keep no more
// than one processor busy, and what is made of a large picture need not wait for the last of its rows. Any
// thread; throws std::bad_alloc.
#pragma once

#include "pixels/row_stream.h"

#include <memory>

namespace lumora {

// Provides the source's rows, those of one strip of streamedRows at a time, from the top down, and reads some
// strips ahead from now on until it is destroyed. Empty where the picture is small or very wide, and where
// there is no processor without work or no thread to be had.
RowProvider rowsAhead(_VipsImage* source);

// Makes what the maker makes, from the source's rows ahead where they are provided. The maker asks for rows
// of one strip at a time.
std::unique_ptr<RowMaker> readingAhead(_VipsImage* source, std::unique_ptr<RowMaker> maker);

} // namespace lumora
