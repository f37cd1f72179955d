// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/vips_library.h"

#include <vips/vips.h>

#include <cstdio>
#include <cstdlib>

namespace lumora {
namespace {

bool start()
{
    if (VIPS_INIT("lumora") != 0) {
        std::fputs("lumora: the image library could not be started\n", stderr);
        std::abort();
    }
    vips_concurrency_set(1);
    vips_cache_set_max(0);

    vips_operation_block_set("VipsForeign", TRUE);
    for (const char* allowed :
         {"VipsForeignLoadJpeg", "VipsForeignLoadPng", "VipsForeignLoadNsgif", "VipsForeignLoadTiff",
          "VipsForeignLoadHeif", "VipsForeignLoadWebp", "VipsForeignSaveJpeg", "VipsForeignSavePng",
          "VipsForeignSaveHeif", "VipsForeignSaveTiff", "VipsForeignSaveCgif"}) {
        vips_operation_block_set(allowed, FALSE);
    }

    // Warnings about odd metadata are no business of a terminal.
    g_log_set_handler(
        "VIPS", G_LOG_LEVEL_MASK, [](const gchar*, GLogLevelFlags, const gchar*, gpointer) {}, nullptr);
    return true;
}

} // namespace

void ensureVipsReady()
{
    static const bool started = start();
    static_cast<void>(started);
}

Error takeVipsError()
{
    const char* text = vips_error_buffer();
    Error error{text ? text : ""};
    vips_error_clear();
    while (!error.description.empty() && error.description.back() == '\n')
        error.description.pop_back();
    return error;
}

void VipsUnref::operator()(void* object) const
{
    g_object_unref(object);
}

} // namespace lumora
