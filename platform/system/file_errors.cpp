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
    return {name + " could not be " + std::string(done) + ": " + std::generic_category().message(code),
            code == ENOMEM ? Error::Cause::memory : Error::Cause::unspecified};
}

} // namespace lumora
