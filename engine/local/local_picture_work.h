// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The work on pixels done here and now, by the libraries in this process.
#pragma once

#include "engine/picture_work.h"
#include "formats/image_source.h"
#include "pixels/image.h"

#include <optional>

namespace lumora::ImageOptimizer {

class LocalPictureWork : public PictureWork
{
public:
    WorkResult<PictureHead> open(int file, const OptimizerSettings& settings) override;
    WorkResult<bool> proveReadable() override;
    WorkResult<PictureSize> encode(int output, const std::string& typeIdentifier) override;
    WorkResult<PictureSize> writePpm(int output) override;
    WorkResult<bool> copy(int output) override;
    WorkResult<Done> findDamage() override;
    std::vector<std::string> losses(int output, const std::string& typeIdentifier) override;
    bool isWhole(int output) override;
    WorkResult<PictureLook> look() override;
    WorkResult<Done> drawPart(int output, const PicturePart& part) override;
    void close() override;

private:
    // As the output is to show it, its rows decoded, turned, reduced and recoloured as the encoder takes
    // them. Made when it is first needed.
    Result<Image> image();

    FileDescriptor m_file;
    std::optional<OptimizerSettings> m_settings;
    std::optional<ImageSource> m_source;
    std::optional<Image> m_image;
    std::int64_t m_need = 0;
    PictureSize m_size; // of the picture that was encoded
};

} // namespace lumora::ImageOptimizer
