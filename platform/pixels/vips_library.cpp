// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/vips_library.h"

#include "pixels/image_library.h"

#include <gmodule.h>
#include <vips/vips.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

namespace lumora {
namespace {

// The library looks for its modules below the folder of this variable and sets it itself when it is missing.
// While this object lives the variable names no folder; then it is as it was, for the programs that Lumora
// starts.
class WithoutModules
{
public:
    WithoutModules()
    {
        if (const char* value = std::getenv(variable)) m_before = value;
        g_setenv(variable, "/nonexistent", TRUE);
    }
    ~WithoutModules()
    {
        if (m_before) {
            g_setenv(variable, m_before->c_str(), TRUE);
        } else {
            g_unsetenv(variable);
        }
    }
    WithoutModules(const WithoutModules&) = delete;
    WithoutModules& operator=(const WithoutModules&) = delete;

private:
    static constexpr const char* variable = "VIPSHOME";
    std::optional<std::string> m_before;
};

bool start()
{
    const WithoutModules withoutModules;
    if (VIPS_INIT("lumora") != 0) {
        std::fputs("lumora: the image library could not be started\n", stderr);
        std::abort();
    }
    vips_concurrency_set(1);
    vips_cache_set_max(0);

    vips_operation_block_set("VipsForeign", TRUE);

    // Warnings about odd metadata are no business of a terminal.
    g_log_set_handler(
        "VIPS", G_LOG_LEVEL_MASK, [](const gchar*, GLogLevelFlags, const gchar*, gpointer) {}, nullptr);
    return true;
}

bool startHeif()
{
    ensureVipsReady();
    const std::string module = std::string(LUMORA_VIPS_LIBRARY_DIRECTORY "/vips-modules-") +
                               std::to_string(vips_version(0)) + "." + std::to_string(vips_version(1)) +
                               "/vips-heif.so";
    // Where the reader is built in there is no module to open.
    if (g_type_from_name("VipsForeignLoadHeif") == 0) g_module_open(module.c_str(), G_MODULE_BIND_LAZY);
    allowOperation("VipsForeignLoadHeif");
    return true;
}

// The words of the image library, of the JPEG library and of our own. Those of another thread's file are no
// worse a hint: memory is short for all.
bool speaksOfMemory(std::string_view text)
{
    return std::ranges::any_of(
        std::array<std::string_view, 3>{"out of memory", "Insufficient memory", "not enough memory"},
        [text](std::string_view words) { return text.find(words) != std::string_view::npos; });
}

} // namespace

void ensureVipsReady()
{
    static const bool started = start();
    static_cast<void>(started);
}

void allowOperation(const char* name)
{
    vips_operation_block_set(name, FALSE);
}

void startWholeImageLibrary(int outOfMemoryStatus)
{
    static int status = 0;
    status = outOfMemoryStatus;
    g_log_set_handler(
        "GLib", static_cast<GLogLevelFlags>(G_LOG_LEVEL_ERROR | G_LOG_FLAG_FATAL),
        [](const gchar*, GLogLevelFlags, const gchar*, gpointer) { std::_Exit(status); }, nullptr);
    ensureHeifReady();
}

void ensureHeifReady()
{
    static const bool started = startHeif();
    static_cast<void>(started);
}

Error takeVipsError()
{
    const char* text = vips_error_buffer();
    Error error{text ? text : ""};
    vips_error_clear();
    while (!error.description.empty() && error.description.back() == '\n')
        error.description.pop_back();
    if (speaksOfMemory(error.description)) error.cause = Error::Cause::memory;
    return error;
}

void VipsUnref::operator()(void* object) const
{
    g_object_unref(object);
}

std::string_view blobOf(VipsImage* image, const char* field)
{
    const void* data = nullptr;
    std::size_t size = 0;
    if (!vips_image_get_typeof(image, field) || vips_image_get_blob(image, field, &data, &size) != 0)
        return {};
    return {static_cast<const char*>(data), size};
}

std::size_t pixelBytesOf(VipsImage* image)
{
    return vips_format_sizeof(vips_image_get_format(image)) *
           static_cast<std::size_t>(vips_image_get_bands(image));
}

std::size_t rowBytesOf(VipsImage* image)
{
    return pixelBytesOf(image) * static_cast<std::size_t>(vips_image_get_width(image));
}

} // namespace lumora
