// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The failures of one file. `what()` of either type is the text of the file's row.
#pragma once

#include <exception>
#include <filesystem>
#include <optional>
#include <string>

namespace lumora {

// A failure that the engine itself raises. Built by the named constructors below, one a kind.
class ImageOptimizerError : public std::exception
{
public:
    enum class Kind {
        unsupportedFormat,
        cannotCreateDestination,
        cannotFinalize,
        cannotWriteOutput,
        unreadableImage,
        overwriteDeclined,
        missingDestinationFolder,
    };

    // `format` is the title of the chosen output format, never the refused type identifier.
    static ImageOptimizerError unsupportedFormat(std::string format);
    static ImageOptimizerError cannotCreateDestination(std::filesystem::path output);
    static ImageOptimizerError cannotFinalize(std::filesystem::path output,
                                              std::optional<std::string> reason = std::nullopt);
    static ImageOptimizerError cannotWriteOutput(std::filesystem::path output, std::string reason);
    static ImageOptimizerError unreadableImage();
    static ImageOptimizerError overwriteDeclined();
    static ImageOptimizerError missingDestinationFolder();

    Kind kind() const noexcept { return m_kind; }
    const std::string& errorDescription() const noexcept { return m_description; }
    const char* what() const noexcept override { return m_description.c_str(); }

private:
    ImageOptimizerError(Kind kind, std::string description);

    Kind m_kind;
    std::string m_description;
};

// No failure: a file that is left as it is because the user wanted such files left.
class LeftAlone : public std::exception
{
public:
    static LeftAlone alreadyOptimized();
    static LeftAlone notSmaller();
    const char* what() const noexcept override { return m_reason; }

private:
    explicit LeftAlone(const char* reason) : m_reason(reason) {}

    const char* m_reason;
};

// A failure of a platform service (a file that cannot be removed, say) that passes through the engine
// unchanged.
class PlatformError : public std::exception
{
public:
    explicit PlatformError(std::string description) : m_description(std::move(description)) {}
    // At whatever step memory ran short: more of it helps, another file or disk does not.
    static PlatformError notEnoughMemory();
    const char* what() const noexcept override { return m_description.c_str(); }

private:
    std::string m_description;
};

} // namespace lumora
