// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/cli/cli_fixture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lumora::cli::test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Pair;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(CliTest, writesBesideTheOriginalByDefault)
{
    photograph("a.png");
    const Outcome outcome = run({"a.png"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.complaints, "");
    EXPECT_THAT(outcome.lines(),
                ElementsAre(MatchesRegex("a\\.png: .* -> .* \\| saved .* \\(.*%\\) \\| Saved .*"),
                            MatchesRegex("Files 1/1 \\| Total Saved .* \\| Reduction .*%")));
    EXPECT_TRUE(fs::exists(in("a.webp")));
    fs::remove(in("a.webp"));
}

TEST_F(CliTest, optimizesTheImagesOfAFolderIntoAFolderThatItMakes)
{
    photograph("a.jpg");
    fs::create_directory(in("album"));
    fs::rename(photograph("b.jpg"), in("album/b.jpg"));
    writeFile(in("notes.txt"), "no image");
    const Outcome outcome = run({"--output-dir", out("deep/er"), in("")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(fs::exists(out("deep/er/a.webp")));
    EXPECT_TRUE(fs::exists(out("deep/er/b.webp")));
    EXPECT_THAT(outcome.results, HasSubstr("Files 2/2"));
}

TEST_F(CliTest, jsonHasOneObjectALineAndNothingElse)
{
    photograph("a.jpg");
    writeFile(in("b.jpg"), "");
    const Outcome outcome = runInto({"--json", "a.jpg", "b.jpg"});
    EXPECT_EQ(outcome.status, 1);
    ASSERT_EQ(outcome.objects().size(), 2u);
    for (const auto& object : outcome.objects()) {
        EXPECT_EQ(object.size(), 6u);
        if (object.at("source") == "b.jpg") {
            EXPECT_THAT(object, IsUnreadable());
            continue;
        }
        EXPECT_EQ(object.at("source"), "a.jpg");
        EXPECT_EQ(object.at("output"), out("a.webp").string());
        EXPECT_EQ(object.at("originalBytes"), fs::file_size(in("a.jpg")));
        EXPECT_EQ(object.at("outputBytes"), fs::file_size(out("a.webp")));
        EXPECT_EQ(object.at("success"), true);
    }
}

TEST_F(CliTest, quietShowsFailuresOnly)
{
    photograph("a.jpg");
    EXPECT_EQ(runInto({"--quiet", "a.jpg"}).results, "");
    writeFile(in("b.jpg"), "");
    EXPECT_EQ(runInto({"--quiet", "a.jpg", "b.jpg"}).results, "b.jpg: The image could not be read.\n");
}

struct FormatCase
{
    const char* format;
    const char* output;
    std::string magic;
};

void PrintTo(const FormatCase& c, std::ostream* out)
{
    *out << c.format;
}

class CliFormat : public CliTest, public testing::WithParamInterface<FormatCase>
{
};

TEST_P(CliFormat, writesTheFormatThatWasAskedFor)
{
    photograph("a.jpg");
    EXPECT_EQ(runInto({"-f", GetParam().format, "a.jpg"}).status, 0);
    ASSERT_THAT(outputs(), ElementsAre(GetParam().output));
    EXPECT_THAT(readFile(out(GetParam().output)).substr(0, 16), HasSubstr(GetParam().magic));
}

INSTANTIATE_TEST_SUITE_P(All, CliFormat,
                         testing::Values(FormatCase{"webp", "a.webp", "WEBPVP8 "},
                                         FormatCase{"webpLossless", "a.webp", "WEBPVP8L"},
                                         FormatCase{"jpeg", "a.jpg", "\xff\xd8\xff"},
                                         FormatCase{"png", "a.png", "PNG"},
                                         FormatCase{"heic", "a.heic", "ftypheic"},
                                         FormatCase{"original", "a.jpeg", "\xff\xd8\xff"}));

TEST_F(CliTest, dryRunSaysWhatItWouldDoAndTouchesNothing)
{
    photograph("a.jpg");
    photograph("b.jpg");
    writeFile(in("broken.jpg"), "");
    const fs::path target = out("new");
    const Outcome outcome = run({"--dry-run", "-o", target, "--prefix", "p-", "a.jpg", "broken.jpg"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.lines(),
                ElementsAre("a.jpg -> " + (target / "p-a.webp").string() + ": Would be written",
                            "broken.jpg: The image could not be read."));
    EXPECT_FALSE(fs::exists(target));

    writeFile(out("a.webp"), "old");
    EXPECT_THAT(runInto({"--dry-run", "a.jpg"}).results, EndsWith(": Would be replaced\n"));
    EXPECT_EQ(runInto({"--dry-run", "--existing", "skip", "a.jpg"}).status, 1);
    EXPECT_EQ(readFile(out("a.webp")), "old");
    EXPECT_EQ(runInto({"--dry-run", "--json", "b.jpg"}).objects().at(0).at("output"), out("b.webp").string());
}

TEST_F(CliTest, replacesAnExistingOutputUnlessToldOtherwise)
{
    photograph("a.jpg");
    writeFile(out("a.webp"), "old");
    for (const char* keeping : {"skip", "ask"}) {
        const Outcome outcome = runInto({"--existing", keeping, "a.jpg"});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.results, StartsWith("a.jpg: Skipped because the output file already exists.\n"));
        EXPECT_EQ(readFile(out("a.webp")), "old");
    }
    EXPECT_EQ(runInto({"a.jpg"}).status, 0);
    EXPECT_NE(readFile(out("a.webp")), "old");
}

TEST_F(CliTest, aFolderInsideThatCannotBeReadIsNamedAndIsAFailure)
{
    photograph("a.jpg");
    // Deeper than a path may be, which no user can read, not even the superuser.
    int folder = ::open(this->folder("deep").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int depth = 0; depth < 20; ++depth) {
        const std::string name(250, 'd');
        ASSERT_EQ(::mkdirat(folder, name.c_str(), 0700), 0);
        const int inner = ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ::close(folder);
        folder = inner;
    }
    ::close(folder);
    for (const char* mode : {"--dry-run", "--json"}) {
        const Outcome outcome = runInto({mode, "a.jpg", beside("deep")});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.lines(), SizeIs(1));
        EXPECT_THAT(outcome.complaints,
                    AllOf(HasSubstr("deep: there is no supported image file in this folder\n"),
                          EndsWith("File name too long\n")));
    }
}

TEST_F(CliTest, outputsWithOneNameAreAllKeptAndTheOriginalsOfAllAreThere)
{
    for (const char* name : {"a.jpg", "a.png", "a.tiff"})
        photograph(name);
    const Outcome dry = run({"--json", "--dry-run", "-f", "jpeg", "a.jpg", "a.png", "a.tiff"});
    const Outcome done = run({"--json", "-f", "jpeg", "-j", "3", "a.jpg", "a.png", "a.tiff"});
    EXPECT_EQ(done.status, 0) << done.results;
    const auto placesOf = [](const Outcome& outcome) {
        std::map<std::string, std::string> places;
        for (const auto& row : outcome.objects())
            places[row.at("source")] = row.at("output");
        return places;
    };
    EXPECT_THAT(placesOf(done),
                ElementsAre(Pair("a.jpg", EndsWith("a-optimized.jpg")), Pair("a.png", EndsWith("a 2.jpg")),
                            Pair("a.tiff", EndsWith("a 3.jpg"))));
    EXPECT_EQ(placesOf(dry), placesOf(done));
    for (const auto& [source, output] : placesOf(done))
        EXPECT_TRUE(fs::exists(in(output))) << output;
}

TEST_F(CliTest, foldersWithEqualNamesLoseNothingInOneOutputFolder)
{
    for (const char* camera : {"one", "two", "three"}) {
        fs::create_directories(in(camera));
        for (const char* name : {"IMG_1.jpg", "IMG_2.jpg"})
            photograph(fs::path(camera) / name);
    }
    EXPECT_EQ(runInto({"one", "two", "three"}).status, 0);
    EXPECT_THAT(outputs(), ElementsAre("IMG_1 2.webp", "IMG_1 3.webp", "IMG_1.webp", "IMG_2 2.webp",
                                       "IMG_2 3.webp", "IMG_2.webp"));
}

TEST_F(CliTest, touchesNoPreferencesAndCountsNothingUnlessAsked)
{
    photograph("a.jpg");
    EXPECT_EQ(runInto({"--no-history", "a.jpg"}).status, 0);
    EXPECT_TRUE(fs::is_empty(home()));
    EXPECT_EQ(runInto({"a.jpg"}).status, 0);
    for (const auto& entry : fs::directory_iterator(home() / "data" / "Lumora"))
        EXPECT_THAT(entry.path().filename(), StartsWith("history.sqlite"));
    EXPECT_EQ(runInto({"--record-stats", "a.jpg"}).status, 0);
    EXPECT_TRUE(fs::exists(home() / "data" / "Lumora" / "stats.json"));
    EXPECT_FALSE(fs::exists(home() / "config"));
}

TEST_F(CliTest, findingNoImageIsAFailureWithAComplaint)
{
    writeFile(in("notes.txt"), "no image");
    const Outcome outcome = runInto({"notes.txt"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.results, "");
    EXPECT_EQ(outcome.complaints, "lumora-cli: notes.txt: this is not a supported kind of image file\n"
                                  "lumora-cli: No supported image files found\n");
}

TEST_F(CliTest, eachNamedPathWithoutAnImageIsNamedAndIsAFailure)
{
    fs::create_directories(in("good/inside"));
    fs::create_directories(in("empty"));
    photograph("good/inside/a.jpg");
    writeFile(in("empty/notes.txt"), "no image");
    writeFile(in("scan.pdf"), "no image");
    for (const char* mode : {"--json", "--dry-run"}) {
        const Outcome outcome = runInto({mode, "good", "empty", "./good/inside", "scan.pdf"});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.lines(), SizeIs(1));
        EXPECT_EQ(outcome.complaints, "lumora-cli: empty: there is no supported image file in this folder\n"
                                      "lumora-cli: scan.pdf: this is not a supported kind of image file\n");
    }
}

TEST_F(CliTest, aMissingPathIsNamedAndTheOthersAreDone)
{
    photograph("a.jpg");
    const Outcome outcome = runInto({"nowhere", "a.jpg", "gone.jpg"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.complaints, "lumora-cli: nowhere: there is no such file or folder\n");
    EXPECT_THAT(outcome.results,
                AllOf(HasSubstr("gone.jpg: The image could not be read.\n"), HasSubstr("Files 1/2")));
    EXPECT_THAT(outputs(), ElementsAre("a.webp"));
}

TEST_F(CliTest, wrongUsageGoesToStandardErrorWithStatus2)
{
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"-q", "0", "a.jpg"}, {"--suffix", "a/b", "a.jpg"}, {"--what"}}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.results, "");
        EXPECT_THAT(outcome.complaints, MatchesRegex("lumora-cli: .*; see lumora-cli --help\n"));
    }
}

