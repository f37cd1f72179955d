// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What of a file could not come along into its output although nobody asked for its removal, in words for the
// result's row. Found by looking into the new file, so that it holds whoever wrote it and however; nothing is
// decoded for it. Any thread.
#pragma once

#include "formats/image_source.h"
#include "pixels/image.h"
#include "records/optimizer_settings.h"
#include "system/file_descriptor.h"

#include <string>
#include <vector>

namespace lumora::ImageOptimizer {

// A short clause for each loss, none of them with a full stop at its end. `image` is the picture that was
// encoded, `written` the whole new file of the
// type, open for reading.
std::vector<std::string> leftBehind(const ImageSource& source, const Image& image,
                                    const std::string& typeIdentifier, FileDescriptor written,
                                    const OptimizerSettings& settings);

} // namespace lumora::ImageOptimizer
