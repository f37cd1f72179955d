// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Messages of a fixed size over a socket, each with at most one open file. Any thread; one at a time a
// socket.
#pragma once

#include "system/file_descriptor.h"

#include <chrono>
#include <cstddef>
#include <span>

namespace lumora {

// The descriptor -1 sends none. False when nobody is there to read it.
bool sendMessage(int channel, std::span<const std::byte> message, int descriptor = -1);

// Whether a message waits or the channel has ended, now or within the time.
bool hasNews(int channel, std::chrono::milliseconds within);

// Waits for a message of exactly this size. Its file goes to `descriptor`, which is closed without one. False
// at the end of the channel and for anything else than such a message.
bool receiveMessage(int channel, std::span<std::byte> message, FileDescriptor& descriptor);

} // namespace lumora
