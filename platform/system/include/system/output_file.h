// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A file that is being written through its descriptor: encoders need not know where it will lie. Every
// failure carries a sentence that names the file and the system's reason. Use from one thread.
#pragma once

#include "system/file_descriptor.h"
#include "system/result.h"

#include <cstddef>
#include <filesystem>
#include <span>
#include <utility>

namespace lumora {

class OutputFile
{
public:
    // Open for reading and writing. The name is for the sentences only.
    OutputFile(FileDescriptor descriptor, std::filesystem::path name)
        : m_descriptor(std::move(descriptor)), m_name(std::move(name))
    {
    }

    // One system call or more for each call: hand over whole strips, not single pixels.
    Status append(std::span<const std::byte> bytes);
    // What another file holds from its position on.
    Status appendFile(int descriptor);
    // Everything that the file is to hold, instead of what it holds.
    Status rewrite(std::span<const std::byte> bytes);

    // For encoders that go back to places that they have written. Stays this object's.
    int descriptor() const { return m_descriptor.get(); }

protected:
    const std::filesystem::path& name() const { return m_name; }

private:
    FileDescriptor m_descriptor;
    std::filesystem::path m_name;
};

} // namespace lumora
