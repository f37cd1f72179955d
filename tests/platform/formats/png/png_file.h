// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// PNG files put together chunk by chunk, open for reading.
#pragma once

#include "png/png_chunks.h"
#include "system/file_descriptor.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <fcntl.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumora::test {

inline std::string textOf(const Bytes& bytes)
{
    std::string text;
    std::ranges::transform(bytes, std::back_inserter(text),
                           [](std::byte b) { return std::to_integer<char>(b); });
    return text;
}

inline constexpr std::string_view pngSignature = "\x89PNG\r\n\x1A\n";

using PngChunks = std::vector<std::pair<std::string, std::string>>; // type and data

inline std::string pngOf(const PngChunks& chunks)
{
    Bytes bytes;
    for (const auto& [type, data] : chunks)
        appendChunk(bytes, type, data);
    return std::string(pngSignature) + textOf(bytes);
}

// The chunks of well-formed bytes, from the first one on.
inline PngChunks chunksIn(std::string_view bytes)
{
    PngChunks chunks;
    while (bytes.size() >= 12) {
        std::size_t length = 0;
        for (std::size_t i = 0; i < 4; ++i)
            length = length * 256 + static_cast<unsigned char>(bytes[i]);
        chunks.emplace_back(bytes.substr(4, 4), bytes.substr(8, length));
        bytes.remove_prefix(12 + length);
    }
    return chunks;
}

// The well-formed file with more chunks behind its header.
inline std::string pngWith(std::string_view png, const PngChunks& more)
{
    PngChunks chunks = chunksIn(png.substr(pngSignature.size()));
    chunks.insert(chunks.begin() + 1, more.begin(), more.end());
    return pngOf(chunks);
}

class OpenFile
{
public:
    explicit OpenFile(std::string_view content)
    {
        writeFile(m_folder / "a", content);
        m_file = FileDescriptor(::open((m_folder / "a").c_str(), O_RDONLY | O_CLOEXEC));
    }
    int get() const { return m_file.get(); }

private:
    TemporaryDirectory m_folder;
    FileDescriptor m_file;
};

} // namespace lumora::test
