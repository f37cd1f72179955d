// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/command_line.h"

#include "cli/option_parser.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace lumora::cli {

namespace {

template <class Number>
std::optional<Number> number(const std::string& text)
{
    Number value{};
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) return std::nullopt;
    return value;
}

// The value of an option as a number from `least` to `most`. The comparison is written so that NaN is
// refused.
template <class Number>
Number numberWithin(const ParsedOption& option, Number least, Number most, const std::string& range)
{
    const std::optional<Number> value = number<Number>(option.value);
    if (!value || !(*value >= least && *value <= most))
        throw UsageError{"--" + std::string(option.option->name) + " takes a number " + range + ", not '" +
                         option.value + "'"};
    return *value;
}

const std::string& nameFragment(const ParsedOption& option)
{
    if (option.value.find('/') != std::string::npos)
        throw UsageError{"--" + std::string(option.option->name) +
                         " is part of a file name and cannot hold '/'"};
    return option.value;
}

// The position of the value in the option's list; the parser has refused every other value.
std::ptrdiff_t choice(const ParsedOption& option)
{
    return std::ranges::find(option.option->values, option.value) - option.option->values.begin();
}

std::filesystem::path folder(const ParsedOption& option)
{
    if (option.value.empty()) throw UsageError{"--output-dir takes the name of a folder"};
    return option.value;
}

void apply(const ParsedOption& option, CommandLine& line)
{
    switch (option.option->key) {
    case OptionKey::format:
        line.format = *fromRawValue<OutputFormat>(option.value);
        return;
    case OptionKey::quality:
        line.quality = numberWithin(option, 1.0, 100.0, "from 1 to 100");
        return;
    case OptionKey::resize:
        line.resizeMode = *fromRawValue<ResizeMode>(option.value);
        return;
    case OptionKey::maxPixels:
        line.maximumPixels =
            numberWithin(option, std::int64_t{1}, std::numeric_limits<std::int64_t>::max(), "of at least 1");
        return;
    case OptionKey::sRGB:
        line.sRGB = !option.negated;
        return;
    case OptionKey::removeProfile:
        line.removeProfile = !option.negated;
        return;
    case OptionKey::removeMetadata:
        line.removeMetadata = !option.negated;
        return;
    case OptionKey::outputDir:
        line.outputDirectory = folder(option);
        return;
    case OptionKey::prefix:
        line.prefix = nameFragment(option);
        return;
    case OptionKey::suffix:
        line.suffix = nameFragment(option);
        return;
    case OptionKey::existing:
        line.existing = static_cast<Existing>(choice(option));
        return;
    case OptionKey::trashOriginal:
        line.trashOriginal = true;
        return;
    case OptionKey::keepTime:
        line.keepTime = !option.negated;
        return;
    case OptionKey::jobs:
        line.jobs = numberWithin(option, 1, std::numeric_limits<int>::max(), "of at least 1");
        return;
    case OptionKey::dryRun:
        line.dryRun = true;
        return;
    case OptionKey::json:
        line.json = true;
        return;
    case OptionKey::quiet:
        line.quiet = true;
        return;
    case OptionKey::recordStats:
        line.recordStats = true;
        return;
    case OptionKey::version:
        line.action = Action::showVersion;
        return;
    case OptionKey::help:
        line.action = Action::showHelp;
        return;
    }
}

CommandLine interpret(const ParsedArguments& arguments)
{
    CommandLine line;
    for (const ParsedOption& option : arguments.options) {
        apply(option, line);
        // Like everywhere: the first of --help and --version wins, whatever follows.
        if (line.action != Action::optimize) return line;
    }
    line.paths.assign(arguments.operands.begin(), arguments.operands.end());
    if (line.paths.empty()) throw UsageError{"no files or folders given"};
    return line;
}

} // namespace

OptimizerSettings CommandLine::settings() const
{
    return {
        .resizeMode = resizeMode,
        .maximumPixels = maximumPixels,
        .outputFormat = format,
        .quality = quality,
        .optimizeColorForSharing = sRGB,
        .removeColorManagement = removeProfile,
        .removeMetadata = removeMetadata,
        .destinationMode =
            outputDirectory ? DestinationMode::selectedFolder : DestinationMode::originalLocation,
        .destinationFolderURL = outputDirectory,
        .filenamePrefix = prefix,
        .filenameSuffix = suffix,
        .moveOriginalToTrash = trashOriginal,
        .preserveModificationTime = keepTime,
        .warnBeforeOverwrite = existing != Existing::replace,
    };
}

std::variant<CommandLine, UsageError> parseCommandLine(const std::vector<std::string>& arguments)
{
    try {
        return interpret(parseOptions(arguments));
    } catch (const UsageError& error) {
        return error;
    }
}

} // namespace lumora::cli
