// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/image_destination.h"

#include "image_encoders.h"
#include "system/atomic_file.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace lumora {
namespace {

constexpr double defaultQuality = 0.82;

int encoderQuality(const ImageProperties& properties)
{
    const auto found = properties.find(PropertyKey::lossyCompressionQuality);
    const double share = found == properties.end() ? defaultQuality : std::get<double>(found->second);
    return std::clamp(static_cast<int>(std::lround(share * 100)), 1, 100);
}

} // namespace

struct ImageDestination::State
{
    AtomicFile file;
    std::string typeIdentifier;
    std::optional<Image> image;
    ImageProperties properties;
};

std::vector<std::string> ImageDestination::writableTypeIdentifiers()
{
    return encodableTypeIdentifiers();
}

Result<ImageDestination> ImageDestination::create(const std::filesystem::path& url,
                                                  std::string_view typeIdentifier)
{
    if (std::ranges::count(writableTypeIdentifiers(), typeIdentifier) == 0)
        return Error{"not a writable type"};
    auto file = AtomicFile::create(url);
    if (!file) return file.error();
    return ImageDestination(
        std::unique_ptr<State>(new State{std::move(*file), std::string(typeIdentifier), std::nullopt, {}}));
}

ImageDestination::ImageDestination(std::unique_ptr<State> state) : m_state(std::move(state)) {}
ImageDestination::ImageDestination(ImageDestination&&) noexcept = default;
ImageDestination& ImageDestination::operator=(ImageDestination&&) noexcept = default;
ImageDestination::~ImageDestination() = default;

void ImageDestination::addImage(const Image& image, const ImageProperties& properties)
{
    m_state->image = image;
    m_state->properties = properties;
}

Status ImageDestination::finalize()
{
    if (!m_state->image) return Error{"no picture was added"};
    const auto bytes = encodeImage(m_state->typeIdentifier, *m_state->image,
                                   encoderQuality(m_state->properties), m_state->properties);
    if (!bytes) return bytes.error();
    if (auto status = m_state->file.append(*bytes); !status) return status;
    return m_state->file.commit();
}

} // namespace lumora
