// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace lumora {

struct NotePlace
{
    std::size_t at; // from the start of the block
    bool isBigEndian;
};

// Where the note lies in an EXIF block; nothing without one, or when it does not lie in it or is not of
// bytes. Any thread.
std::optional<NotePlace> placeOfNote(const std::string& block);

// The EXIF block laid out anew around a camera maker's note, whose bytes stay as they are at the place where
// they lay: whatever its offsets count from, they still lead to the same bytes of it. Empty when the block
// is damaged or would become far too long. Any thread; throws std::bad_alloc.
std::string withNoteInPlace(const std::string& block, const std::string& note, std::size_t place);

} // namespace lumora
