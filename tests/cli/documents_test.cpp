// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The man page and the completions say what the table of options says.
#include "cli/documents/completions.h"
#include "cli/documents/manual.h"
#include "cli/options.h"

#include "tests/support/files.h"

#include <gmock/gmock.h>

#include <regex>
#include <set>

namespace lumora::cli {
namespace {

using Names = std::set<std::string>;

Names tableNames()
{
    Names names;
    for (const Option& option : options()) {
        names.insert("--" + std::string(option.name));
        if (!option.negation.empty()) names.insert("--no-" + std::string(option.name));
        if (option.letter) names.insert({'-', option.letter});
    }
    return names;
}

Names matches(const std::string& text, const std::string& pattern, const std::string& before = "")
{
    Names names;
    const std::regex expression(pattern);
    for (std::sregex_iterator i(text.begin(), text.end(), expression), end; i != end; ++i)
        names.insert(before + (*i)[1].str());
    return names;
}

std::string document(const std::string& name)
{
    return test::readFile(std::filesystem::path(LUMORA_SOURCE_DIR) / name);
}

void expectValues(const std::string& text)
{
    for (const Option& option : options())
        for (const std::string& value : option.value.choices)
            EXPECT_TRUE(std::regex_search(text, std::regex("\\b" + value + "\\b"))) << value;
}

const char* const remedy = "build the target cli-documents";

TEST(Documents, areMadeOfTheTable)
{
    const std::string page = document("docs/lumora-cli.1");
    EXPECT_EQ(page, withOptions(page)) << remedy;
    EXPECT_EQ(document("packaging/completions/lumora-cli.bash"), bashCompletion()) << remedy;
    EXPECT_EQ(document("packaging/completions/_lumora-cli"), zshCompletion()) << remedy;
    EXPECT_EQ(document("packaging/completions/lumora-cli.fish"), fishCompletion()) << remedy;
}

TEST(ManPage, describesExactlyTheOptionsThatExist)
{
    const std::string page = std::regex_replace(document("docs/lumora-cli.1"), std::regex("\\\\-"), "-");
    const Names names = matches(page, "\n\\.TP\n([^\n]*)");
    Names described;
    for (const std::string& heading : names) {
        described.merge(matches(heading, "\\\\fB(--?[a-z-]+)\\\\fR"));
    }
    EXPECT_EQ(described, tableNames());
    expectValues(std::regex_replace(page, std::regex("\\\\f[BIR]"), ""));
    for (const Option& option : options()) {
        if (option.value.argument.empty()) continue;
        const std::string signature =
            "--" + std::string(option.name) + "\\fR=\\fI" + std::string(option.value.argument) + "\\fR";
        EXPECT_THAT(page, testing::HasSubstr(signature));
    }
}

TEST(BashCompletion, offersExactlyTheOptionsThatExist)
{
    const std::string script = document("packaging/completions/lumora-cli.bash");
    std::smatch list;
    ASSERT_TRUE(std::regex_search(script, list, std::regex("values=\"(-f[^\"]*)\"")));
    EXPECT_EQ(matches(list[1], "(--?[a-z-]+)"), tableNames());
    expectValues(script);
}

TEST(ZshCompletion, offersExactlyTheOptionsThatExist)
{
    const std::string script = document("packaging/completions/_lumora-cli");
    Names offered = matches(script, "\\{(-[a-z]),--");
    offered.merge(matches(script, "(?:[')]|,)(--[a-z-]+)=?[}\\[]"));
    EXPECT_EQ(offered, tableNames());
    expectValues(script);
}

TEST(FishCompletion, offersExactlyTheOptionsThatExist)
{
    const std::string script = document("packaging/completions/lumora-cli.fish");
    Names offered = matches(script, " -l ([a-z-]+)", "--");
    offered.merge(matches(script, " -s ([a-z])", "-"));
    EXPECT_EQ(offered, tableNames());
    expectValues(script);
}

} // namespace
} // namespace lumora::cli
