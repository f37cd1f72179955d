// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/progressive_file.h"

#include "jpeg/zigzag.h"
#include "system/side_by_side.h"

#include <gtest/gtest.h>

#include <csetjmp>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <ostream>
#include <random>
#include <string>

namespace lumora {
namespace {

using Blocks = std::vector<std::int16_t>;

// Of each component, in the order of the file.
using Coefficients = std::vector<Blocks>;

FrequencyTable<std::uint16_t> stepsOf(int component)
{
    FrequencyTable<std::uint16_t> steps{};
    std::iota(steps.begin(), steps.end(), static_cast<std::uint16_t>(component + 1));
    return steps;
}

std::string fileOf(const CoefficientShape& shape, const Coefficients& coefficients,
                   const std::string& profile = {})
{
    ProgressiveFile file(shape);
    StepTables steps;
    for (int c = 0; c < shape.components; ++c) {
        const Blocks& blocks = coefficients[static_cast<std::size_t>(c)];
        for (int row = 0; row < shape.blocksDown(c); ++row)
            file.add(c, blocks.data() + std::ptrdiff_t{row} * shape.blocksAcross(c) * 64);
        steps.push_back(stepsOf(c));
    }
    std::string jpeg;
    EXPECT_TRUE(file.write(steps, profile, [&](std::span<const std::byte> bytes) -> Status {
        jpeg.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        return Done{};
    }));
    return jpeg;
}

// What another reader finds, and what it writes of that by its own codes.
class LibraryCopy
{
public:
    explicit LibraryCopy(const std::string& jpeg)
    {
        m_input.err = m_output.err = jpeg_std_error(&m_errors.manager);
        m_errors.manager.error_exit = [](j_common_ptr common) {
            std::longjmp(reinterpret_cast<Errors*>(common->err)->failure, 1);
        };
        jpeg_create_decompress(&m_input);
        jpeg_create_compress(&m_output);
        m_isRead = setjmp(m_errors.failure) == 0 && copy(jpeg);
    }
    ~LibraryCopy()
    {
        jpeg_destroy_compress(&m_output);
        jpeg_destroy_decompress(&m_input);
        std::free(m_bytes);
    }
    LibraryCopy(const LibraryCopy&) = delete;
    LibraryCopy& operator=(const LibraryCopy&) = delete;

    bool isRead() const { return m_isRead && !m_hasWarned; }
    const Coefficients& coefficients() const { return m_coefficients; }
    const std::vector<std::vector<int>>& steps() const { return m_steps; }
    const std::string& profile() const { return m_profile; }
    unsigned long size() const { return m_size; }

private:
    struct Errors
    {
        jpeg_error_mgr manager{};
        std::jmp_buf failure{};
    };

    bool copy(const std::string& jpeg)
    {
        jpeg_mem_src(&m_input, reinterpret_cast<const unsigned char*>(jpeg.data()), jpeg.size());
        jpeg_save_markers(&m_input, JPEG_APP0 + 2, 0xFFFF);
        jpeg_read_header(&m_input, TRUE);
        jvirt_barray_ptr* const arrays = jpeg_read_coefficients(&m_input);
        readProfile();
        for (int c = 0; c < m_input.num_components; ++c)
            readComponent(m_input.comp_info[c], arrays[c]);
        m_hasWarned = m_errors.manager.num_warnings > 0;
        write(arrays);
        return true;
    }

    void readProfile()
    {
        JOCTET* bytes = nullptr;
        unsigned size = 0;
        if (jpeg_read_icc_profile(&m_input, &bytes, &size) == TRUE)
            m_profile.assign(reinterpret_cast<const char*>(bytes), size);
        std::free(bytes);
    }

    void readComponent(const jpeg_component_info& component, jvirt_barray_ptr array)
    {
        Blocks& blocks = m_coefficients.emplace_back();
        for (JDIMENSION row = 0; row < component.height_in_blocks; ++row) {
            const JBLOCK* const line = *m_input.mem->access_virt_barray(
                reinterpret_cast<j_common_ptr>(&m_input), array, row, 1, FALSE);
            for (JDIMENSION x = 0; x < component.width_in_blocks; ++x) {
                for (const std::uint8_t place : zigzag)
                    blocks.push_back(line[x][place]);
            }
        }
        m_steps.emplace_back(component.quant_table->quantval, component.quant_table->quantval + 64);
    }

    void write(jvirt_barray_ptr* arrays)
    {
        jpeg_mem_dest(&m_output, &m_bytes, &m_size);
        jpeg_copy_critical_parameters(&m_input, &m_output);
        m_output.optimize_coding = TRUE;
        m_output.write_JFIF_header = FALSE;
        const auto scan = [](int component, int first, int last, int before, int left) {
            return jpeg_scan_info{1, {component, 0, 0, 0}, first, last, before, left};
        };
        for (int c = 0; c < m_input.num_components; ++c)
            m_scans.push_back(scan(c, 0, 0, 0, 0));
        m_scans.push_back(scan(0, 1, 2, 0, 0));
        m_scans.push_back(scan(0, 3, 63, 0, 1));
        for (int c = 1; c < m_input.num_components; ++c)
            m_scans.push_back(scan(c, 1, 63, 0, 0));
        m_scans.push_back(scan(0, 3, 63, 1, 0));
        m_output.scan_info = m_scans.data();
        m_output.num_scans = static_cast<int>(m_scans.size());
        jpeg_write_coefficients(&m_output, arrays);
        jpeg_finish_compress(&m_output);
    }

