// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The encoders behind the writable types. For the codec layer only; any thread.
#pragma once

#include "encoders.h"
#include "pixels/image.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumora {

// The identifiers of the types that can be encoded with the libraries of this machine.
std::vector<std::string> encodableTypeIdentifiers();

// The bytes of a whole file with the picture, its attached colour profile and what the properties keep of its
// metadata. `quality` is 1 to 100 and counts where the type is lossy. What the type cannot hold (depth,
// model, alpha) is converted.
Result<Bytes> encodeImage(std::string_view typeIdentifier, const Image& image, int quality,
                          const ImageProperties& properties);

} // namespace lumora
