// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What another program prints: the independent readers of the tests.
#pragma once

#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

namespace lumora::test {

// Standard output of a shell command.
inline std::string outputOf(const std::string& command)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe.get()))
        output.append(buffer.data(), count);
    return output;
}

// Has exiftool write a tag, named as it names them, into the file.
inline void writeTag(const std::filesystem::path& file, const std::string& tag, const std::string& value)
{
    outputOf("exiftool -q -overwrite_original -" + tag + "='" + value + "' '" + file.string() + "'");
}

// The numeric values of a tag as exiftool finds them, one a line.
inline std::string tagOf(const std::filesystem::path& file, const std::string& tag)
{
    return outputOf("exiftool -s3 -n -" + tag + " '" + file.string() + "'");
}

} // namespace lumora::test
