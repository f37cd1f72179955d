// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/cli/cli_fixture.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/sample_images.h"

#include "samples/pictures.h"

#include <sys/stat.h>

#include <random>

namespace lumora::cli::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

struct Content
{
    const char* name;
    std::string bytes;
};

void PrintTo(const Content& c, std::ostream* out)
{
    *out << c.name;
}

class CliBadContent : public CliTest, public testing::WithParamInterface<Content>
{
};

TEST_P(CliBadContent, isOneUnreadableRow)
{
    writeFile(in(GetParam().name), GetParam().bytes);
    const Outcome outcome = runInto({"--json", GetParam().name});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.objects(), ElementsAre(IsUnreadable()));
    EXPECT_THAT(outputs(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Table, CliBadContent,
    testing::Values(
        Content{"empty.jpg", ""}, Content{"text.jpg", "This is no picture.\n"},
        Content{"pdf.png", "%PDF-1.4\n1 0 obj<</Type/Catalog>>endobj\ntrailer<</Root 1 0 R>>\n%%EOF\n"},
        Content{"svg.png", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect width='9' "
                           "height='9'/></svg>"},
        Content{"exr.png", std::string("\x76\x2f\x31\x01\x02\0\0\0channels\0", 17)},
        Content{"script.png", "#!/bin/sh\ntouch /tmp/run\n"},
        Content{"mvg.png", "push graphic-context\nimage over 0,0 9,9 'x'\n"},
        Content{"ppm.png", std::string("P6\n1 1\n255\n\0\0\0", 14)},
        Content{"zeros.webp", std::string(4096, '\0')}, Content{"header.png", "\x89PNG\r\n\x1a\n"},
        Content{"header.jpg", "\xff\xd8\xff\xe0"}));

class CliDamagedFile : public CliTest, public testing::WithParamInterface<const char*>
{
protected:
    std::string wholeFile() const
    {
        const fs::path file = in(std::string("whole.") + GetParam());
        const auto picture = lumora::test::corneredPicture(160, 120);
        if (std::string(GetParam()) == "bmp")
            writeFile(file, bmpOf(picture));
        else
            lumora::test::save(file, picture);
        std::string bytes = readFile(file);
        fs::remove(file);
        return bytes;
    }

    static std::string bmpOf(const lumora::test::Pixels& picture)
    {
        const auto little = [](std::uint64_t value, int bytes) {
            std::string text;
            for (int i = 0; i < bytes; ++i)
                text += static_cast<char>(value >> (8 * i) & 0xFFu);
            return text;
        };
        const auto width = static_cast<std::uint32_t>(picture.width);
        const auto height = static_cast<std::uint32_t>(picture.height);
        const std::uint32_t size = width * height * 3; // 160 pixels a row need no padding
        std::string file = "BM" + little(54 + size, 4) + little(0, 4) + little(54, 4) + little(40, 4) +
                           little(width, 4) + little(height, 4) + little(1, 2) + little(24, 2) +
                           little(0, 4) + little(size, 4) + little(2835, 4) + little(2835, 4) + little(0, 8);
        file.append(reinterpret_cast<const char*>(picture.bytes.data()), size);
        return file;
    }
};

TEST_P(CliDamagedFile, truncatedIsUnreadable)
{
    const std::string bytes = wholeFile();
    const std::string name = std::string("cut.") + GetParam();
    writeFile(in(name), bytes.substr(0, bytes.size() * 6 / 10));
    const Outcome outcome = runInto({"--json", name});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.objects(), ElementsAre(IsUnreadable()));
    EXPECT_THAT(outputs(), IsEmpty());
}

