// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/file_services.h"

#include "file_errors.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lumora {
namespace {

std::optional<struct stat> statusOf(const std::filesystem::path& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return status;
}

} // namespace

std::int64_t fileSize(const std::filesystem::path& path)
{
    const auto status = statusOf(path);
    return status && S_ISREG(status->st_mode) ? std::int64_t{status->st_size} : 0;
}

bool fileExists(const std::filesystem::path& path)
{
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0;
}

bool isExecutableFile(const std::filesystem::path& path)
{
    const auto status = statusOf(path);
    return status && S_ISREG(status->st_mode) && ::access(path.c_str(), X_OK) == 0;
}

Status checkReplaceable(const std::filesystem::path& path)
{
    struct stat status;
    if (::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode))
        return fileError(path, "written", EISDIR);
    return Done{};
}

Status removeFile(const std::filesystem::path& path)
{
    if (::unlink(path.c_str()) != 0) return fileError(path, "removed", errno);
    return Done{};
}

std::optional<timespec> modificationDate(const std::filesystem::path& path)
{
    const auto status = statusOf(path);
    if (!status) return std::nullopt;
    return status->st_mtim;
}

Status setModificationDate(const std::filesystem::path& path, timespec date)
{
    const std::array<timespec, 2> times{timespec{0, UTIME_OMIT}, date};
    if (::utimensat(AT_FDCWD, path.c_str(), times.data(), 0) != 0) return fileError(path, "dated", errno);
    return Done{};
}

std::optional<std::uint32_t> filePermissions(const std::filesystem::path& path)
{
    const auto status = statusOf(path);
    if (!status) return std::nullopt;
    return status->st_mode & 07777U;
}

std::filesystem::path temporaryDirectory()
{
    std::error_code error;
    const std::filesystem::path named = std::filesystem::temp_directory_path(error);
    if (error) return "/tmp";
    const std::filesystem::path absolute = std::filesystem::absolute(named, error);
    return error ? std::filesystem::path("/tmp") : absolute;
}

} // namespace lumora
