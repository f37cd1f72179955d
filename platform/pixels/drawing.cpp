// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/drawing.h"

#include "pixels/color_conversion.h"
#include "pixels/color_profile.h"
#include "pixels/row_reader.h"
#include "pixels/row_stream.h"
#include "pixels/stored_form.h"
#include "resampler.h"
#include "rgba_pixels.h"
#include "turned_rows.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstring>
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

// One drawing: the stored picture reduced, converted and brought to premultiplied RGBA, still as stored.
class Drawing : public RowMaker
{
public:
    // The widths are those of the source and of the result; without a reduction they are the same.
    Drawing(RowFormat format, int sourceWidth, int width, std::optional<Resampler> reduction,
            ColorConversion conversion, bool sourceIsPremultiplied)
        : m_format(format), m_sourceWidth(static_cast<std::size_t>(sourceWidth)),
          m_width(static_cast<std::size_t>(width)), m_reduction(std::move(reduction)),
          m_conversion(std::move(conversion)),
          m_sourceIsPremultiplied(sourceIsPremultiplied && format.hasAlpha)
    {
    }

    Status make(const RowProvider& source, int first, int count, std::uint8_t* rgba) override
    {
        return m_reduction ? reduce(source, count, rgba) : convertRows(source, first, count, rgba);
    }

private:
    Status convertRows(const RowProvider& source, int first, int count, std::uint8_t* rgba)
    {
        const auto rows = source(first, count);
        if (!rows) return rows.error();
        for (int y = 0; y < count; ++y, rgba += m_width * 4)
            convert(rows->first + y * rows->stride, rgba, m_width, m_sourceIsPremultiplied);
        return Done{};
    }

    Status reduce(const RowProvider& source, int count, std::uint8_t* rgba)
    {
        const std::size_t pixels = m_width * static_cast<std::size_t>(count);
        m_reduced.resize(m_width * streamedRows * static_cast<std::size_t>(m_format.bands()));
        const RowProvider premultiplied = [&](int first, int rows) {
            return premultipliedRows(source, first, rows);
        };
        if (auto status = m_reduction->next(premultiplied, count, m_reduced.data()); !status) return status;
        convert(m_reduced.data(), rgba, pixels, m_format.hasAlpha);
        return Done{};
    }

    Result<RowSpan> premultipliedRows(const RowProvider& source, int first, int count)
    {
        auto rows = source(first, count);
        if (!rows || !m_format.hasAlpha || m_sourceIsPremultiplied) return rows;
        const auto bands = static_cast<std::size_t>(m_format.bands());
        const std::size_t rowBytes = m_sourceWidth * bands;
        m_premultiplied.resize(rowBytes * static_cast<std::size_t>(count));
        for (int y = 0; y < count; ++y)
            std::memcpy(m_premultiplied.data() + static_cast<std::size_t>(y) * rowBytes,
                        rows->first + y * rows->stride, rowBytes);
        premultiply(m_premultiplied.data(), m_premultiplied.size() / bands, m_format.bands());
        return RowSpan{m_premultiplied.data(), static_cast<std::ptrdiff_t>(rowBytes)};
    }

    // Profiles speak of straight colours, so a premultiplied picture is unmixed first; when no colour
    // changes, that lossy detour is skipped.
    void convert(const std::uint8_t* from, std::uint8_t* rgba, std::size_t pixels, bool isPremultiplied)
    {
        const bool mustUnmix = isPremultiplied && !m_conversion.isIdentity();
        if (mustUnmix) {
            m_straight.assign(from, from + pixels * static_cast<std::size_t>(m_format.bands()));
            unpremultiply(m_straight.data(), pixels, m_format.bands());
            from = m_straight.data();
        }
        m_conversion.run(from, rgba, pixels);
        if (m_format.hasAlpha && (mustUnmix || !isPremultiplied)) premultiply(rgba, pixels, 4);
    }

    RowFormat m_format;
    std::size_t m_sourceWidth;
    std::size_t m_width;
    std::optional<Resampler> m_reduction;
    ColorConversion m_conversion;
    bool m_sourceIsPremultiplied;
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
           image.height() == request.height && vips_image_get_bands(image.pixels()) == 4 &&
           isIn(request.colorSpace, profile);
}

