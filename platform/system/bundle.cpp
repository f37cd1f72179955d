// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/bundle.h"

#include <glib.h>

#include <fstream>
#include <iterator>
#include <memory>

namespace lumora {
namespace {

// What has been read of the top-level dictionary so far. `plist/dict/key` and its value lie at depth 3.
struct Reader
{
    std::string_view wantedKey;
    int depth = 0;
    std::string element; // at depth 3
    std::string text;    // of that element
    std::string lastKey;
    std::optional<std::string> value;
};

void startElement(GMarkupParseContext*, const char* name, const char**, const char**, void* data, GError**)
{
    auto& reader = *static_cast<Reader*>(data);
    if (++reader.depth != 3) return;
    reader.element = name;
    reader.text.clear();
}

void endElement(GMarkupParseContext*, const char*, void* data, GError**)
{
    auto& reader = *static_cast<Reader*>(data);
    if (reader.depth-- != 3) return;
    if (reader.element == "key") {
        reader.lastKey = reader.text;
    } else if (reader.element == "string" && reader.lastKey == reader.wantedKey && !reader.value) {
        reader.value = reader.text;
    }
}

void readText(GMarkupParseContext*, const char* text, gsize length, void* data, GError**)
{
    auto& reader = *static_cast<Reader*>(data);
    if (reader.depth == 3) reader.text.append(text, length);
}

} // namespace

std::filesystem::path mainBundlePath()
{
    std::error_code error;
    const std::filesystem::path programs =
        std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    const std::filesystem::path contents = programs.parent_path();
    const bool inBundle = programs.filename() == "MacOS" && contents.filename() == "Contents";
    return inBundle ? contents.parent_path() : programs;
}

std::optional<std::string> infoDictionaryValue(const std::filesystem::path& bundle, std::string_view key)
{
    std::ifstream file(bundle / "Contents" / "Info.plist", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};

    constexpr GMarkupParser callbacks{startElement, endElement, readText, nullptr, nullptr};
    Reader reader{};
    reader.wantedKey = key;
    const std::unique_ptr<GMarkupParseContext, decltype(&g_markup_parse_context_free)> context(
        g_markup_parse_context_new(&callbacks, G_MARKUP_DEFAULT_FLAGS, &reader, nullptr),
        g_markup_parse_context_free);
    g_markup_parse_context_parse(context.get(), text.data(), static_cast<gssize>(text.size()), nullptr);
    return reader.value;
}

} // namespace lumora
