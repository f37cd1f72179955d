// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a dry run says is what the same run without --dry-run does.
#include "tests/cli/cli_fixture.h"

namespace lumora::cli::test {
namespace {

namespace fs = std::filesystem;

const std::string longStem(250, 'x');
const char* const skipped = "Skipped because the output file already exists.";

// Where the output's name is decided: an input and the arguments before it. "IN", "OUT", "LINK" (to IN) and
// "NEW" (not there yet) at the start of an argument stand for folders.
struct NamingCase
{
    const char* name;
    std::string input;
    std::vector<std::string> arguments;
    std::string output;           // with the same folder words; empty when the run fails
    std::string standsThere = {}; // a file that the run meets
    std::string failure = {};
};

void PrintTo(const NamingCase& c, std::ostream* out)
{
    *out << c.name;
}

class DryRun : public CliTest, public testing::WithParamInterface<NamingCase>
{
protected:
    DryRun() { fs::create_directory_symlink(in(""), beside("link")); }

    std::string real(const std::string& text) const
    {
        const std::map<std::string, fs::path> folders{
            {"IN", beside("in")}, {"OUT", beside("out")}, {"LINK", beside("link")}, {"NEW", out("new/er")}};
        const std::string word = text.substr(0, text.find('/'));
        return folders.contains(word) ? folders.at(word).native() + text.substr(word.size()) : text;
    }

    nlohmann::json row(bool dry)
    {
        std::vector<std::string> arguments{"--json"};
        if (dry) arguments.emplace_back("--dry-run");
        for (const std::string& argument : GetParam().arguments)
            arguments.push_back(real(argument));
        arguments.push_back(GetParam().input);
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, GetParam().failure.empty() ? 0 : 1) << outcome.complaints;
        return outcome.objects().at(0);
    }

    std::size_t filesThere() const
    {
        const fs::recursive_directory_iterator first(beside(""));
        return static_cast<std::size_t>(std::distance(first, {}));
    }
};

TEST_P(DryRun, namesTheOutputAndTheVerdictOfTheRealRun)
{
    const NamingCase& c = GetParam();
    photograph(c.input);
    if (!c.standsThere.empty()) writeFile(real(c.standsThere), "old");

    const std::size_t before = filesThere();
    const auto dry = row(true);
    EXPECT_EQ(filesThere(), before + 1) << "more than the file of results was made";
    EXPECT_TRUE(c.standsThere.empty() || readFile(real(c.standsThere)) == "old");

    const auto done = row(false);
    EXPECT_EQ(dry.at("source"), done.at("source"));
    EXPECT_EQ(dry.at("originalBytes"), done.at("originalBytes"));
    EXPECT_EQ(dry.at("output"), done.at("output"));
    EXPECT_EQ(dry.at("success"), done.at("success"));
    if (!c.failure.empty()) {
        EXPECT_EQ(dry.at("message"), c.failure);
        EXPECT_EQ(done.at("message"), c.failure);
        EXPECT_TRUE(done.at("output").is_null());
        return;
    }
    EXPECT_EQ(dry.at("message"), c.standsThere.empty() ? "Would be written" : "Would be replaced");
    EXPECT_EQ(done.at("output"), real(c.output));
    EXPECT_GT(fs::file_size(in(real(c.output))), 100u);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DryRun,
    testing::Values(
        NamingCase{"OtherFormat", "a.png", {"-f", "jpeg"}, "a.jpg"},
        NamingCase{"SameNameSameFormat", "a.png", {"-f", "png"}, "a-optimized.png"},
        NamingCase{"Prefix", "a.png", {"-f", "png", "--prefix", "p-"}, "p-a.png"},
        NamingCase{"Suffix", "a.png", {"-f", "png", "--suffix", "-s"}, "a-s.png"},
        NamingCase{"LetterCaseOfTheExtension", "a.PNG", {"-f", "png"}, "a.png"},
        NamingCase{"OriginalFormatOntoItself", "a.jpeg", {"-f", "original"}, "a-optimized.jpeg"},
        NamingCase{"OriginalFormatOfAnotherSpelling", "a.jpg", {"-f", "original"}, "a.jpeg"},
        NamingCase{"SelectedFolder", "a.png", {"-f", "png", "-o", "OUT"}, "OUT/a.png"},
        NamingCase{"SelectedFolderToBeMade", "a.png", {"-o", "NEW"}, "NEW/a.webp"},
        NamingCase{"OwnFolder", "a.png", {"-f", "png", "-o", "IN"}, "IN/a-optimized.png"},
        NamingCase{"OwnFolderByDots", "a.png", {"-f", "png", "-o", "../in/."}, "../in/./a-optimized.png"},
        NamingCase{"LinkToTheOwnFolder", "a.png", {"-f", "png", "-o", "LINK"}, "LINK/a-optimized.png"},
        NamingCase{"LinkToTheOwnFolderOtherFormat", "a.png", {"-f", "jpeg", "-o", "LINK"}, "LINK/a.jpg"},
        NamingCase{"LongName", longStem + ".jpg", {}, longStem + ".webp"},
        NamingCase{"LongNameThatIsCut",
                   longStem + ".jpg",
                   {"--suffix", "-s"},
                   longStem.substr(0, 241) + "~2e9c9fa9.webp"},
        NamingCase{"ReplacesWhatStandsThere", "a.png", {"-o", "OUT"}, "OUT/a.webp", "OUT/a.webp"},
        NamingCase{
            "SkipsWhatStandsThere", "a.png", {"-o", "OUT", "--existing", "skip"}, "", "OUT/a.webp", skipped},
        NamingCase{"NobodyToAsk", "a.png", {"-o", "OUT", "--existing", "ask"}, "", "OUT/a.webp", skipped},
        NamingCase{"OriginalFormatThatCannotBeWritten",
                   "a.webp",
                   {"-f", "original", "-o", "OUT"},
                   "",
                   "",
                   "Original Format is not supported by this macOS ImageIO installation."}),
    [](const auto& instance) { return instance.param.name; });

TEST_F(CliTest, aDryRunForeseesThatAFolderStandsAtTheOutputsName)
{
    photograph("a.jpg");
    fs::create_directory(in("a.webp"));
    for (const bool dry : {true, false}) {
        const Outcome outcome = run({dry ? "--dry-run" : "--quiet", in("a.jpg").native()});
        EXPECT_EQ(outcome.status, 1) << dry;
        EXPECT_THAT(outcome.results, testing::HasSubstr("a.webp could not be written: Is a directory"))
            << dry;
    }
}

TEST_F(CliTest, aDryRunRefusesAnOutputFolderThatCannotBeMade)
{
    photograph("a.jpg");
    writeFile(out("taken"), "a file");
    const std::vector<std::string> arguments{"-o", out("taken/sub"), "a.jpg"};
    const Outcome done = run(arguments);
    auto dryArguments = arguments;
    dryArguments.insert(dryArguments.begin(), "--dry-run");
    const Outcome dry = run(dryArguments);
    EXPECT_EQ(dry.status, 1);
    EXPECT_EQ(dry.results, "");
    EXPECT_EQ(dry.complaints, done.complaints);
}

} // namespace
} // namespace lumora::cli::test
