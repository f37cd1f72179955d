// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/options.h"

#include <utility>

namespace lumora::cli {

namespace {

using Line = CommandLine;

// The extension of its files is one more name of the format.
OptionValue format()
{
    OptionValue value = choice("FORMAT", &Line::format);
    value.apply = [apply = std::move(value.apply)](CommandLine& line, GivenOption given) {
        if (given.value == "jpg") given.value = "jpeg";
        apply(line, given);
    };
    return value;
}

std::vector<Option> makeOptions()
{
    return {
        {.heading = "What to write",
         .letter = 'f',
         .name = "format",
         .value = format(),
         .help = "what to write",
         .manual = "With original each file keeps its format; jpg is jpeg and webp-lossless webpLossless."},
        {.letter = 'q',
         .name = "quality",
         .value = percentage(&Line::quality),
         .help = "1 to 100, for the lossy formats"},
        {.name = "resize",
         .value = choice("MODE", &Line::resizeMode),
         .help = "the dimension that --max-pixels bounds",
         .manual = "Pictures are made smaller, never larger."},
        {.name = "max-pixels", .value = count(&Line::maximumPixels), .help = "the bound, at least 1"},
        {.name = "srgb",
         .value = onOrOff(&Line::sRGB),
         .help = "convert colours to sRGB",
         .negation = "keep the colour space"},
        {.name = "remove-profile",
         .value = onOrOff(&Line::removeProfile),
         .help = "leave the colour profile out",
         .negation = "embed the colour profile"},
        {.name = "remove-metadata",
         .value = onOrOff(&Line::removeMetadata),
         .help = "leave personal metadata such as EXIF, GPS and XMP out",
         .negation = "keep personal metadata",
         .manual = "IPTC counts as such, too."},
        {.heading = "Where to write",
         .letter = 'o',
         .name = "output-dir",
         .value = folder(&Line::outputDirectory),
         .help = "write into DIR, made when missing, instead of beside the originals"},
        {.name = "prefix", .value = nameFragment(&Line::prefix), .help = "put before the output's name"},
        {.name = "suffix",
         .value = nameFragment(&Line::suffix),
         .help = "put after the output's name, before its extension"},
        {.name = "existing",
         .value = choice("WHAT", &Line::existing, {"replace", "ask", "skip"}),
         .help = "what to do with an output that exists already",
         .note = "; ask asks on a terminal and is skip without one"},
        {.name = "trash-original",
         .value = onOrOff(&Line::trashOriginal),
         .help = "move each original to the Trash once optimized"},
        {.name = "keep-time",
         .value = onOrOff(&Line::keepTime),
         .help = "give outputs the modification time of their originals",
         .negation = "let outputs have the time of their writing"},
        {.heading = "Safety and order",
         .name = "trash-replaced",
         .value = onOrOff(&Line::trashReplaced),
         .help = "move an existing file that an output replaces to the Trash",
         .negation = "let replaced files be gone",
         .manual =
             "Earlier outputs of the same image that nobody has changed are replaced without a trace. Where "
             "there is no Trash, files are replaced all the same."},
        {.name = "skip-optimized",
         .value = onOrOff(&Line::skipOptimized),
         .help = "leave images alone that an earlier run has written",
         .manual = "They are known again by what is in them, wherever they lie now."},
        {.name = "only-smaller",
         .value = onOrOff(&Line::onlySmaller),
         .help = "keep originals whose outputs would not be smaller",
         .manual =
             "Outputs in another format, of another size or turned upright are written in any case. With -o, "
             "a JPEG or PNG that is kept is copied to DIR: its pixels as they are, without metadata and "
             "profile where these are to be left out. It is not copied where its colours would have to be "
             "converted, nor where it is an animation or has an HDR gain map that is to be kept."},
        {.name = "keep-folders",
         .value = onOrOff(&Line::keepFolders),
         .help = "lay outputs in DIR as their originals lie in the folders given"},
        {.heading = "How to run",
         .letter = 'j',
         .name = "jobs",
         .value = count(&Line::jobs),
         .help = "files to work on at once",
         .note = " (default: the number of processors)",
         .manual = "The default is never less than 2."},
        {.letter = 'n',
         .name = "dry-run",
         .value = onOrOff(&Line::dryRun),
         .help = "say what would be written and touch nothing",
         .manual = "Only the head of each image is read, so that damage further on is not foreseen.",
         .commands = forOptimizing | forUndo},
        {.name = "json",
         .value = onOrOff(&Line::json),
         .help = "one JSON object a line for each file instead of text",
         .manual = "See below.",
         .commands = forAll},
        {.name = "quiet",
         .value = onOrOff(&Line::quiet),
         .help = "no progress, no summary, and rows only for files that failed",
         .commands = forOptimizing | forUndo},
        {.name = "record-stats",
         .value = onOrOff(&Line::recordStats),
         .help = "count the results in Lumora's lifetime statistics"},
        {.name = "history",
         .value = onOrOff(&Line::keepHistory),
         .help = "remember what was done, so that it can be undone",
         .negation = "remember nothing of this run"},
        {.heading = "Of the history alone",
         .name = "clear",
         .value = onOrOff(&Line::clearHistory),
         .help = "forget everything that was done",
         .manual = "Files stay where they are, in the Trash too, but no batch can be undone any more.",
         .commands = forHistory},
        {.name = "history-files",
         .value = count(&Line::keepFiles),
         .help = "remember at most so many files from now on",
         .manual = "The oldest are forgotten first; 200000 unless this was said once.",
         .commands = forHistory},
        {.name = "history-days",
         .value = count(&Line::keepDays),
         .help = "remember batches for so many days from now on",
         .manual = "365 unless this was said once.",
         .commands = forHistory},
        {.heading = "Of the program",
         .name = "version",
         .value = ending(Action::showVersion),
         .help = "print the version and those of the libraries, and end",
         .commands = forAll},
        {.letter = 'h',
         .name = "help",
         .value = ending(Action::showHelp),
         .help = "print this help and end",
         .commands = forAll},
    };
}

} // namespace

std::span<const Option> options()
{
    static const std::vector<Option> table = makeOptions();
    return table;
}

std::string defaultText(const Option& option)
{
    if (option.value.standard.empty()) return {};
    return option.value.argument.empty() ? " (default)" : " (default " + option.value.standard + ")";
}

} // namespace lumora::cli