    Errors m_errors;
    jpeg_decompress_struct m_input{};
    jpeg_compress_struct m_output{};
    unsigned char* m_bytes = nullptr;
    unsigned long m_size = 0;
    std::vector<jpeg_scan_info> m_scans;
    Coefficients m_coefficients;
    std::vector<std::vector<int>> m_steps;
    std::string m_profile;
    bool m_hasWarned = false;
    bool m_isRead = false;
};

// Gives a block's coefficients, from the second on.
struct Content
{
    const char* name;
    int (*value)(std::mt19937& random, int at);
};

void PrintTo(const Content& content, std::ostream* out)
{
    *out << content.name;
}

int either(std::mt19937& random, int size)
{
    return random() % 2 == 0 ? size : -size;
}

const Content contents[] = {
    {"Nothing", [](std::mt19937&, int) { return 0; }},
    {"Noise", [](std::mt19937& random, int) { return static_cast<int>(random() % 2047) - 1023; }},
    {"SmallNoise", [](std::mt19937& random, int) { return static_cast<int>(random() % 5) - 2; }},
    {"Few", [](std::mt19937& random, int) { return random() % 20 == 0 ? either(random, 1) : 0; }},
    {"HardlyAny",
     [](std::mt19937& random, int) {
         return random() % 5000 == 0 ? either(random, 1 + static_cast<int>(random() % 3)) : 0;
     }},
    // Numbers known before whose last bits wait for block after block to be told.
    {"NoneNewInTheLastScan",
     [](std::mt19937& random, int) { return either(random, 2 + static_cast<int>(random() % 2)); }},
    {"LongGaps", [](std::mt19937& random, int at) { return at % 17 == 0 ? either(random, 1) : 0; }},
    {"GapsBesideNumbersKnownBefore",
     [](std::mt19937& random, int at) { return at == 63            ? 1
                                               : random() % 9 == 0 ? either(random, 3)
                                                                   : 0; }},
    {"TheLastOne", [](std::mt19937&, int at) { return at == 63 ? -1 : 0; }},
};

Coefficients coefficientsOf(const CoefficientShape& shape, const Content& content)
{
    std::mt19937 random(5);
    Coefficients coefficients;
    for (int c = 0; c < shape.components; ++c) {
        Blocks& blocks = coefficients.emplace_back();
        for (int i = 0; i < shape.blocksAcross(c) * shape.blocksDown(c); ++i) {
            blocks.push_back(static_cast<std::int16_t>(static_cast<int>(random() % 2048) - 1024));
            for (int at = 1; at < 64; ++at)
                blocks.push_back(static_cast<std::int16_t>(content.value(random, at)));
        }
    }
    return coefficients;
}

class ProgressiveFileOf : public testing::TestWithParam<Content>
{
};

INSTANTIATE_TEST_SUITE_P(Blocks, ProgressiveFileOf, testing::ValuesIn(contents),
                         [](const auto& test) { return test.param.name; });

TEST_P(ProgressiveFileOf, IsReadByOthersAndNoLargerThanTheirs)
{
    // The last is longer than the longest run of blocks that have nothing to tell.
    for (const auto& [width, height] : {std::pair(1, 1), {8, 8}, {9, 17}, {100, 75}, {1601, 1600}}) {
        for (const CoefficientShape& shape : {CoefficientShape{width, height, 1, false},
                                              {width, height, 3, false},
                                              {width, height, 3, true}}) {
            const Coefficients coefficients = coefficientsOf(shape, GetParam());
            const std::string jpeg = fileOf(shape, coefficients);
            const LibraryCopy copy(jpeg);
            ASSERT_TRUE(copy.isRead()) << width << " x " << height;
            EXPECT_EQ(copy.coefficients(), coefficients) << width << " x " << height;
            EXPECT_LE(jpeg.size(), copy.size()) << width << " x " << height;
        }
    }
}

TEST(ProgressiveFile, HoldsTheStepsOfEachComponent)
{
    const CoefficientShape shape{20, 20, 3, true};
    const LibraryCopy copy(fileOf(shape, coefficientsOf(shape, contents[0])));
    ASSERT_EQ(copy.steps().size(), 3U);
    for (int c = 0; c < 3; ++c) {
        const auto wanted = stepsOf(c);
        EXPECT_EQ(copy.steps()[static_cast<std::size_t>(c)], std::vector<int>(wanted.begin(), wanted.end()));
    }
}

TEST(ProgressiveFile, HoldsProfilesOfAnyLength)
{
    const CoefficientShape shape{8, 8, 1, false};
    for (const std::size_t size : {1U, 65519U, 65520U, 1'000'000U}) {
        std::string profile(size, '\0');
        std::ranges::generate(profile, [random = std::mt19937(1)]() mutable { return char(random()); });
        EXPECT_EQ(LibraryCopy(fileOf(shape, coefficientsOf(shape, contents[2]), profile)).profile(), profile)
            << size;
    }
}

TEST(ProgressiveFile, IsTheSameByHoweverManyProcessors)
{
    const CoefficientShape shape{640, 480, 3, true};
    const Coefficients coefficients = coefficientsOf(shape, contents[2]);
    const std::string alone = fileOf(shape, coefficients);
    useProcessors(3);
    const std::string together = fileOf(shape, coefficients);
    useProcessors(1);
    EXPECT_TRUE(alone == together);
}

} // namespace
} // namespace lumora