TEST_P(CliDamagedFile, withFlippedBitsIsUnreadableOrAWholeOutput)
{
    const std::string bytes = wholeFile();
    std::mt19937 random(7);
    std::vector<std::string> arguments{"--json", "-f", "png"};
    constexpr int copies = 40;
    for (int copy = 0; copy < copies; ++copy) {
        std::string damaged = bytes;
        for (int flip = 0; flip <= copy % 4; ++flip) {
            char& byte = damaged[random() % damaged.size()];
            byte = static_cast<char>(byte ^ static_cast<char>(1u << random() % 8));
        }
        arguments.push_back("flip" + std::to_string(copy) + "." + GetParam());
        writeFile(in(arguments.back()), damaged);
    }
    const Outcome outcome = runInto(arguments);
    ASSERT_EQ(outcome.objects().size(), static_cast<std::size_t>(copies)) << outcome.complaints;
    std::size_t written = 0;
    for (const auto& object : outcome.objects()) {
        if (!object.at("success")) {
            EXPECT_THAT(object, IsUnreadable());
            continue;
        }
        ++written;
        EXPECT_NO_THROW(lumora::test::load(object.at("output").get<std::string>()));
    }
    EXPECT_EQ(outputs().size(), written);
    EXPECT_EQ(outcome.status, written == copies ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Formats, CliDamagedFile,
                         testing::Values("jpg", "png", "gif", "tif", "bmp", "heic", "webp"));

TEST_F(CliTest, aPictureOfTooManyPixelsIsUnreadable)
{
    samples::writeOneColour(in("huge.png[bitdepth=1,compression=1]"), {60000, 60000});
    ASSERT_TRUE(fs::exists(in("huge.png")));
    const Outcome outcome = runInto({"--json", "huge.png"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.objects(), ElementsAre(IsUnreadable()));
}

TEST_F(CliTest, aPictureBeyondTheEncodersLimitFailsInTheEncodersWords)
{
    samples::writeOneColour(in("wide.png"), {16400, 4});
    const Outcome outcome = runInto({"--json", "--resize", "none", "wide.png"});
    EXPECT_EQ(outcome.status, 1);
    ASSERT_EQ(outcome.objects().size(), 1u);
    const auto row = outcome.objects().front();
    EXPECT_THAT(row.at("message").get<std::string>(), StartsWith("Could not finish writing wide.webp: "));
    EXPECT_GT(row.at("message").get<std::string>().size(),
              std::string("Could not finish writing wide.webp: ").size());
    EXPECT_THAT(outputs(), IsEmpty());
}

TEST_F(CliTest, aFolderWithAnImagesNameIsOneUnreadableRow)
{
    fs::create_directory(in("album.jpg"));
    const Outcome outcome = runInto({"--json", "album.jpg"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.objects(), ElementsAre(IsUnreadable()));
}

TEST_F(CliTest, whatIsNoRegularFileIsUnreadableAndNeverWaitedFor)
{
    fs::create_symlink("loop.jpg", in("loop.jpg"));
    fs::create_symlink("nowhere", in("dangling.jpg"));
    ASSERT_EQ(mkfifo(in("pipe.jpg").c_str(), 0600), 0);
    const Outcome outcome = runInto({"--json", "loop.jpg", "dangling.jpg", "pipe.jpg"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.objects(), ElementsAre(IsUnreadable(), IsUnreadable(), IsUnreadable()));
}

class CliWithoutRoot : public CliTest
{
protected:
    CliWithoutRoot()
    {
        // The build may lie where nobody else may look.
        useCopyOfProgram();
        m_launch.environment["LUMORA_CWEBP_PATH"] = LUMORA_CWEBP;
        m_launch.asNobody = true;
    }
};

TEST_F(CliWithoutRoot, aFileThatMayNotBeReadIsUnreadable)
{
    // Outside the folder of originals: their comparison could not read it either.
    const fs::path secret = folder("elsewhere") / "secret.jpg";
    fs::rename(photograph("secret.jpg"), secret);
    fs::permissions(secret, fs::perms::none);
    const Outcome outcome = runInto({"--json", secret});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.objects(), ElementsAre(IsUnreadable()));
}

TEST_F(CliWithoutRoot, aFolderThatMayNotBeWrittenFailsEachFile)
{
    photograph("a.jpg");
    fs::permissions(out(""), fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read |
                                 fs::perms::others_exec);
    for (const char* format : {"webp", "jpeg", "png", "heic"}) {
        const Outcome outcome = runInto({"--json", "-f", format, "a.jpg"});
        EXPECT_EQ(outcome.status, 1);
        ASSERT_EQ(outcome.objects().size(), 1u);
        EXPECT_THAT(outcome.objects()[0].at("message").get<std::string>(), StartsWith("Could not "))
            << format;
    }
    EXPECT_THAT(outputs(), IsEmpty());
}

TEST_F(CliTest, aFullDiskFailsEachFileAndLeavesNoPiece)
{
    photograph("a.jpg", 800, 600);
    m_launch.largestFile = 3000;
    for (const char* format : {"webp", "jpeg", "png", "heic"}) {
        const Outcome outcome = runInto({"--json", "-f", format, "a.jpg"});
        EXPECT_EQ(outcome.status, 1);
        ASSERT_EQ(outcome.objects().size(), 1u);
        EXPECT_THAT(outcome.objects()[0].at("message").get<std::string>(), StartsWith("Could not "))
            << format;
        EXPECT_THAT(outputs(), IsEmpty()) << format;
    }
}

TEST_F(CliTest, aLimitOnTheSizeOfFilesIsAFailedWriteAndLeavesNothing)
{
    photograph("a.jpg");
    for (const char* format : {"jpeg", "png", "webp"}) {
        const lumora::test::FileSizeLimit limit(1000);
        std::signal(SIGXFSZ, SIG_DFL); // as a shell leaves it to the program
        const Outcome outcome = runInto({"--format", format, "a.jpg"});
        EXPECT_EQ(outcome.status, 1) << format;
        EXPECT_FALSE(fs::exists(out("")) && !fs::is_empty(out(""))) << format;
    }
}

} // namespace
} // namespace lumora::cli::test
