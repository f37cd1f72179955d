// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A process that works on pixels and can do nothing else: it is started by Lumora with a channel and gives up
// everything but that before the first picture comes.
#include "engine/local/local_picture_work.h"
#include "engine/local/worker_service.h"
#include "engine/worker/worker_program.h"
#include "formats/codec_preparation.h"
#include "system/confinement.h"
#include "system/freed_memory.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <sys/socket.h>
#include <sys/stat.h>

int main(int argumentCount, char** arguments)
{
    constexpr int channel = 3;
    struct stat status = {};
    if (fstat(channel, &status) != 0 || !S_ISSOCK(status.st_mode)) {
        std::fputs("lumora-worker is started by Lumora\n", stderr);
        return EXIT_FAILURE;
    }
    lumora::keepFreedMemory();
    lumora::prepareCodecs(lumora::ImageOptimizer::outOfMemoryExit);
    if (argumentCount > 1 && std::string_view(arguments[1]) == lumora::ImageOptimizer::hevcArgument)
        lumora::prepareHevcEncoder();
#ifndef LUMORA_SANITIZED
    lumora::confineProcess();
#endif
    lumora::ImageOptimizer::LocalPictureWork work;
    lumora::ImageOptimizer::serve(work, channel);
    // There is nothing to be tidied up, and libraries would try.
    std::_Exit(EXIT_SUCCESS);
}