TEST_F(CliTest, helpAndVersionSucceedWithoutAPath)
{
    const Outcome help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.results, StartsWith("Usage: lumora-cli "));
    const Outcome version = run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_THAT(version.results, AllOf(StartsWith("lumora-cli " LUMORA_VERSION " ("), HasSubstr("libvips 8."),
                                       HasSubstr("Qt 6.")));
}

// A stranger's file meets a decoder in the worker only, and short commands are over before one is loaded.
TEST_F(CliTest, hasNoCodecInItsOwnProcess)
{
    m_launch.environment["LD_TRACE_LOADED_OBJECTS"] = "1"; // the linker then lists them, and that is all
    const Outcome libraries = run({"--version"});
    EXPECT_THAT(libraries.results, HasSubstr("libQt6Core"));
    for (const char* codec : {"libvips", "libheif", "libjpeg", "libtiff", "libexiv2", "liblcms", "libpng"})
        EXPECT_THAT(libraries.results, Not(HasSubstr(codec)));
}

TEST_F(CliTest, hasNoPictureWithoutAWorker)
{
    photograph("a.jpg");
    m_launch.environment["LUMORA_WORKER_PATH"] = "/bin/false";
    const Outcome outcome = runInto({"a.jpg"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.results, HasSubstr("The worker could not be started"));
    EXPECT_EQ(outputs(), std::vector<std::string>{});
}

TEST_F(CliTest, anOutputFolderThatCannotBeMadeEndsTheRun)
{
    photograph("a.jpg");
    writeFile(out("taken"), "a file");
    const Outcome outcome = run({"-o", out("taken/sub"), "a.jpg"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.complaints, HasSubstr("cannot make the folder"));
    EXPECT_EQ(outcome.results, "");
}

TEST_F(CliTest, resultsThatCannotBeWrittenAreAFailure)
{
    photograph("a.jpg");
    const auto process = [&] {
        Launch launch = m_launch;
        launch.results = "/dev/full";
        launch.arguments = {"-o", out(""), "a.jpg"};
        return std::make_unique<CliProcess>(launch);
    }();
    EXPECT_EQ(process->wait(), 1);
    EXPECT_THAT(process->complaints(), HasSubstr("cannot write the results: No space left on device"));
}

} // namespace
} // namespace lumora::cli::test
