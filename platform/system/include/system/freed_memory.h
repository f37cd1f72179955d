// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

namespace lumora {

// For a process whose work is one picture after another, before its first: large buffers come from the heap,
// too, and what is freed waits there for the next picture, whichever thread freed it. Pages that are new from
// the system each time cost a photograph a twentieth of its time; heaps of each thread's own, which no other
// uses, hold up to two fifths more where pictures are worked on by several.
void keepFreedMemory();

// From now on, memory that is handed out has this value, below 255, everywhere, or without one what was left
// in it. For decoders that leave what they cannot decode as it was: pictures of before would show there; and
// for encoders that look at what nobody wrote: the same picture would come out otherwise the next time. Any
// thread; for the whole process.
void fillNewMemory(std::optional<std::uint8_t> value);

// The one for both. No colour has it in brightness and both differences at once, so that what is nothing else
// was hardly written.
inline constexpr std::uint8_t newMemoryFill = 254;

// To be called after each file; every fourth call gives what is free on the heap back to the system. Codecs
// free buffers of ever other sizes, whose gaps would make a batch's memory grow with its number of files;
// closing them after every file would cost small ones a tenth of their time. Any thread.
void returnFreedMemory();

} // namespace lumora
