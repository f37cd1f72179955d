// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/image_destination.h"

#include "encoding.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace lumora {
namespace {

constexpr double defaultQuality = 0.82;

int encoderQuality(const DestinationProperties& properties)
{
    const double share = properties.lossyCompressionQuality.value_or(defaultQuality);
    return std::clamp(static_cast<int>(std::lround(share * 100)), 1, 100);
}

bool isWritable(const Format* format)
{
    if (!format || format->writtenBy != WrittenBy::codec) return false;
    const auto isAvailable = codecOf(*format).writer->isAvailable;
    return !isAvailable || isAvailable();
}

} // namespace

struct ImageDestination::State
{
    OutputFile& file;
    const Format& format;
    std::optional<Image> image;
    DestinationProperties properties;
};

Result<ImageDestination> ImageDestination::create(OutputFile& file, std::string_view typeIdentifier)
{
    const Format* const format = formatWithIdentifier(typeIdentifier);
    if (!isWritable(format)) return Error{"not a writable type"};
    return ImageDestination(std::unique_ptr<State>(new State{file, *format, std::nullopt, {}}));
}

ImageDestination::ImageDestination(std::unique_ptr<State> state) : m_state(std::move(state)) {}
ImageDestination::ImageDestination(ImageDestination&&) noexcept = default;
ImageDestination& ImageDestination::operator=(ImageDestination&&) noexcept = default;
ImageDestination::~ImageDestination() = default;

void ImageDestination::addImage(const Image& image, const DestinationProperties& properties)
{
    m_state->image = image;
    m_state->properties = properties;
}

Status ImageDestination::finalize()
{
    if (!m_state->image) return Error{"no picture was added"};
    auto status = encodeImage(m_state->format, *m_state->image, encoderQuality(m_state->properties),
                              m_state->properties.metadata, m_state->file);
    m_state->image.reset(); // what it holds of the picture is of no more use
    return status;
}

} // namespace lumora
