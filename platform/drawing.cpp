// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/drawing.h"

#include "platform/color_conversion.h"
#include "platform/resampler.h"
#include "platform/rgba_pixels.h"
#include "platform/row_reader.h"

#include <vips/vips.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace lumora {
namespace {

// A copy: the library replaces the fields of a lazy image when its decoder starts.
std::vector<std::uint8_t> attachedProfile(VipsImage* image)
{
    const void* data = nullptr;
    std::size_t size = 0;
    if (!vips_image_get_typeof(image, VIPS_META_ICC_NAME) ||
        vips_image_get_blob(image, VIPS_META_ICC_NAME, &data, &size) != 0) {
        return {};
    }
    const auto* first = static_cast<const std::uint8_t*>(data);
    return {first, first + size};
}

// The colour decisions of one drawing: how components are converted and which profile describes the outcome.
struct ColorPlan
{
    ColorConversion conversion;
    ProfileBytes resultProfile;
};

ColorPlan planColors(const RowReader& reader, ProfileBytes profile, ColorSpace target)
{
    const RowFormat format = reader.format();
    if (!reader.keepsProfileSpace()) profile = {};
    if (target == ColorSpace::own && format.model == ColorModel::rgb) {
        return {ColorConversion::none(format),
                describes(profile, ColorModel::rgb) ? profile : ProfileBytes{}};
    }
    return {ColorConversion::toSrgb(format, profile),
            target == ColorSpace::sRGB ? srgbProfile() : ProfileBytes{}};
}

// Takes over `rgba`, premultiplied, upright.
Image makeBitmap(std::vector<std::uint8_t> rgba, PixelSize size, ProfileBytes profile)
{
    auto pixels = std::make_unique<std::vector<std::uint8_t>>(std::move(rgba));
    const VipsImagePtr memory(vips_image_new_from_memory(pixels->data(), pixels->size(), size.width,
                                                         size.height, 4, VIPS_FORMAT_UCHAR));
    g_object_set_data_full(G_OBJECT(memory.get()), "lumora-pixels", pixels.release(),
                           [](gpointer owned) { delete static_cast<std::vector<std::uint8_t>*>(owned); });
    VipsImage* tagged = nullptr;
    vips_copy(memory.get(), &tagged, "interpretation", VIPS_INTERPRETATION_sRGB, nullptr);
    if (!profile.empty())
        vips_image_set_blob_copy(tagged, VIPS_META_ICC_NAME, profile.data(), profile.size());
    return {tagged, 1, true, true};
}

// One drawing: the stored picture reduced, converted and brought to premultiplied RGBA, still as stored.
class Drawing
{
public:
    Drawing(RowReader reader, const ColorConversion& conversion, bool sourceIsPremultiplied)
        : m_reader(std::move(reader)), m_conversion(conversion),
          m_sourceIsPremultiplied(sourceIsPremultiplied && m_reader.format().hasAlpha)
    {
    }

    Result<std::vector<std::uint8_t>> run(PixelSize size)
    {
        const PixelSize stored{m_reader.width(), m_reader.height()};
        return size == stored ? drawRows(stored) : reduce(stored, size);
    }

private:
    Result<std::vector<std::uint8_t>> drawRows(PixelSize size)
    {
        constexpr int rowsAtOnce = 64;
        const auto width = static_cast<std::size_t>(size.width);
        std::vector<std::uint8_t> rgba(width * static_cast<std::size_t>(size.height) * 4);
        std::vector<std::uint8_t> strip(width * static_cast<std::size_t>(m_reader.format().bands()) *
                                        rowsAtOnce);
        for (int top = 0; top < size.height; top += rowsAtOnce) {
            const int count = std::min(rowsAtOnce, size.height - top);
            if (auto status = m_reader.read(top, count, strip.data()); !status) return status.error();
            convert(strip.data(), rgba.data() + static_cast<std::size_t>(top) * width * 4,
                    width * static_cast<std::size_t>(count), m_sourceIsPremultiplied);
        }
        return rgba;
    }

    Result<std::vector<std::uint8_t>> reduce(PixelSize stored, PixelSize size)
    {
        const RowFormat format = m_reader.format();
        const RowProvider rows = [&](int first, int count, std::uint8_t* out) -> Status {
            if (auto status = m_reader.read(first, count, out); !status) return status;
            if (format.hasAlpha && !m_sourceIsPremultiplied) {
                premultiply(out, static_cast<std::size_t>(stored.width) * static_cast<std::size_t>(count),
                            format.bands());
            }
            return Done{};
        };
        auto reduced = resample(rows, stored, size, format.bands());
        if (!reduced) return reduced.error();
        const std::size_t pixels =
            static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
        std::vector<std::uint8_t> rgba(pixels * 4);
        convert(reduced->data(), rgba.data(), pixels, format.hasAlpha);
        return rgba;
    }

    // Profiles speak of straight colours, so a premultiplied picture is unmixed first; when no colour
    // changes, that lossy detour is skipped.
    void convert(std::uint8_t* from, std::uint8_t* rgba, std::size_t pixels, bool isPremultiplied) const
    {
        const bool mustUnmix = isPremultiplied && !m_conversion.isIdentity();
        if (mustUnmix) unpremultiply(from, pixels, m_reader.format().bands());
        m_conversion.run(from, rgba, pixels);
        if (m_reader.format().hasAlpha && (mustUnmix || !isPremultiplied)) premultiply(rgba, pixels, 4);
    }

    RowReader m_reader;
    const ColorConversion& m_conversion;
    bool m_sourceIsPremultiplied;
};

} // namespace

Result<Image> draw(const Image& image, const DrawRequest& request)
{
    auto reader = RowReader::open(image);
    if (!reader) return reader.error();
    const std::vector<std::uint8_t> profile = attachedProfile(image.pixels());
    const ColorPlan plan = planColors(*reader, profile, request.colorSpace);

    const bool swapsAxes = image.pendingOrientation() >= 5;
    const PixelSize upright{static_cast<int>(request.width), static_cast<int>(request.height)};
    const PixelSize size = swapsAxes ? PixelSize{upright.height, upright.width} : upright;

    auto rgba = Drawing(std::move(*reader), plan.conversion, image.alphaIsPremultiplied()).run(size);
    if (!rgba) return rgba.error();
    return makeBitmap(turnedUpright(std::move(*rgba), size, image.pendingOrientation()), upright,
                      plan.resultProfile);
}

Result<Image> decode(const Image& image)
{
    if (image.isInMemory()) return image;
    ensureVipsReady();
    const VipsImagePtr stored(vips_image_copy_memory(image.pixels()));
    if (!stored) return takeVipsError();

    VipsImage* upright = nullptr;
    vips_image_set_int(stored.get(), VIPS_META_ORIENTATION, image.pendingOrientation());
    if (vips_autorot(stored.get(), &upright, nullptr) != 0) return takeVipsError();
    const VipsImagePtr turned(upright);
    VipsImage* memory = vips_image_copy_memory(turned.get());
    if (!memory) return takeVipsError();
    return Image(memory, 1, true, image.alphaIsPremultiplied());
}

} // namespace lumora
