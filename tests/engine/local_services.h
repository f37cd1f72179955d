// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/local/local_picture_work.h"
#include "engine/optimizer_services.h"

#include <memory>

namespace lumora::test {

// Those of this machine, with the work on pixels done by the test's own process.
inline OptimizerServices localServices()
{
    OptimizerServices services = OptimizerServices::system();
    services.pixels = [](const std::stop_token&) {
        return std::make_unique<ImageOptimizer::LocalPictureWork>();
    };
    return services;
}

} // namespace lumora::test
