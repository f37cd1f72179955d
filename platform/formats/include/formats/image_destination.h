// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// An image file being written. Use from one thread.
#pragma once

#include "metadata/metadata.h"
#include "pixels/image.h"
#include "system/output_file.h"
#include "system/result.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

struct DestinationProperties
{
    Metadata metadata; // that travels along as far as the type holds it
    // 0.01 to 1.0, counts where the type is lossy (times 100, rounded); 0.82 when absent.
    std::optional<double> lossyCompressionQuality;

    bool operator==(const DestinationProperties&) const = default;
};

class ImageDestination
{
public:
    // Fails when the type cannot be written: by nobody, by an external encoder only, or not on this machine.
    // The file, which is empty, must outlive the destination.
    static Result<ImageDestination> create(OutputFile& file, std::string_view typeIdentifier);

    ImageDestination(ImageDestination&&) noexcept;
    ImageDestination& operator=(ImageDestination&&) noexcept;
    ~ImageDestination();

    // The one upright picture of the file, whose rows are taken by finalize().
    void addImage(const Image& image, const DestinationProperties& properties);

    // Encodes and writes the whole file. The last call.
    Status finalize();

private:
    struct State;
    explicit ImageDestination(std::unique_ptr<State> state);

    std::unique_ptr<State> m_state;
};

} // namespace lumora
