// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/options.h"

#include "records/option_enums.h"

namespace lumora::cli {

namespace {

template <class Enum>
std::vector<std::string> rawValues()
{
    std::vector<std::string> values;
    for (Enum value : allCases<Enum>)
        values.emplace_back(rawValue(value));
    return values;
}

using Key = OptionKey;

std::vector<Option> makeOptions()
{
    return {
        {Key::format, 'f', "format", "FORMAT", false, rawValues<OutputFormat>(),
         "what to write (default webp)"},
        {Key::quality, 'q', "quality", "N", false, {}, "1 to 100, for the lossy formats (default 82)"},
        {Key::resize, 0, "resize", "MODE", false, rawValues<ResizeMode>(),
         "the dimension that --max-pixels bounds (default maxWidth)"},
        {Key::maxPixels, 0, "max-pixels", "N", false, {}, "the bound, at least 1 (default 2560)"},
        {Key::sRGB, 0, "srgb", "", true, {}, "convert colours to sRGB (default)"},
        {Key::removeProfile, 0, "remove-profile", "", true, {}, "leave the colour profile out (default)"},
        {Key::removeMetadata,
         0,
         "remove-metadata",
         "",
         true,
         {},
         "leave personal metadata such as EXIF, GPS and XMP out (default)"},
        {Key::outputDir,
         'o',
         "output-dir",
         "DIR",
         false,
         {},
         "write into DIR, made when missing, instead of beside the originals"},
        {Key::prefix, 0, "prefix", "TEXT", false, {}, "put before the output's name"},
        {Key::suffix, 0, "suffix", "TEXT", false, {}, "put after the output's name, before its extension"},
        {Key::existing,
         0,
         "existing",
         "WHAT",
         false,
         {"replace", "ask", "skip"},
         "what to do with an output that exists already (default replace); ask asks on a terminal and is "
         "skip "
         "without one"},
        {Key::trashOriginal,
         0,
         "trash-original",
         "",
         false,
         {},
         "move each original to the Trash once optimized"},
        {Key::keepTime,
         0,
         "keep-time",
         "",
         true,
         {},
         "give outputs the modification time of their originals (default)"},
        {Key::jobs,
         'j',
         "jobs",
         "N",
         false,
         {},
         "files to work on at once (default: the number of processors)"},
        {Key::dryRun, 'n', "dry-run", "", false, {}, "say what would be written and touch nothing"},
        {Key::json, 0, "json", "", false, {}, "one JSON object a line for each file instead of text"},
        {Key::quiet,
         0,
         "quiet",
         "",
         false,
         {},
         "no progress, no summary, and rows only for files that failed"},
        {Key::recordStats,
         0,
         "record-stats",
         "",
         false,
         {},
         "count the results in Lumora's lifetime statistics"},
        {Key::version, 0, "version", "", false, {}, "print the version and those of the libraries, and end"},
        {Key::help, 'h', "help", "", false, {}, "print this help and end"},
    };
}

} // namespace

std::span<const Option> options()
{
    static const std::vector<Option> table = makeOptions();
    return table;
}

} // namespace lumora::cli
