// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "file_errors.h"

#include <cerrno>
#include <string>
#include <system_error>

namespace lumora {

Error fileError(const std::filesystem::path& path, std::string_view done, int code)
{
    const std::string name = path.has_filename() ? path.filename().native() : path.native();
    const std::string reason = std::generic_category().message(code);
    return {name + " could not be " + std::string(done) + ": " + reason,
            code == ENOMEM ? Error::Cause::memory : Error::Cause::unspecified, reason};
}

} // namespace lumora
