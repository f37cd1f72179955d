// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cwebp/cwebp_error.h"
#include "system/atomic_file.h"
#include "temporary_file.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>

namespace lumora {

// What the encoder writes: the output's draft, through a name in a folder of ours that leads there, so that
// the bytes are written once and lie where they are to stay. One thread.
class EncoderOutput
{
public:
    EncoderOutput(const PrivateFolder& folder, AtomicFile draft);

    // For the encoder.
    const std::filesystem::path& path() const { return m_name.path(); }

    // Of an encoder that says these words, or of the disk, which the encoder need not have noticed.
    CwebpError failure(std::string words);

    // The whole file of a picture of this width and height. The encoder's word that it succeeded is not
    // enough: it does not look whether its last bytes reached the disk. This object is used up.
    Result<AtomicFile, CwebpError> finished(std::pair<std::int64_t, std::int64_t> picture);

private:
    Status takeOver();
    bool isEmpty() const;

    AtomicFile m_draft;
    const TemporaryFile m_name;
};

} // namespace lumora
