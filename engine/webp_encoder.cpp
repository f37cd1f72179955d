// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/webp_encoder.h"

#include "engine/ppm_writer.h"
#include "records/errors.h"
#include "records/uuid.h"
#include "system/child_process.h"
#include "system/file_services.h"
#include "system/utf8.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace lumora::ImageOptimizer {
namespace {

constexpr const char* overrideVariable = "LUMORA_CWEBP_PATH";

// A path for a short-lived file; what was made there is removed with this object.
class TemporaryFile
{
public:
    explicit TemporaryFile(std::string_view extension)
        : m_url(temporaryDirectory() / ("lumora-" + Uuid::random().toString() + "." + std::string(extension)))
    {
    }
    ~TemporaryFile() { static_cast<void>(removeFile(m_url)); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::filesystem::path& url() const { return m_url; }

private:
    std::filesystem::path m_url;
};

std::string qualityArgument(double quality)
{
    // 2^63 is the first double beyond the range.
    if (!std::isfinite(quality) || quality >= 9223372036854775808.0 || quality < -9223372036854775808.0) {
        std::fputs("lumora: the quality is not a representable number\n", stderr);
        std::abort();
    }
    return std::to_string(static_cast<std::int64_t>(quality));
}

std::string trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\n\v\f\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

std::string failureDetail(const ProcessOutcome& outcome)
{
    const std::string words = isUtf8(outcome.standardError) ? trimmed(outcome.standardError) : std::string();
    return words.empty() ? "cwebp exited with status " + std::to_string(outcome.exitStatus) : words;
}

void runEncoder(const std::filesystem::path& encoder, const std::vector<std::string>& arguments,
                const std::filesystem::path& webp, const std::filesystem::path& output,
                const std::stop_token& kill)
{
    const auto outcome = runProcess(encoder, arguments, kill);
    if (!outcome) {
        throw ImageOptimizerError::unsupportedFormat(
            "WebP encoder at " + encoder.string() + " could not be launched: " + outcome.error().description);
    }
    if (outcome->exitStatus != 0) throw ImageOptimizerError::cannotFinalize(output, failureDetail(*outcome));
    if (!fileExists(webp))
        throw ImageOptimizerError::cannotFinalize(output, "cwebp did not create an output file");
}

} // namespace

std::optional<std::filesystem::path> bundledCWebPExecutableURL(const std::filesystem::path& bundleURL)
{
    if (const char* preferred = std::getenv(overrideVariable); preferred && isExecutableFile(preferred)) {
        return std::filesystem::absolute(preferred);
    }
    std::filesystem::path bundled = bundleURL / "Contents" / "MacOS" / "cwebp";
    if (isExecutableFile(bundled)) return bundled;
    return std::nullopt;
}

std::string_view webPMetadataArgument(const OptimizerSettings& settings)
{
    if (settings.removeMetadata) return settings.removeColorManagement ? "none" : "icc";
    return settings.removeColorManagement ? "exif,xmp" : "all";
}

std::vector<std::string> cwebpArguments(const OptimizerSettings& settings, const std::filesystem::path& ppm,
                                        const std::filesystem::path& webp)
{
    std::vector<std::string> arguments{"-quiet", "-metadata", std::string(webPMetadataArgument(settings))};
    if (settings.usesLossyCompression()) {
        arguments.insert(arguments.end(), {"-q", qualityArgument(settings.quality)});
    } else {
        arguments.emplace_back("-lossless");
    }
    arguments.insert(arguments.end(), {ppm.string(), "-o", webp.string()});
    return arguments;
}

void encodeWebPWithCWebP(const Image& image, const std::filesystem::path& output,
                         const OptimizerSettings& settings, const ImageProperties&,
                         const WebPEncoding& encoding)
{
    const auto encoder = bundledCWebPExecutableURL(encoding.bundleURL);
    if (!encoder) throw ImageOptimizerError::unsupportedFormat("WebP support is not bundled in this build.");

    const TemporaryFile ppm("ppm");
    const TemporaryFile webp("webp");
    writePPM(image, ppm.url());
    runEncoder(*encoder, cwebpArguments(settings, ppm.url(), webp.url()), webp.url(), output, encoding.kill);
    if (const auto copied = copyFile(webp.url(), output); !copied) {
        throw ImageOptimizerError::cannotWriteOutput(output, copied.error().description);
    }
}

} // namespace lumora::ImageOptimizer
