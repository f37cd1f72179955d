// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/coefficient_writer.h"

#include <jerror.h>

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

namespace lumora {
namespace {

jpeg_scan_info scanOf(int component, int firstFrequency, int lastFrequency, int bitsBefore, int bitsLeft)
{
    jpeg_scan_info scan{};
    scan.comps_in_scan = 1;
    scan.component_index[0] = component;
    scan.Ss = firstFrequency;
    scan.Se = lastFrequency;
    scan.Ah = bitsBefore;
    scan.Al = bitsLeft;
    return scan;
}

// Each a table of codes for itself. The last bit of most of brightness comes by itself: it is the noisiest.
constexpr int last = 63;
const std::array scans{scanOf(0, 0, 0, 0, 0),    scanOf(1, 0, 0, 0, 0),    scanOf(2, 0, 0, 0, 0),
                       scanOf(0, 1, 2, 0, 0),    scanOf(0, 3, last, 0, 1), scanOf(1, 1, last, 0, 0),
                       scanOf(2, 1, last, 0, 0), scanOf(0, 3, last, 1, 0)};
const std::array grayScans{scanOf(0, 0, 0, 0, 0), scanOf(0, 1, 2, 0, 0), scanOf(0, 3, last, 0, 1),
                           scanOf(0, 3, last, 1, 0)};

} // namespace

CoefficientWriter::CoefficientWriter(Taker take) : m_take(std::move(take))
{
    m_jpeg.err = jpeg_std_error(&m_messages.manager);
    m_messages.manager.error_exit = [](j_common_ptr jpeg) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the manager is the first member
        std::longjmp(reinterpret_cast<Messages*>(jpeg->err)->failure, 1);
    };
    m_messages.manager.emit_message = [](j_common_ptr, int) {};
    m_messages.manager.output_message = [](j_common_ptr) {};
    m_output.writer = this;
    m_output.manager.init_destination = [](j_compress_ptr) {};
    m_output.manager.empty_output_buffer = flush;
    m_output.manager.term_destination = flushRest;
    m_output.manager.next_output_byte = m_output.buffer.data();
    m_output.manager.free_in_buffer = m_output.buffer.size();
}

CoefficientWriter::~CoefficientWriter()
{
    jpeg_destroy_compress(&m_jpeg);
}

CoefficientWriter& CoefficientWriter::writerOf(j_compress_ptr jpeg)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the manager is the first member
    return *reinterpret_cast<Output*>(jpeg->dest)->writer;
}

bool CoefficientWriter::isTaken(std::size_t size) noexcept
try {
    const auto status = m_take(std::as_bytes(std::span(m_output.buffer).first(size)));
    if (!status) m_error = status.error();
    return static_cast<bool>(status);
} catch (const std::bad_alloc&) {
    m_error = outOfMemory();
    return false;
}

boolean CoefficientWriter::flush(j_compress_ptr jpeg)
{
    CoefficientWriter& writer = writerOf(jpeg);
    if (!writer.isTaken(writer.m_output.buffer.size())) std::longjmp(writer.m_messages.failure, 1);
    writer.m_output.manager.next_output_byte = writer.m_output.buffer.data();
    writer.m_output.manager.free_in_buffer = writer.m_output.buffer.size();
    return TRUE;
}

void CoefficientWriter::flushRest(j_compress_ptr jpeg)
{
    CoefficientWriter& writer = writerOf(jpeg);
    const std::size_t size = writer.m_output.buffer.size() - writer.m_output.manager.free_in_buffer;
    if (!writer.isTaken(size)) std::longjmp(writer.m_messages.failure, 1);
}

// Runs what calls the library; false when the library gave up. No object with a destructor may live in it.
template <class Work>
bool CoefficientWriter::succeeds(Work work)
{
    if (setjmp(m_messages.failure) != 0) return false;
    work();
    return true;
}

Error CoefficientWriter::error() const
{
    if (m_error) return *m_error;
    if (m_messages.manager.msg_code == JERR_OUT_OF_MEMORY) return outOfMemory();
    return Error{"the JPEG could not be encoded"};
}

