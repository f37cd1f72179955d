// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures as a viewer asks for them.
#include "engine/local/local_picture_work.h"
#include "engine/worker/worker_messages.h"
#include "formats/rgba_writer.h"
#include "system/mapped_file.h"
#include "system/memory_file.h"
#include "system/regular_file.h"
#include "tests/engine/optimizer_test.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace lumora {
namespace {

using ImageOptimizer::LocalPictureWork;
using ImageOptimizer::PictureSize;
using ImageOptimizer::WorkError;

using Pixel = std::array<int, 4>;

std::size_t bytesOf(int pixels)
{
    return static_cast<std::size_t>(pixels) * 4;
}

class ShownPictures : public testing::Test
{
protected:
    std::filesystem::path picture(const std::string& name, const test::Pixels& pixels,
                                  const test::SaveOptions& options = {}) const
    {
        test::save(m_folder / name, pixels, options);
        return m_folder / name;
    }

    // Opens the file and draws the part; empty when that fails.
    std::vector<std::byte> draw(const std::filesystem::path& file, const PicturePart& part)
    {
        LocalPictureWork work;
        const auto input = openRegularFile(file);
        const auto settings = ImageOptimizer::PixelSettings{}.settings();
        const auto head = work.open(input->get(), settings);
        if (!head) m_error = head.error().kind;
        if (!head) return {};
        if (const auto look = work.look()) m_size = look->size;
        const auto output = makeMemoryFile(bytesOf(part.columns * part.rows));
        const auto drawn = work.drawPart(output->get(), part);
        if (!drawn) m_error = drawn.error().kind;
        if (!drawn) return {};
        const auto rows = MappedFile::map(output->get());
        return {rows->bytes().begin(), rows->bytes().end()};
    }

    static Pixel pixel(const std::vector<std::byte>& rows, const PicturePart& part, int x, int y)
    {
        Pixel values{};
        const std::size_t at = bytesOf(y * part.columns + x);
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = std::to_integer<int>(rows.at(at + i));
        return values;
    }

    test::TemporaryDirectory m_folder;
    PictureSize m_size;
    std::optional<WorkError::Kind> m_error;
};

TEST_F(ShownPictures, StandUpright)
{
    const auto file = picture("a.jpg", test::corneredPicture(60, 40), {.orientation = 6});
    const PicturePart part{20, 30, 0, 0, 20, 30};
    const auto rows = draw(file, part);
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(m_size, PictureSize(40, 60));
    // Turned clockwise, red is in the corner at the right.
    EXPECT_GT(pixel(rows, part, 19, 0)[0], 150);
    EXPECT_LT(pixel(rows, part, 19, 0)[2], 100);
}

TEST_F(ShownPictures, AreInSrgbWithTheirTransparency)
{
    const PicturePart whole{4, 4, 0, 0, 4, 4};
    const auto wide =
        draw(picture("p3.png", test::uniformPicture(4, 4, {0, 255, 0}), {.profile = "p3"}), whole);
    ASSERT_FALSE(wide.empty());
    EXPECT_EQ(pixel(wide, whole, 1, 1), (Pixel{0, 255, 0, 255}));
    const auto clear = draw(picture("a.png",
                                    [] {
                                        auto pixels = test::uniformPicture(4, 4, {200, 100, 50, 128});
                                        pixels.bands = 4;
                                        return pixels;
                                    }()),
                            whole);
    ASSERT_FALSE(clear.empty());
    EXPECT_EQ(pixel(clear, whole, 1, 1), (Pixel{100, 50, 25, 128}));
}

TEST_F(ShownPictures, GiveAPartAsItIsInTheWhole)
{
    const auto file = picture("a.png", test::corneredPicture(300, 200));
    const PicturePart whole{150, 100, 0, 0, 150, 100};
    const PicturePart part{150, 100, 31, 70, 40, 30};
    const auto all = draw(file, whole);
    const auto some = draw(file, part);
    ASSERT_FALSE(all.empty() || some.empty());
    for (const auto& [x, y] : {std::pair{0, 0}, {39, 0}, {0, 29}, {39, 29}, {20, 5}})
        EXPECT_EQ(pixel(some, part, x, y), pixel(all, whole, 31 + x, 70 + y)) << x << ' ' << y;
}

TEST_F(ShownPictures, RefuseWhatIsNoPartOfThem)
{
    const auto file = picture("a.png", test::corneredPicture(30, 20));
    for (const PicturePart& part : {PicturePart{60, 20, 0, 0, 1, 1},
                                    {30, 20, 30, 0, 1, 1},
                                    {30, 20, -1, 0, 1, 1},
                                    {30, 20, 0, 19, 1, 2},
                                    {0, 20, 0, 0, 1, 1}}) {
        m_error.reset();
        EXPECT_TRUE(draw(file, part).empty());
        EXPECT_EQ(m_error, WorkError::Kind::unreadable);
    }
}

TEST_F(ShownPictures, FailWhereTheyAreDamaged)
{
    const auto file = picture("a.png", test::corneredPicture(300, 200));
    const std::string bytes = test::readBytes(file);
    test::writeText(file, bytes.substr(0, bytes.size() / 2));
    EXPECT_TRUE(draw(file, {300, 200, 0, 0, 300, 200}).empty());
    EXPECT_EQ(m_error, WorkError::Kind::unreadable);
}

TEST(ShownPictureMessages, CarryPartsAndLooks)
{
    using namespace ImageOptimizer;
    const WorkerRequest request{.action = WorkerAction::drawPart, .part = {1000, 700, 1, 2, 300, 400}};
    EXPECT_EQ(requestIn(messageOf(request)), request);
    WorkerReply reply;
    reply.profile = "Display\nP3";
    const auto got = replyIn(messageOf(reply));
    ASSERT_TRUE(got);
    EXPECT_EQ(got->profile, "Display P3");
}

} // namespace
} // namespace lumora