StreamForm bitmapForm(PixelSize size)
{
    return {size.width, size.height, 4, VIPS_FORMAT_UCHAR, VIPS_CODING_NONE, VIPS_INTERPRETATION_sRGB};
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

std::shared_ptr<ReadOutcome> outcomeOf(const Image& image)
{
    return image.outcome() ? image.outcome() : std::make_shared<ReadOutcome>();
}

// What of the metadata says something of the components.
void copyComponentFields(VipsImage* from, VipsImage* to)
{
    gchar** fields = vips_image_get_fields(from);
    for (gchar** field = fields; *field; ++field) {
        if (std::strcmp(*field, VIPS_META_ICC_NAME) != 0 && !isStoredFormField(*field)) continue;
        GValue value = G_VALUE_INIT;
        if (vips_image_get(from, *field, &value) != 0) continue;
        vips_image_set(to, *field, &value);
        g_value_unset(&value);
    }
    g_strfreev(fields);
}

// The rows of the stored picture turned upright.
Result<VipsImagePtr> uprightPicture(VipsImage* stored, Orientation orientation,
                                    const std::shared_ptr<ReadOutcome>& outcome)
{
    StreamForm form = streamFormOf(stored);
    const PixelSize size{form.width, form.height};
    if (orientation >= 5) std::swap(form.width, form.height);
    auto upright =
        streamedPicture(stored, form, turnedRows(size, pixelBytesOf(stored), orientation), outcome);
    if (upright) copyComponentFields(stored, upright->get());
    return upright;
}

// All rows in memory.
Result<VipsImagePtr> heldPicture(VipsImage* rows)
{
    const std::size_t rowBytes = rowBytesOf(rows);
    const StreamForm form = streamFormOf(rows);
    const std::size_t bytes = rowBytes * static_cast<std::size_t>(form.height);
    PageBytes pixels = allocatePages(bytes);
    const auto status = readRows(rows, [&](int first, int count, const RowSpan& strip) -> Status {
        for (int y = 0; y < count; ++y)
            std::memcpy(pixels.get() + static_cast<std::size_t>(first + y) * rowBytes,
                        strip.first + y * strip.stride, rowBytes);
        return Done{};
    });
    if (!status) return status.error();
    const VipsImagePtr memory(vips_image_new_from_memory(
        pixels.get(), bytes, form.width, form.height, form.bands, static_cast<VipsBandFormat>(form.format)));
    if (!memory) return takeVipsError();
    g_object_set_data_full(G_OBJECT(memory.get()), "lumora-pixels", new PageBytes(std::move(pixels)),
                           [](gpointer owned) { delete static_cast<PageBytes*>(owned); });
    VipsImage* tagged = nullptr;
    if (vips_copy(memory.get(), &tagged, "interpretation", form.interpretation, "coding", form.coding,
                  nullptr) != 0)
        return takeVipsError();
    copyComponentFields(rows, tagged);
    return VipsImagePtr(tagged);
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
    auto reader = RowReader::open(*decoded);
    if (!reader) return reader.error();
    ColorPlan plan = planColors(*reader, profile, request.colorSpace);
    const RowFormat format = reader->format();
    const SourceShape shape = shapeOf(image, *decoded, divisor);
    std::optional<Resampler> reduction;
    if (size != shape.rows) {
        auto made = Resampler::create(shape, size, format.bands());
        if (!made) return made.error();
        reduction = std::move(*made);
    }

    const auto outcome = outcomeOf(image);
    auto rows =
        streamedPicture(reader->picture(), bitmapForm(size),
                        std::make_unique<Drawing>(format, shape.rows.width, size.width, std::move(reduction),
                                                  std::move(plan.conversion), image.alphaIsPremultiplied()),
                        outcome);
    if (!rows) return rows.error();
    if (!plan.resultProfile.empty())
        vips_image_set_blob_copy(rows->get(), VIPS_META_ICC_NAME, plan.resultProfile.data(),
                                 plan.resultProfile.size());
    if (!format.hasAlpha) noteOpaque(rows->get());
    if (image.pendingOrientation() != 1)
        rows = uprightPicture(rows->get(), image.pendingOrientation(), outcome);
    if (!rows) return rows.error();
    return Image(rows->release(), 1, ImageState::drawing).withOutcome(outcome);
}

Result<Image> turned(const Image& image)
{
    ensureVipsReady();
    if (image.state() != ImageState::pending) return image;
    const auto outcome = outcomeOf(image);
    auto upright = uprightPicture(image.pixels(), image.pendingOrientation(), outcome);
    if (!upright) return upright.error();
    return Image(upright->release(), 1, ImageState::pending).withOutcome(outcome);
}

Result<Image> decode(const Image& image)
{
    if (image.isInMemory()) return image;
    const auto rows = turned(image);
    if (!rows) return rows.error();
    auto held = heldPicture(rows->pixels());
    if (!held) return held.error();
    const bool isDrawing = image.state() == ImageState::drawing;
    return Image(held->release(), 1, isDrawing ? ImageState::drawn : ImageState::decoded);
}

Status readThrough(const Image& image)
{
    return readRows(image.pixels(), [](int, int, const RowSpan&) -> Status { return Done{}; });
}

} // namespace lumora
