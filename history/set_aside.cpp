// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/set_aside.h"

#include "system/file_services.h"

#include <string>

namespace lumora {
namespace {

std::filesystem::path withTail(const std::filesystem::path& file, const char* tail)
{
    return file.native() + tail;
}

} // namespace

std::filesystem::path setAside(const std::filesystem::path& file, std::string_view why)
{
    const std::string stem = (file.parent_path() / file.stem()).native() + "-" + std::string(why) + "-";
    std::filesystem::path name;
    int number = 0;
    do {
        name = stem + std::to_string(++number) + file.extension().native();
    } while (fileExists(name) || fileExists(withTail(name, "-wal")));
    std::error_code error;
    std::filesystem::rename(file, name, error);
    if (error) return {};
    std::error_code missing;
    std::filesystem::rename(withTail(file, "-wal"), withTail(name, "-wal"), missing);
    std::filesystem::remove(withTail(file, "-shm"), missing);
    return name;
}

} // namespace lumora
