// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows_ahead.h"

#include "pixels/row_reading.h"
#include "system/side_by_side.h"
#include "tests/platform/pixels/memory_picture.h"
#include "tests/support/sample_images.h"
#include "turned_rows.h"

#include <gtest/gtest.h>
#include <vips/vips.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <utility>

namespace lumora {
namespace {

constexpr int width = 1000;
constexpr int height = 1000;

// Grey rows that tell their number and how far somebody has read.
struct Source
{
    int damagedFrom = height;
    std::atomic<int> rowsRead{0};
    std::atomic<std::thread::id> reader{};

    VipsImagePtr picture()
    {
        ensureVipsReady();
        VipsImage* image = vips_image_new();
        vips_image_init_fields(image, width, height, 1, VIPS_FORMAT_UCHAR, VIPS_CODING_NONE,
                               VIPS_INTERPRETATION_B_W, 1, 1);
        const VipsGenerateFn generate = [](VipsRegion* region, void*, void*, void* source, gboolean*) {
            return static_cast<Source*>(source)->fill(region);
        };
        vips_image_pipelinev(image, VIPS_DEMAND_STYLE_THINSTRIP, nullptr);
        vips_image_generate(image, nullptr, generate, nullptr, nullptr, this);
        return VipsImagePtr(image);
    }

private:
    int fill(VipsRegion* region)
    {
        reader = std::this_thread::get_id();
        const VipsRect& area = region->valid;
        for (int y = area.top; y < area.top + area.height; ++y) {
            if (y >= damagedFrom) {
                vips_error("test", "damaged row %d", y);
                return -1;
            }
            auto* const row = region->data + std::ptrdiff_t{y - area.top} * region->bpl;
            std::memset(row, y % 251, static_cast<std::size_t>(area.width));
            rowsRead = y + 1;
        }
        return 0;
    }
};

class RowsAhead : public ::testing::Test
{
protected:
    RowsAhead() { useProcessors(2); }
    ~RowsAhead() override { useProcessors(1); }

    // The source's rows through a maker that passes them on.
    static VipsImagePtr passedOn(VipsImage* source)
    {
        auto rows = streamedPicture(source, streamFormOf(source), readingAhead(source, passedRows(width)),
                                    std::make_shared<ReadOutcome>());
        return std::move(*rows);
    }
};

TEST_F(RowsAhead, AreThoseOfTheSource)
{
    Source source;
    const auto rows = passedOn(source.picture().get());
    int next = 0;
    const auto status = readRows(rows.get(), [&](int first, int count, const RowSpan& strip) -> Status {
        EXPECT_EQ(first, next);
        for (int y = 0; y < count; ++y) {
            const std::uint8_t* row = strip.first + y * strip.stride;
            EXPECT_EQ(row[0], (first + y) % 251);
            EXPECT_EQ(std::memcmp(row, row + 1, width - 1), 0);
        }
        next += count;
        return Done{};
    });
    EXPECT_TRUE(status);
    EXPECT_EQ(next, height);
    EXPECT_NE(source.reader.load(), std::this_thread::get_id());
}

TEST_F(RowsAhead, AreAFewStripsAtMost)
{
    Source source;
    const RowProvider rows = rowsAhead(source.picture().get());
    for (int top = 0; top < height; top += streamedRows) {
        ASSERT_TRUE(rows(top, std::min(streamedRows, height - top)));
        std::this_thread::sleep_for(std::chrono::milliseconds(2)); // the reader has time to go astray
        EXPECT_LE(source.rowsRead, top + 4 * streamedRows);
    }
}

TEST_F(RowsAhead, ComeInPartsOfAStripToo)
{
    Source source;
    const RowProvider rows = rowsAhead(source.picture().get());
    for (int y = 0; y < height; ++y) {
        const auto row = rows(y, 1);
        ASSERT_TRUE(row);
        EXPECT_EQ(row->first[0], y % 251);
    }
    EXPECT_FALSE(rows(0, 1)) << "it was given up";
    EXPECT_FALSE(rows(height, 1)) << "there is none";
    const RowProvider others = rowsAhead(source.picture().get());
    EXPECT_FALSE(others(streamedRows - 1, 2)) << "they are of two strips";
}

TEST_F(RowsAhead, AreGoodUpToTheStripThatIsDamaged)
{
    Source source{.damagedFrom = 500};
    const auto rows = passedOn(source.picture().get());
    int good = 0;
    const auto status = readRows(rows.get(), [&](int, int count, const RowSpan&) -> Status {
        good += count;
        return Done{};
    });
    ASSERT_FALSE(status);
    EXPECT_NE(status.error().description.find("damaged row"), std::string::npos)
        << status.error().description;
    EXPECT_EQ(good, 500 / streamedRows * streamedRows);
}

TEST_F(RowsAhead, AreLeftUnreadWhenNobodyWantsThemAnyMore)
{
    Source source;
    {
        const RowProvider rows = rowsAhead(source.picture().get());
        EXPECT_TRUE(rows(0, streamedRows));
    }
    EXPECT_LE(source.rowsRead, 4 * streamedRows);
}

TEST_F(RowsAhead, AreNotReadBeforeAnyIsWanted)
{
    Source source;
    passedOn(source.picture().get());
    EXPECT_EQ(source.rowsRead, 0);
}

TEST_F(RowsAhead, AreNotReadOfASmallPicture)
{
    EXPECT_FALSE(rowsAhead(test::pictureOf(test::corneredPicture(64, 48)).get()));
}

TEST_F(RowsAhead, AreNotReadOfAVeryWidePicture)
{
    ensureVipsReady();
    VipsImage* black = nullptr;
    ASSERT_EQ(vips_black(&black, 1'000'000, 10, nullptr), 0);
    EXPECT_FALSE(rowsAhead(VipsImagePtr(black).get()));
}

TEST_F(RowsAhead, AreReadByWhoeverWantsThemWhereProcessorsAreBusy)
{
    useProcessors(1);
    Source source;
    const auto rows = passedOn(source.picture().get());
    EXPECT_TRUE(readRows(rows.get(), [](int, int, const RowSpan&) -> Status { return Done{}; }));
    EXPECT_EQ(source.reader.load(), std::this_thread::get_id());
}

} // namespace
} // namespace lumora
