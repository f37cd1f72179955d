// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/drawing.h"

#include "deep_colors.h"
#include "pixels/color_conversion.h"
#include "pixels/color_profile.h"
#include "pixels/row_reader.h"
#include "pixels/row_stream.h"
#include "resampler.h"
#include "rgba_pixels.h"
#include "rows_ahead.h"
#include "turned_rows.h"

#include <vips/vips.h>

#include <algorithm>
#include <memory>
#include <optional>
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

bool areOpaque(const std::uint8_t* rgba, std::size_t pixels)
{
    std::uint8_t all = 255;
    for (std::size_t i = 0; i < pixels; ++i)
        all &= rgba[i * 4 + 3];
    return all == 255;
}

// One drawing: the stored picture reduced and converted, with premultiplied alpha, still as stored.
class Drawing : public RowMaker
{
public:
    // The widths are those of the source and of the result; without a reduction they are the same.
    Drawing(RowFormat format, int sourceWidth, int width, std::optional<Resampler> reduction,
            ColorConversion conversion, bool sourceIsPremultiplied, std::shared_ptr<ReadOutcome> outcome)
        : m_format(format), m_sourceWidth(static_cast<std::size_t>(sourceWidth)),
          m_width(static_cast<std::size_t>(width)), m_reduction(std::move(reduction)),
          m_conversion(std::move(conversion)),
          m_sourceIsPremultiplied(sourceIsPremultiplied && format.hasAlpha), m_outcome(std::move(outcome))
    {
    }

    Status make(const RowProvider& source, int first, int count, std::uint8_t* to) override
    {
        auto status = m_reduction ? reduce(source, count, to) : convertRows(source, first, count, to);
        if (status && m_format.hasAlpha && !areOpaque(to, m_width * static_cast<std::size_t>(count)))
            m_outcome->noteTransparency();
        return status;
    }

private:
    Status convertRows(const RowProvider& source, int first, int count, std::uint8_t* to)
    {
        const auto rows = source(first, count);
        if (!rows) return rows.error();
        const std::size_t rowBytes = m_width * static_cast<std::size_t>(m_format.drawnBands());
        for (int y = 0; y < count; ++y, to += rowBytes)
            convert(rows->first + y * rows->stride, to, m_width, m_sourceIsPremultiplied);
        return Done{};
    }

    Status reduce(const RowProvider& source, int count, std::uint8_t* to)
    {
        const std::size_t pixels = m_width * static_cast<std::size_t>(count);
        m_reduced.resize(m_width * streamedRows * static_cast<std::size_t>(m_format.bands()));
        const RowProvider premultiplied = [&](int first, int rows) {
            return premultipliedRows(source, first, rows);
        };
        if (auto status = m_reduction->next(premultiplied, count, m_reduced.data()); !status) return status;
        convert(m_reduced.data(), to, pixels, m_format.hasAlpha);
        return Done{};
    }

    Result<RowSpan> premultipliedRows(const RowProvider& source, int first, int count)
    {
        auto rows = source(first, count);
        if (!rows || !m_format.hasAlpha || m_sourceIsPremultiplied) return rows;
        const auto bands = static_cast<std::size_t>(m_format.bands());
        const std::size_t rowBytes = m_sourceWidth * bands;
        m_premultiplied.resize(rowBytes * static_cast<std::size_t>(count));
        copyRows(*rows, count, rowBytes, m_premultiplied.data());
        premultiply(m_premultiplied.data(), m_premultiplied.size() / bands, m_format.bands());
        return RowSpan{m_premultiplied.data(), static_cast<std::ptrdiff_t>(rowBytes)};
    }

    // Profiles speak of straight colours, so a premultiplied picture is unmixed first; when no colour
    // changes, that lossy detour is skipped.
    void convert(const std::uint8_t* from, std::uint8_t* to, std::size_t pixels, bool isPremultiplied)
    {
        const bool mustUnmix = isPremultiplied && !m_conversion.isIdentity();
        if (mustUnmix) {
            m_straight.assign(from, from + pixels * static_cast<std::size_t>(m_format.bands()));
            unpremultiply(m_straight.data(), pixels, m_format.bands());
            from = m_straight.data();
        }
        m_conversion.run(from, to, pixels);
        if (m_format.hasAlpha && (mustUnmix || !isPremultiplied)) premultiply(to, pixels, 4);
    }

    RowFormat m_format;
    std::size_t m_sourceWidth;
    std::size_t m_width;
    std::optional<Resampler> m_reduction;
    ColorConversion m_conversion;
    bool m_sourceIsPremultiplied;
    std::shared_ptr<ReadOutcome> m_outcome;
    std::vector<std::uint8_t> m_reduced;
    std::vector<std::uint8_t> m_premultiplied;
    std::vector<std::uint8_t> m_straight;
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
           image.height() == request.height && isIn(request.colorSpace, profile);
}

// The picture is good, but not to be had so.
Error inconvertible(Error error)
{
    if (error.cause == Error::Cause::unspecified) error.cause = Error::Cause::inconvertible;
    return error;
}

StreamForm bitmapForm(PixelSize size, int bands)
{
    return {size.width, size.height, bands, VIPS_FORMAT_UCHAR, VIPS_CODING_NONE, VIPS_INTERPRETATION_sRGB};
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

Result<Image> draw(const Image& image, const DrawRequest& request)
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
    if (!decoded) return decoded.error();
    const bool keepsComponents =
        request.colorSpace == ColorSpace::own && colorModelOf(decoded->pixels()) == ColorModel::rgb;
    const auto source = keepsComponents ? decoded : withDeepColorsInSrgb(*decoded, profile);
    if (!source) return source.error();
    auto reader = RowReader::open(*source);
    if (!reader) return reader.error();
    const bool isConverted = source->pixels() != decoded->pixels();
    ColorPlan plan = planColors(*reader, isConverted ? ProfileBytes() : profile, request.colorSpace);
    if (!plan.conversion.isPossible()) return inconvertible(Error{"colours that cannot be converted"});
    const RowFormat format = reader->format();
    const SourceShape shape = shapeOf(image, *decoded, divisor);
    std::optional<Resampler> reduction;
    if (size != shape.rows) {
        auto made = Resampler::create(shape, size, format.bands());
        if (!made) return inconvertible(made.error());
        reduction = std::move(*made);
    }

    const auto outcome = image.outcomeToCome();
    auto drawing =
        std::make_unique<Drawing>(format, shape.rows.width, size.width, std::move(reduction),
                                  std::move(plan.conversion), image.alphaIsPremultiplied(), outcome);
    auto rows = streamedPicture(reader->picture(), bitmapForm(size, format.drawnBands()),
                                readingAhead(reader->picture(), std::move(drawing)), outcome);
    if (!rows) return rows.error();
    if (!plan.resultProfile.empty())
        vips_image_set_blob_copy(rows->get(), VIPS_META_ICC_NAME, plan.resultProfile.data(),
                                 plan.resultProfile.size());
    if (image.pendingOrientation() != 1)
        rows = uprightPicture(rows->get(), image.pendingOrientation(), outcome);
    if (!rows) return rows.error();
    return Image(rows->release(), 1, ImageState::drawing).withOutcome(outcome);
}

Result<Image> drawRegardless(const Image& image, const DrawRequest& request)
{
    auto drawn = draw(image, request);
    const bool isRefused = !drawn && drawn.error().cause == Error::Cause::inconvertible;
    return isRefused ? draw(image.withoutProfile(), request) : drawn;
}

} // namespace lumora
