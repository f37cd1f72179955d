// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the optimizer takes from outside besides the file system: the question to the user, the Trash, the
// place of the bundled encoder, and the order to give up. Each is replaceable in tests. A value; its
// functions are called from the worker's thread.
#pragma once

#include "system/result.h"

#include <filesystem>
#include <functional>
#include <stop_token>

namespace lumora {

struct OptimizerServices
{
    // Asked about an existing output file when the settings warn before overwriting; true replaces, false
    // skips. May block its worker while the question stands; whoever provides it hops to the user-interface
    // thread. The default of a program without a user is to skip.
    std::function<bool(const std::filesystem::path&)> confirmOverwrite;
    // Moves a file to the user's Trash.
    std::function<Status(const std::filesystem::path&)> moveToTrash;
    // The application directory that holds Contents/MacOS/cwebp.
    std::filesystem::path bundleURL;
    // Once stopped, a running encoder is killed and its file fails.
    std::stop_token killEncoders;

    // The services of this machine: skip, the desktop's Trash, the directory of the running program, never
    // stopped.
    static OptimizerServices system();
};

} // namespace lumora
