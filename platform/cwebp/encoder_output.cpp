// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "encoder_output.h"

#include "system/file_services.h"
#include "system/regular_file.h"
#include "webp_size.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <system_error>
#include <utility>

namespace lumora {

using Step = CwebpError::Step;

// Where no links can be made, the encoder makes a file of its own there.
EncoderOutput::EncoderOutput(const PrivateFolder& folder, AtomicFile draft)
    : m_draft(std::move(draft)), m_name(folder, "webp")
{
    std::error_code noLinks;
    std::filesystem::create_symlink(m_draft.pathForOthers(), m_name.path(), noLinks);
}

// The file is asked to take as much more as the encoder writes at once.
CwebpError EncoderOutput::failure(std::string words)
{
    static constexpr std::array<std::byte, std::size_t{1} << 16U> more{};
    ::lseek(m_draft.descriptor(), 0, SEEK_END);
    if (const auto taken = m_draft.append(more); !taken)
        return {Step::copying, {}, taken.error().description};
    return {Step::encoding, {}, std::move(words)};
}

Result<AtomicFile, CwebpError> EncoderOutput::finished(std::pair<std::int64_t, std::int64_t> picture)
{
    if (const auto taken = takeOver(); !taken)
        return CwebpError{Step::copying, {}, taken.error().description};
    if (isEmpty()) return failure("cwebp did not create an output file");
    const auto size = webpSize(m_draft.descriptor());
    if (!size || *size != picture) return failure("cwebp did not write a whole file");
    return std::move(m_draft);
}

// From an encoder that puts a file of its own in the place of the name.
Status EncoderOutput::takeOver()
{
    std::error_code unknown;
    if (std::filesystem::is_symlink(path(), unknown) || !fileExists(path())) return Done{};
    const auto file = openRegularFile(path());
    return file ? m_draft.appendFile(file->get()) : file.error();
}

bool EncoderOutput::isEmpty() const
{
    struct stat status = {};
    return fstat(m_draft.descriptor(), &status) == 0 && status.st_size == 0;
}

} // namespace lumora
