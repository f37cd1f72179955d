// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The side of the worker: answers requests by doing the work itself.
#pragma once

#include "engine/picture_work.h"
#include "engine/worker/worker_messages.h"

namespace lumora::ImageOptimizer {

// What `work` says to a request about `file`, which may be closed.
WorkerReply answer(PictureWork& work, const WorkerRequest& request, int file);

// Answers what comes over the channel until it ends or something else comes.
void serve(PictureWork& work, int channel);

} // namespace lumora::ImageOptimizer
