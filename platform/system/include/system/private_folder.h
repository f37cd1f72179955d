// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Short-lived files that nobody else may see. Thread-safe.
#pragma once

#include "system/file_descriptor.h"
#include "system/result.h"

#include <filesystem>
#include <memory>

namespace lumora {

// A folder of this process inside temporaryDirectory(), which only this user may enter. Removed with all that
// is in it when the last of those who share it lets it go; what a killed program leaves is found by the next
// start.
class PrivateFolder
{
public:
    // The one that this process has now, or else a new one. Fails when none can be made.
    static Result<std::shared_ptr<const PrivateFolder>> shared();
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    PrivateFolder(std::filesystem::path path, FileDescriptor lock);
    static Result<std::shared_ptr<const PrivateFolder>> make();

    std::filesystem::path m_path;
    FileDescriptor m_lock; // held by a living process
};

// Removes the private folders in temporaryDirectory() whose processes no longer live. Failures are left to
// the next call.
void removeAbandonedFolders();

} // namespace lumora
