// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/jpeg_decoder.h"

#include <jerror.h>

#include <algorithm>
#include <span>
#include <utility>

namespace lumora {
namespace {

// A picture of a few bytes may claim any number of passes over millions of pixels.
constexpr int mostScans = 100;

} // namespace

JpegDecoder::JpegDecoder(FileDescriptor file, int divisor) : m_input(std::move(file)), m_divisor(divisor)
{
    m_jpeg.err = jpeg_std_error(&m_messages.manager);
    m_messages.manager.error_exit = fail;
    m_messages.manager.emit_message = hear;
    m_messages.manager.output_message = [](j_common_ptr) {};
    m_messages.decoder = this;
    if (succeeds([&] { jpeg_create_decompress(&m_jpeg); })) m_jpeg.src = m_input.manager();
}

JpegDecoder::~JpegDecoder()
{
    jpeg_destroy_decompress(&m_jpeg);
}

JpegDecoder& JpegDecoder::decoderOf(j_common_ptr jpeg)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the manager is the first member
    return *reinterpret_cast<Messages*>(jpeg->err)->decoder;
}

void JpegDecoder::fail(j_common_ptr jpeg)
{
    std::longjmp(decoderOf(jpeg).m_messages.failure, 1);
}

void JpegDecoder::hear(j_common_ptr jpeg, int level)
{
    const bool isWarning = level < 0;
    JpegDecoder& decoder = decoderOf(jpeg);
    if (isWarning && !decoder.isHarmless(jpeg->err->msg_code)) decoder.m_isDamaged = true;
    if (decoder.m_jpeg.input_scan_number > mostScans) fail(jpeg);
}

// Runs what calls the library; false when the library gave up. No object with a destructor may live in it.
template <class Work>
bool JpegDecoder::succeeds(Work work)
{
    if (setjmp(m_messages.failure) != 0) return false;
    work();
    return true;
}

bool JpegDecoder::isHarmless(int warning) const
{
    switch (warning) {
    case JWRN_ADOBE_XFORM:
    case JWRN_JFIF_MAJOR:
    case JWRN_NOT_SEQUENTIAL: // fields of a scan that a sequential picture does not use
        return true;
    case JWRN_EXTRANEOUS_DATA: {
        const bool isBeforePicture = m_jpeg.input_scan_number == 0;
        const auto count = static_cast<std::size_t>(m_messages.manager.msg_parm.i[0]);
        constexpr std::size_t tornMarker = 2;
        return isBeforePicture || (m_input.isAtEnd() ? count <= tornMarker : m_input.isFillingBefore(count));
    }
    default:
        return false;
    }
}

Status JpegDecoder::outcome(bool isGood) const
{
    if (isGood && !m_isDamaged) return Done{};
    return Error{m_isDamaged ? "damaged JPEG" : "unreadable JPEG"};
}

Status JpegDecoder::start(int width, int height, int components)
{
    const bool isStarted = m_jpeg.src && succeeds([&] {
                               jpeg_read_header(&m_jpeg, TRUE);
                               m_jpeg.scale_num = 1;
                               m_jpeg.scale_denom = static_cast<unsigned>(m_divisor);
                               const bool isColor = m_jpeg.out_color_space == JCS_RGB;
                               if (m_jpeg.num_components == 3 && !isColor) m_jpeg.out_color_space = JCS_RGB;
                               jpeg_start_decompress(&m_jpeg);
                           });
    const bool isAsSaid = m_jpeg.output_width == static_cast<unsigned>(width) &&
                          m_jpeg.output_height == static_cast<unsigned>(height) &&
                          m_jpeg.output_components == components;
    constexpr int inks = 4;
    m_storesInverse = components == inks; // the custom since the first program that wrote them
    return outcome(isStarted && isAsSaid);
}

Status JpegDecoder::read(std::uint8_t* row)
{
    const bool isRead = succeeds([&] { jpeg_read_scanlines(&m_jpeg, &row, 1); });
    const bool isLast = m_jpeg.output_scanline == m_jpeg.output_height;
    if (auto status = outcome(isRead && (!isLast || isWhole())); !status) return status;
    if (m_storesInverse) {
        const auto bytes = std::size_t{m_jpeg.output_width} * static_cast<unsigned>(m_jpeg.output_components);
        for (std::uint8_t& ink : std::span(row, bytes))
            ink = static_cast<std::uint8_t>(255 - ink);
    }
    return Done{};
}

// Whether each part of each component has come in full precision: a file may end between two passes over the
// picture.
bool JpegDecoder::isComplete() const
{
    const auto components = std::span(m_jpeg.comp_info, static_cast<std::size_t>(m_jpeg.num_components));
    const bool hasAll = std::ranges::all_of(
        components, [](const jpeg_component_info& component) { return component.quant_table != nullptr; });
    if (!hasAll || !m_jpeg.coef_bits) return hasAll;
    return std::ranges::all_of(std::span(m_jpeg.coef_bits, components.size()), [](const auto& bits) {
        return std::ranges::all_of(bits, [](int missing) { return missing == 0; });
    });
}

// Looks at what follows the last row. It belongs to the picture only when the library passes over it on its
// way to the end marker; whatever else stands there instead of one is not missing from the picture.
bool JpegDecoder::isWhole()
{
    if (!isComplete()) return false;
    const bool isArithmetic = m_jpeg.arith_code;
    succeeds([&] { jpeg_finish_decompress(&m_jpeg); });
    // The arithmetic coding means zeros where its data ends, so that a cut is none to it; zeros in place of
    // the last data may by chance be as long as what they stand for.
    return !m_input.isAtEnd() || !(isArithmetic || m_input.endsInZeros());
}

} // namespace lumora
