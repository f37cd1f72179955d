// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/drawing.h"

#include "pixels/color_conversion.h"
#include "pixels/color_profile.h"
#include "pixels/row_reader.h"
#include "resampler.h"
#include "rgba_pixels.h"

#include <vips/vips.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace lumora {
namespace {

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

// `rgba` is premultiplied and upright.
Result<Image> makeBitmap(RgbaBytes rgba, PixelSize size, ProfileBytes profile)
{
    const std::size_t bytes =
        static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 4;
    const VipsImagePtr memory(
        vips_image_new_from_memory(rgba.get(), bytes, size.width, size.height, 4, VIPS_FORMAT_UCHAR));
    if (!memory) return takeVipsError();
    g_object_set_data_full(G_OBJECT(memory.get()), "lumora-pixels", new RgbaBytes(std::move(rgba)),
                           [](gpointer owned) { delete static_cast<RgbaBytes*>(owned); });
    VipsImage* tagged = nullptr;
    if (vips_copy(memory.get(), &tagged, "interpretation", VIPS_INTERPRETATION_sRGB, nullptr) != 0)
        return takeVipsError();
    if (!profile.empty())
        vips_image_set_blob_copy(tagged, VIPS_META_ICC_NAME, profile.data(), profile.size());
    return Image(tagged, 1, ImageState::drawn);
}

// One drawing: the stored picture reduced, converted and brought to premultiplied RGBA, still as stored.
class Drawing
{
public:
    // `shape` is what of the reader's rows is the picture.
    Drawing(RowReader reader, const SourceShape& shape, const ColorConversion& conversion,
            bool sourceIsPremultiplied)
        : m_reader(std::move(reader)), m_shape(shape), m_conversion(conversion),
          m_sourceIsPremultiplied(sourceIsPremultiplied && m_reader.format().hasAlpha)
    {
    }

    Result<RgbaBytes, DrawError> run(PixelSize size)
    {
        RgbaBytes rgba = allocateRgba(size);
        if (size != m_shape.rows) {
            if (auto status = reduce(rgba.get(), size); !status) return status.error();
        } else if (auto status = drawRows(rgba.get()); !status) {
            return DrawError(status.error());
        }
        return rgba;
    }

private:
    Status drawRows(std::uint8_t* rgba)
    {
        constexpr int rowsAtOnce = 64;
        const PixelSize size = m_shape.rows;
        const auto width = static_cast<std::size_t>(size.width);
        std::vector<std::uint8_t> strip(width * static_cast<std::size_t>(m_reader.format().bands()) *
                                        rowsAtOnce);
        for (int top = 0; top < size.height; top += rowsAtOnce) {
            const int count = std::min(rowsAtOnce, size.height - top);
            if (auto status = m_reader.read(top, count, strip.data()); !status) return status.error();
            convert(strip.data(), rgba + static_cast<std::size_t>(top) * width * 4,
                    width * static_cast<std::size_t>(count), m_sourceIsPremultiplied);
        }
        return Done{};
    }

    Result<Done, DrawError> reduce(std::uint8_t* rgba, PixelSize size)
    {
        const RowFormat format = m_reader.format();
        const auto width = static_cast<std::size_t>(size.width);
        const auto convertRows = [&](int first, int count, std::uint8_t* rows) {
            convert(rows, rgba + static_cast<std::size_t>(first) * width * 4,
                    width * static_cast<std::size_t>(count), format.hasAlpha);
        };
        return resample([&](int first, int count) { return premultipliedRows(first, count); }, m_shape, size,
                        format.bands(), convertRows);
    }

