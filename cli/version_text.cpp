// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/version_text.h"

#include "engine/library_versions.h"
#include "system/confinement.h"

#include <QtGlobal>

namespace lumora::cli {

std::string versionText()
{
    std::string text = "lumora-cli " LUMORA_VERSION " (" LUMORA_BUILD_NUMBER ")\n";
    for (const auto& [name, version] : imageLibraryVersions())
        text.append(name).append(" ").append(version).append("\n");
    text += std::string("Qt ") + qVersion() + "\n";
    text += "Workers: " + confinementOffered().description() + "\n";
    return text;
}

} // namespace lumora::cli