j_common_ptr CoefficientWriter::common()
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the library's own idea of inheritance
    return reinterpret_cast<j_common_ptr>(&m_jpeg);
}

void CoefficientWriter::describe(const CoefficientShape& shape)
{
    const bool isColor = shape.components == 3;
    m_jpeg.dest = &m_output.manager;
    m_jpeg.image_width = static_cast<JDIMENSION>(shape.width);
    m_jpeg.image_height = static_cast<JDIMENSION>(shape.height);
    m_jpeg.input_components = shape.components;
    m_jpeg.in_color_space = isColor ? JCS_YCbCr : JCS_GRAYSCALE;
    jpeg_set_defaults(&m_jpeg);
    m_jpeg.optimize_coding = TRUE;
    m_jpeg.write_JFIF_header = FALSE; // the caller's, with the density
    m_jpeg.scan_info = isColor ? scans.data() : grayScans.data();
    m_jpeg.num_scans = static_cast<int>(isColor ? scans.size() : grayScans.size());
    for (int i = 0; i < shape.components; ++i) {
        jpeg_component_info& component = m_jpeg.comp_info[i];
        component.h_samp_factor = component.v_samp_factor = shape.hasHalvedChroma && i == 0 ? 2 : 1;
        component.quant_tbl_no = i;
    }
}

void CoefficientWriter::reserve()
{
    for (int i = 0; i < m_jpeg.num_components; ++i) {
        const auto across = static_cast<JDIMENSION>(blocksAcross(i));
        const auto down = static_cast<JDIMENSION>(blocksDown(i));
        const auto together = static_cast<JDIMENSION>(m_jpeg.comp_info[i].v_samp_factor);
        m_coefficients.at(static_cast<std::size_t>(i)) =
            m_jpeg.mem->request_virt_barray(common(), JPOOL_IMAGE, FALSE, across, down, together);
    }
    m_jpeg.mem->realize_virt_arrays(common());
}

Status CoefficientWriter::start(const CoefficientShape& shape)
{
    const bool isReady = succeeds([&] {
        jpeg_create_compress(&m_jpeg);
        describe(shape);
        reserve();
    });
    return isReady ? Status(Done{}) : error();
}

Status CoefficientWriter::setSteps(int component, const FrequencyTable<std::uint16_t>& steps)
{
    std::array<unsigned, 64> table{};
    std::ranges::copy(steps, table.begin());
    constexpr int unscaled = 100;
    const bool isSet =
        succeeds([&] { jpeg_add_quant_table(&m_jpeg, component, table.data(), unscaled, TRUE); });
    return isSet ? Status(Done{}) : error();
}

int CoefficientWriter::blocksAcross(int component) const
{
    const int together = 8 * m_jpeg.comp_info[0].h_samp_factor;
    const auto width = static_cast<int>(m_jpeg.image_width);
    return (width + together - 1) / together * m_jpeg.comp_info[component].h_samp_factor;
}

int CoefficientWriter::blocksDown(int component) const
{
    const int together = 8 * m_jpeg.comp_info[0].v_samp_factor;
    const auto height = static_cast<int>(m_jpeg.image_height);
    return (height + together - 1) / together * m_jpeg.comp_info[component].v_samp_factor;
}

std::int16_t* CoefficientWriter::blockRow(int component, int row)
{
    std::int16_t* blocks = nullptr;
    const jvirt_barray_ptr coefficients = m_coefficients.at(static_cast<std::size_t>(component));
    succeeds([&] {
        blocks =
            **m_jpeg.mem->access_virt_barray(common(), coefficients, static_cast<JDIMENSION>(row), 1, TRUE);
    });
    return blocks;
}

Status CoefficientWriter::write(std::string_view profile)
{
    const bool isWritten = succeeds([&] {
        jpeg_write_coefficients(&m_jpeg, m_coefficients.data());
        if (!profile.empty()) {
            // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): characters as bytes
            const auto* bytes = reinterpret_cast<const JOCTET*>(profile.data());
            jpeg_write_icc_profile(&m_jpeg, bytes, static_cast<unsigned>(profile.size()));
        }
        jpeg_finish_compress(&m_jpeg);
    });
    return isWritten ? Status(Done{}) : error();
}

} // namespace lumora