    Result<RowSpan> premultipliedRows(int first, int count)
    {
        const RowFormat format = m_reader.format();
        if (!format.hasAlpha || m_sourceIsPremultiplied) return m_reader.rows(first, count);
        const auto rowBytes =
            static_cast<std::size_t>(m_reader.width()) * static_cast<std::size_t>(format.bands());
        m_premultiplied.resize(rowBytes * static_cast<std::size_t>(count));
        if (auto status = m_reader.read(first, count, m_premultiplied.data()); !status) return status.error();
        premultiply(m_premultiplied.data(), m_premultiplied.size() / static_cast<std::size_t>(format.bands()),
                    format.bands());
        return RowSpan{m_premultiplied.data(), static_cast<std::ptrdiff_t>(rowBytes)};
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
    SourceShape m_shape;
    const ColorConversion& m_conversion;
    bool m_sourceIsPremultiplied;
    std::vector<std::uint8_t> m_premultiplied;
};

bool isIn(ColorSpace space, ProfileBytes profile)
{
    const bool isSrgb = std::ranges::equal(profile, srgbProfile());
    return space == ColorSpace::own || isSrgb || (space == ColorSpace::deviceRGB && profile.empty());
}

// Whether an earlier drawing gave these very pixels.
bool isDrawn(const Image& image, const DrawRequest& request, ProfileBytes profile)
{
    return image.alphaIsPremultiplied() && image.width() == request.width &&
           image.height() == request.height && vips_image_get_bands(image.pixels()) == 4 &&
           isIn(request.colorSpace, profile);
}

PixelSize storedSize(const Image& image)
{
    return {vips_image_get_width(image.pixels()), vips_image_get_height(image.pixels())};
}

// At least a halving is left to the resampler: photographs are then within 47 dB of those from the full
// decode. Small pictures, which are quickly decoded, have finer detail for their size and keep to that.
int decodingDivisor(PixelSize stored, PixelSize wanted)
{
    constexpr std::int64_t worthReducing = 1'000'000;
    if (std::int64_t{stored.width} * stored.height < worthReducing) return 1;
    int divisor = 8;
    while (divisor > 1 &&
           (stored.width < 2 * divisor * wanted.width || stored.height < 2 * divisor * wanted.height))
        divisor /= 2;
    return divisor;
}

// Both edges of the full picture, measured in the pixels of the decoded one.
SourceShape shapeOf(const Image& full, const Image& decoded, int divisor)
{
    const PixelSize size = storedSize(full);
    const PixelSize rows = storedSize(decoded);
    if (size == rows) return {rows, static_cast<double>(rows.width), static_cast<double>(rows.height)};
    return {rows, static_cast<double>(size.width) / divisor, static_cast<double>(size.height) / divisor};
}

} // namespace

Result<Image, DrawError> draw(const Image& image, const DrawRequest& request)
{
    // A copy, which outlives the start of the decoder.
    const auto attached = attachedProfile(image.pixels());
    const std::vector<std::uint8_t> profile(attached.begin(), attached.end());
    if (isDrawn(image, request, profile))
        return request.colorSpace == ColorSpace::deviceRGB ? image.withoutProfile() : image;

    const bool swapsAxes = image.pendingOrientation() >= 5;
    const PixelSize upright{static_cast<int>(request.width), static_cast<int>(request.height)};
    const PixelSize size = swapsAxes ? PixelSize{upright.height, upright.width} : upright;

    const int divisor = decodingDivisor(storedSize(image), size);
    const auto decoded = divisor > 1 ? image.reduced(divisor) : image;
    if (!decoded) return DrawError(decoded.error());
    auto reader = RowReader::open(*decoded);
    if (!reader) return DrawError(reader.error());
    const ColorPlan plan = planColors(*reader, profile, request.colorSpace);
    if (!plan.conversion.isPossible())
        return DrawError::inconvertible(Error{"colours that cannot be converted"});
    auto rgba = Drawing(std::move(*reader), shapeOf(image, *decoded, divisor), plan.conversion,
                        image.alphaIsPremultiplied())
                    .run(size);
    if (!rgba) return rgba.error();
    auto bitmap = makeBitmap(turnedUpright(std::move(*rgba), size, image.pendingOrientation()), upright,
                             plan.resultProfile);
    if (!bitmap) return DrawError(bitmap.error());
    return std::move(*bitmap);
}

Result<Image> drawRegardless(const Image& image, const DrawRequest& request)
{
    auto drawn = draw(image, request);
    if (!drawn && drawn.error().isInconvertible) drawn = draw(image.withoutProfile(), request);
    if (!drawn) return Error(drawn.error());
    return std::move(*drawn);
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
    return Image(memory, 1, ImageState::decoded);
}

} // namespace lumora
