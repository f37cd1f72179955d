// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cwebp/cwebp.h"

#include "records/uuid.h"
#include "system/child_process.h"
#include "system/file_services.h"
#include "system/private_folder.h"
#include "system/regular_file.h"
#include "system/utf8.h"
#include "webp_size.h"

#include <cstdlib>
#include <string_view>
#include <utility>

namespace lumora {
namespace {

using Step = CwebpError::Step;

constexpr const char* overrideVariable = "LUMORA_CWEBP_PATH";

// A path for a short-lived file; what was made there is removed with this object.
class TemporaryFile
{
public:
    TemporaryFile(const PrivateFolder& folder, std::string_view extension)
        : m_path(folder.path() / ("lumora-" + Uuid::random().toString() + "." + std::string(extension)))
    {
    }
    ~TemporaryFile() { static_cast<void>(removeFile(m_path)); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

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

Result<Done, CwebpError> run(const std::filesystem::path& encoder, const std::vector<std::string>& arguments,
                             const std::filesystem::path& webp, const std::stop_token& stop)
{
    const auto outcome = runProcess(encoder, arguments, stop);
    if (!outcome) return CwebpError{Step::launching, encoder, outcome.error().description};
    if (outcome->exitStatus != 0) return CwebpError{Step::encoding, {}, failureDetail(*outcome)};
    if (!fileExists(webp)) return CwebpError{Step::encoding, {}, "cwebp did not create an output file"};
    return Done{};
}

using PictureSize = std::pair<std::int64_t, std::int64_t>;

Result<PictureSize, CwebpError> writeTo(const std::filesystem::path& ppm, const PpmMaker& make)
{
    auto file = AtomicFile::create(ppm);
    if (!file) return CwebpError{Step::writingPpm, ppm, file.error().description};
    file->setPermissions(0600); // as it is made: nobody else enters its folder
    auto size = make(*file);
    if (!size) {
        const bool isDrawn = size.error().step == PpmError::Step::writing;
        return CwebpError{isDrawn ? Step::writingPpm : Step::drawing, ppm, size.error().error.description};
    }
    if (const auto status = file->commit(); !status)
        return CwebpError{Step::writingPpm, ppm, status.error().description};
    return *size;
}

// The encoder's word that it succeeded is not enough: it does not look whether its last bytes reached the
// disk.
Result<AtomicFile, CwebpError> takenOver(const std::filesystem::path& webp, PictureSize picture,
                                         const std::filesystem::path& output)
{
    const auto file = openRegularFile(webp);
    if (!file) return CwebpError{Step::copying, {}, file.error().description};
    const auto size = webpSize(file->get());
    if (!size || *size != picture) return CwebpError{Step::encoding, {}, "cwebp did not write a whole file"};
    auto copy = AtomicFile::create(output);
    if (!copy) return CwebpError{Step::copying, {}, copy.error().description};
    if (const auto copied = copy->appendFile(file->get()); !copied)
        return CwebpError{Step::copying, {}, copied.error().description};
    return std::move(*copy);
}

} // namespace

std::optional<std::filesystem::path> findCwebp(const std::filesystem::path& bundle)
{
    if (const char* preferred = std::getenv(overrideVariable); preferred && isExecutableFile(preferred)) {
        return std::filesystem::absolute(preferred);
    }
    std::filesystem::path bundled = bundle / "Contents" / "MacOS" / "cwebp";
    if (isExecutableFile(bundled)) return bundled;
    return std::nullopt;
}

Result<AtomicFile, CwebpError> encodeWithCwebp(const std::filesystem::path& encoder, const PpmMaker& makePpm,
                                               const std::filesystem::path& output,
                                               std::vector<std::string> options, const std::stop_token& stop)
{
    const auto folder = PrivateFolder::shared();
    if (!folder) return CwebpError{Step::writingPpm, temporaryDirectory(), folder.error().description};
    const TemporaryFile ppm(**folder, "ppm");
    const TemporaryFile webp(**folder, "webp");
    const auto size = writeTo(ppm.path(), makePpm);
    if (!size) return size.error();
    options.insert(options.end(), {ppm.path().string(), "-o", webp.path().string()});
    if (const auto status = run(encoder, options, webp.path(), stop); !status) return status.error();
    return takenOver(webp.path(), *size, output);
}

} // namespace lumora
