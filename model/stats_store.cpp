// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/stats_store.h"

#include "system/atomic_file.h"
#include "system/file_services.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <utility>

namespace lumora {
namespace {

// A thousand times what the totals need. Anything larger is not ours and is not taken into memory.
constexpr off_t largestFile = 1 << 18;

bool makeFolder(const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    return std::filesystem::is_directory(folder, error);
}

// Only a regular file: reading a pipe in its place would wait for a writer.
std::optional<std::string> readSmallFile(const std::filesystem::path& file)
{
    const FileDescriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (::fstat(descriptor.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    if (status.st_size > largestFile) return std::nullopt;

    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    const ssize_t count = ::read(descriptor.get(), text.data(), text.size());
    if (count != status.st_size) return std::nullopt;
    return text;
}

LifetimeStats load(const std::filesystem::path& file)
{
    const auto text = readSmallFile(file);
    return text ? lifetimeStatsFromJson(*text).value_or(LifetimeStats()) : LifetimeStats();
}

} // namespace

std::filesystem::path StatsStore::userDataFolder()
{
    const char* chosen = std::getenv("XDG_DATA_HOME");
    std::filesystem::path folder = chosen ? chosen : "";
    if (folder.is_absolute() && makeFolder(folder)) return folder;
    const char* home = std::getenv("HOME");
    return std::filesystem::path(home ? home : "/") / ".local/share";
}

StatsStore::StatsStore(const std::filesystem::path& dataFolder, Now now, QObject* parent)
    : QObject(parent), m_file(dataFolder / "Lumora" / "stats.json"), m_now(std::move(now)),
      m_stats(load(m_file))
{
    makeFolder(m_file.parent_path());
    removeStaleDrafts(m_file.parent_path());
}

void StatsStore::record(const ProcessingResult& result)
{
    m_stats.add(result, m_now());
    save();
    Q_EMIT statsChanged();
}

void StatsStore::reset()
{
    m_stats = LifetimeStats();
    save();
    Q_EMIT statsChanged();
}

void StatsStore::save()
{
    const std::string text = toJson(m_stats);
    // A failure is left to the next save: the totals in memory are what counts.
    static_cast<void>(writeFileAtomically(m_file, std::as_bytes(std::span(text))));
}

} // namespace lumora
