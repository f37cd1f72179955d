// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/image_source.h"

#include "pixels/decoding.h"
#include "pixels/drawing.h"
#include "system/file_descriptor.h"
#include "tests/platform/formats/written_pictures.h"

#include <gmock/gmock.h>

#include <sys/inotify.h>
#include <sys/stat.h>

#include <array>
#include <cstring>
#include <utility>

namespace lumora {
namespace {

// Counts how often a file is opened and closed, by whatever name.
class OpenCounter
{
public:
    explicit OpenCounter(const std::filesystem::path& file)
        : m_events(inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
    {
        // Equal events that follow one another are reported as one: the readings between keep them apart.
        EXPECT_GE(inotify_add_watch(m_events.get(), file.c_str(), IN_OPEN | IN_ACCESS | IN_CLOSE), 0);
    }

    // Of the events so far.
    void expect(int openings, int closings)
    {
        std::pair<int, int> found;
        alignas(inotify_event) std::array<char, 4096> events{};
        for (ssize_t size = 0; (size = read(m_events.get(), events.data(), events.size())) > 0;) {
            for (ssize_t at = 0; at < size;) {
                inotify_event event{};
                std::memcpy(&event, events.data() + at, sizeof event);
                found.first += (event.mask & IN_OPEN) != 0 ? 1 : 0;
                found.second += (event.mask & IN_CLOSE) != 0 ? 1 : 0;
                at += static_cast<ssize_t>(sizeof event + event.len);
            }
        }
        EXPECT_EQ(found, std::pair(openings, closings));
    }

private:
    FileDescriptor m_events;
};

struct File
{
    const char* name;
    const char* type;
};

void PrintTo(const File& file, std::ostream* out)
{
    *out << file.name;
}

class OpenedFile : public test::WrittenPictures, public testing::WithParamInterface<File>
{
protected:
    std::filesystem::path path() const { return m_folder / GetParam().name; }

    // The name leads to a pipe from now on, which nobody writes to.
    void swapForAPipe() const
    {
        ASSERT_EQ(mkfifo((m_folder / "pipe").c_str(), 0600), 0);
        std::filesystem::rename(m_folder / "pipe", path());
    }

    void SetUp() override
    {
        if (GetParam().type == std::string("com.microsoft.bmp")) {
            std::filesystem::rename(written(redrawn(m_pixels), "com.microsoft.bmp"), path());
        } else {
            test::save(path(), m_pixels);
        }
    }

