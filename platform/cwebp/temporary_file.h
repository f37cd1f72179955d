// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "records/uuid.h"
#include "system/file_services.h"
#include "system/private_folder.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace lumora {

// A path for a short-lived file; what was made there is removed with this object.
class TemporaryFile
{
public:
    TemporaryFile(const PrivateFolder& folder, std::string_view extension)
        : m_path(folder.path() / ("lumora-" + Uuid::random().toString() + "." + std::string(extension)))
    {
    }
    ~TemporaryFile() { static_cast<void>(removeFile(m_path)); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace lumora
