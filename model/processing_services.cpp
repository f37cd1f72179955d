// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/processing_services.h"

#include "engine/file_input_resolver.h"
#include "engine/image_optimizer.h"
#include "engine/worker/worker_processes.h"
#include "system/bundle.h"
#include "system/free_memory.h"
#include "system/trash.h"

#include <QThread>

namespace lumora {

ProcessingServices ProcessingServices::system()
{
    ProcessingServices services;
    services.optimize = ImageOptimizer::optimize;
    services.optimizerServices = OptimizerServices::system();
    services.optimizerServices.keepInTrash = keepInTrash;
    services.expand = FileInputResolver::imageURLs;
    services.requestSaveAccess = [](const std::filesystem::path& folder) { return std::optional(folder); };
    services.activeProcessorCount = QThread::idealThreadCount();
    // The other half is for the rest of the desktop, and for estimates that were too low.
    services.memoryToShare = [] { return freeMemory() / 2; };
    services.workerProgram = ImageOptimizer::findWorker(mainBundlePath());
    return services;
}

} // namespace lumora
