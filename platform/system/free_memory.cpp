// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/free_memory.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace lumora {
namespace {

// The number behind a word at the beginning of a line.
std::optional<std::int64_t> numberBehind(const std::filesystem::path& file, std::string_view word)
{
    std::ifstream lines(file);
    std::string first;
    std::int64_t number = 0;
    for (std::string rest; lines >> first; std::getline(lines, rest)) {
        if (first == word && lines >> number) return number;
        lines.clear();
    }
    return std::nullopt;
}

// Absent for a group without a limit, whose number is a word or beyond any machine.
std::optional<std::int64_t> numberIn(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    std::int64_t number = 0;
    return stream >> number ? std::optional(number) : std::nullopt;
}

// The names of one group's files, which differ between the two versions of the interface.
struct GroupFiles
{
    std::string_view limit;
    std::string_view used;
    std::string_view reclaimable; // in memory.stat: file pages that nobody looks at
};
constexpr GroupFiles version1{"memory.limit_in_bytes", "memory.usage_in_bytes", "total_inactive_file"};
constexpr GroupFiles version2{"memory.max", "memory.current", "inactive_file"};

std::int64_t freeIn(const std::filesystem::path& group, const GroupFiles& files)
{
    const auto limit = numberIn(group / files.limit);
    const auto used = numberIn(group / files.used);
    if (!limit || !used) return std::numeric_limits<std::int64_t>::max();
    const std::int64_t reclaimable = numberBehind(group / "memory.stat", files.reclaimable).value_or(0);
    return std::max<std::int64_t>(0, *limit - *used + reclaimable);
}

// The group and all that it lies in. Inside a container the path may be one of the world outside, of which
// only the top is there.
std::int64_t freeUpFrom(const std::filesystem::path& mount, const std::filesystem::path& group,
                        const GroupFiles& files)
{
    std::int64_t least = freeIn(mount, files);
    std::filesystem::path place = mount;
    for (const auto& part : group.relative_path()) {
        place /= part;
        least = std::min(least, freeIn(place, files));
    }
    return least;
}

std::int64_t freeInGroups(const std::filesystem::path& root)
{
    const std::filesystem::path mount = root / "sys/fs/cgroup";
    std::int64_t least = std::numeric_limits<std::int64_t>::max();
    std::ifstream lines(root / "proc/self/cgroup"); // "number:controllers:path"
    for (std::string line; std::getline(lines, line);) {
        const std::size_t first = line.find(':');
        const std::size_t second = line.find(':', first + 1);
        if (first == std::string::npos || second == std::string::npos) continue;
        const std::string controllers = line.substr(first + 1, second - first - 1);
        const std::string path = line.substr(second + 1);
        if (controllers.empty()) least = std::min(least, freeUpFrom(mount, path, version2));
        if (controllers == "memory") least = std::min(least, freeUpFrom(mount / "memory", path, version1));
    }
    return least;
}

} // namespace

std::int64_t freeMemory(const std::filesystem::path& root)
{
    constexpr std::int64_t kibibyte = 1024;
    const auto available = numberBehind(root / "proc/meminfo", "MemAvailable:");
    return available ? std::min(*available * kibibyte, freeInGroups(root)) : 0;
}

} // namespace lumora
