// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/optimizer_services.h"

#include "platform/application_bundle.h"
#include "platform/trash.h"

namespace lumora {

OptimizerServices OptimizerServices::system()
{
    return {
        .confirmOverwrite = [](const std::filesystem::path&) { return false; },
        .moveToTrash = [](const std::filesystem::path& url) { return lumora::moveToTrash(url); },
        .bundleURL = mainBundleURL(),
        .killEncoders = {},
    };
}

} // namespace lumora