    const test::Pixels m_pixels = test::corneredPicture(64, 48);
};

TEST_P(OpenedFile, IsOpenedOnceForEverything)
{
    OpenCounter counter(path());
    {
        const auto source = ImageSource::open(path());
        ASSERT_TRUE(source);
        ASSERT_TRUE(decode(source->image()));
    }
    counter.expect(1, 1);
}

TEST_P(OpenedFile, StaysTheFileThatItWasWhenItsNameLeadsToAPipe)
{
    const auto expected = test::load(written(asStored(path()), "public.png"));
    const auto source = ImageSource::open(path());
    ASSERT_TRUE(source);
    swapForAPipe();
    const auto image = decode(source->image());
    ASSERT_TRUE(image);
    EXPECT_EQ(test::load(written(*image, "public.png")).bytes, expected.bytes);
}

TEST_P(OpenedFile, IsKnownByItsContentUnderAnyName)
{
    std::filesystem::rename(path(), m_folder / "a.other");
    const auto source = ImageSource::open(m_folder / "a.other");
    ASSERT_TRUE(source);
    EXPECT_EQ(source->typeIdentifier(), GetParam().type);
    EXPECT_EQ(source->image().width(), 64);
    EXPECT_EQ(source->image().height(), 48);
    EXPECT_FALSE(source->image().isInMemory());
}

INSTANTIATE_TEST_SUITE_P(, OpenedFile,
                         testing::Values(File{"a.jpg", "public.jpeg"}, File{"a.png", "public.png"},
                                         File{"a.gif", "com.compuserve.gif"}, File{"a.tif", "public.tiff"},
                                         File{"a.bmp", "com.microsoft.bmp"}, File{"a.heic", "public.heic"},
                                         File{"a.webp", "org.webmproject.webp"}),
                         [](const auto& test) { return std::string(test.param.name).substr(2); });

class Source : public test::WrittenPictures
{
protected:
    static std::string failureOf(const std::filesystem::path& path)
    {
        const auto source = ImageSource::open(path);
        return source ? "opened" : source.error().description;
    }
};

// A smaller picture of a JPEG comes from a second pass over the file.
TEST_F(Source, IsNotOpenedAgainForASmallerPicture)
{
    test::save(m_folder / "a.jpg", test::corneredPicture(1600, 1200));
    OpenCounter counter(m_folder / "a.jpg");
    const auto source = ImageSource::open(m_folder / "a.jpg");
    ASSERT_TRUE(source);
    test::save(m_folder / "b.jpg", test::uniformPicture(1600, 1200, {0, 0, 0}));
    std::filesystem::rename(m_folder / "b.jpg", m_folder / "a.jpg");
    const auto small = draw(source->image(), {160, 120, ColorSpace::deviceRGB});
    ASSERT_TRUE(small);
    counter.expect(1, 0);
    EXPECT_NEAR(test::load(written(*small, "public.png")).at(10, 10)[0], 235, 12);
}

TEST_F(Source, SpeaksOfThePictureAsStored)
{
    test::save(m_folder / "a.jpg", test::corneredPicture(64, 48), {.orientation = 6, .profile = "p3"});
    const auto source = ImageSource::open(m_folder / "a.jpg");
    ASSERT_TRUE(source);
    EXPECT_EQ(source->orientation(), 6);
    EXPECT_EQ(source->metadata().orientation, 6);
    EXPECT_EQ(source->image().width(), 64);
    EXPECT_EQ(source->metadata().colorModel, "RGB");
    EXPECT_FALSE(source->metadata().profileName.empty());

    test::save(m_folder / "b.jpg", test::uniformPicture(8, 8, {10, 20, 30, 40}),
               {.profile = "cmyk", .inkToCmyk = true});
    EXPECT_EQ(ImageSource::open(m_folder / "b.jpg")->metadata().colorModel, "CMYK");
    test::save(m_folder / "c.png", test::uniformPicture(8, 8, {10}));
    const auto gray = ImageSource::open(m_folder / "c.png");
    ASSERT_TRUE(gray);
    EXPECT_EQ(gray->metadata().colorModel, "Gray");
    EXPECT_EQ(gray->metadata().profileName, "");
    EXPECT_EQ(gray->orientation(), 1);
}

TEST_F(Source, RefusesWhatIsNoFileOfAPicture)
{
    EXPECT_THAT(failureOf(m_folder / "missing.png"), testing::HasSubstr("No such file"));
    std::filesystem::create_directory(m_folder / "folder.png");
    EXPECT_NE(failureOf(m_folder / "folder.png"), "opened");
    ASSERT_EQ(mkfifo((m_folder / "pipe.png").c_str(), 0600), 0);
    EXPECT_NE(failureOf(m_folder / "pipe.png"), "opened");
    test::writeText(m_folder / "empty.png", "");
    EXPECT_EQ(failureOf(m_folder / "empty.png"), "not a readable image type");
    test::writeText(m_folder / "words.png", "No picture at all.");
    EXPECT_EQ(failureOf(m_folder / "words.png"), "not a readable image type");
}

TEST_F(Source, RefusesMoreThanThreeHundredMegapixels)
{
    test::writeText(m_folder / "over.png", test::pngClaiming(30'000, 10'001));
    EXPECT_EQ(failureOf(m_folder / "over.png"), "more than 300 megapixels");
    test::writeText(m_folder / "most.png", test::pngClaiming(30'000, 10'000));
    EXPECT_EQ(failureOf(m_folder / "most.png"), "opened");
}

} // namespace
} // namespace lumora
