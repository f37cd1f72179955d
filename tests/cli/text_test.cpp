// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/help_text.h"
#include "cli/json_line.h"
#include "cli/options.h"
#include "cli/printable.h"
#include "cli/text_rows.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace lumora::cli {
namespace {

using testing::HasSubstr;
using testing::Not;

struct TextCase
{
    std::string given;
    std::string shown;
};

void PrintTo(const TextCase& c, std::ostream* out)
{
    *out << c.shown;
}

class Printable : public testing::TestWithParam<TextCase>
{
};

TEST_P(Printable, isOneHarmlessLine)
{
    EXPECT_EQ(printable(GetParam().given), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, Printable,
    testing::Values(TextCase{"plain name.jpg", "plain name.jpg"}, TextCase{"é, 日本, 😀", "é, 日本, 😀"},
                    TextCase{"a\nb\r\tc", "a\\nb\\r\\tc"}, TextCase{"\x1b[31mred", "\\x1b[31mred"},
                    TextCase{"\x7f", "\\x7f"}, TextCase{"caf\xe9", "caf\\xe9"},
                    TextCase{"\xc2\x9b", "\\u{9b}"}, TextCase{"\xe2\x80\xae", "\\u{202e}"},
                    TextCase{"\xe2\x80\xa8", "\\u{2028}"}, TextCase{"\xed\xa0\x80", "\\xed\\xa0\\x80"},
                    TextCase{"\xc0\x80", "\\xc0\\x80"}, TextCase{"\xf0\x9f", "\\xf0\\x9f"},
                    TextCase{"C:\\n", "C:\\n"}, TextCase{"", ""}));

TEST(Elided, cutsOnlyWhatIsTooLongAndBetweenCharacters)
{
    EXPECT_EQ(elided("abcd", 4), "abcd");
    EXPECT_EQ(elided("abcde", 4), "abc…");
    EXPECT_EQ(elided("éééé", 3), "éé…");
    EXPECT_EQ(elided("", 4), "");
}

TEST(ResultRow, ofASuccessShowsNameSizesAndMessage)
{
    const ProcessingResult result("in/a.jpg", "in/a.webp", 2'000'000, 1'500'000, "Saved 500 KB", true);
    EXPECT_EQ(resultRow(result, QLocale::c()),
              "in/a.jpg: 2 MB -> 1.5 MB | saved 500 KB (25.0%) | Saved 500 KB");
}

TEST(ResultRow, ofAFailureShowsNameAndReasonAlone)
{
    const ProcessingResult result("in/a.jpg", std::nullopt, 0, 0, "The image could not be read.", false);
    EXPECT_EQ(resultRow(result, QLocale::c()), "in/a.jpg: The image could not be read.");
}

TEST(ResultRow, staysOneShortLineWhateverTheEncoderSaid)
{
    const ProcessingResult result("a\nb.jpg", std::nullopt, 0, 0,
                                  "bad\nworse\n" + std::string(1'000'000, 'x'), false);
    const std::string row = resultRow(result, QLocale::c());
    EXPECT_THAT(row, HasSubstr("a\\nb.jpg: bad\\nworse"));
    EXPECT_THAT(row, Not(HasSubstr("\n")));
    EXPECT_LT(row.size(), 400u);
}

TEST(SummaryRow, countsFilesAndBytes)
{
    ResultTotals totals;
    totals.add({"a.jpg", "a.webp", 2'000'000, 1'500'000, "", true});
    totals.add({"b.jpg", std::nullopt, 0, 0, "", false});
    EXPECT_EQ(summaryRow(totals, QLocale::c()), "Files 1/2 | Total Saved 500 KB | Reduction 25.0%");
}

// What the man page tells readers to do.
std::string bytesOf(const std::string& text)
{
    std::string bytes;
    for (std::size_t i = 0; i < text.size();) {
        const auto at = [&](std::size_t k) { return static_cast<unsigned char>(text[i + k]); };
        const bool isEscape = at(0) == 0xEE && (at(1) == 0xBE || at(1) == 0xBF);
        if (isEscape) {
            bytes += static_cast<char>(((at(1) & 0x3Fu) << 6 | (at(2) & 0x3Fu)) & 0xFFu);
            i += 3;
        } else {
            bytes += text[i++];
        }
    }
    return bytes;
}

class JsonLine : public testing::TestWithParam<std::string>
{
};

TEST_P(JsonLine, isValidAsciiInOneLineFromWhichTheBytesComeBack)
{
    const std::string& bytes = GetParam();
    const std::string line = jsonLine({bytes, bytes, 7, 5, bytes, true});
    for (const char c : line)
        EXPECT_TRUE(c >= 0x20 && c < 0x7f) << line;
    const auto object = nlohmann::json::parse(line);
    for (const char* key : {"source", "output", "message"})
        EXPECT_EQ(bytesOf(object.at(key).get<std::string>()), bytes) << line;
}

INSTANTIATE_TEST_SUITE_P(Names, JsonLine,
                         testing::Values("plain.jpg", "two\nlines \"quoted\" \\back.jpg", "caf\xe9.jpg",
                                         "\xff\x80\xfe", "\xed\xa0\x80 surrogate", "é日😀.jpg",
                                         "\xee\xbe\x80 private \xee\xbf\xbf",
                                         "\xee\xbd\xbf \xef\x80\x80 beside the private ones",
                                         "\xf0\x9f cut"));

TEST(JsonLine, isReadBackByALibrary)
{
    std::string all;
    for (int c = 0; c < 0x80; ++c)
        all += static_cast<char>(c);
    all += "\u0080é\u07ff\u0800日\ud7ff\uf900\uffff\U00010000😀\U0010ffff";
    const auto object = nlohmann::json::parse(jsonLine({"a.jpg", std::nullopt, 0, 0, all, false}));
    EXPECT_EQ(object.at("message").get<std::string>(), all);
    EXPECT_EQ(nlohmann::json::parse(jsonLine({"", "", INT64_MAX, INT64_MIN, "", true})),
              nlohmann::json({{"source", ""},
                              {"output", ""},
                              {"originalBytes", INT64_MAX},
                              {"outputBytes", INT64_MIN},
                              {"message", ""},
                              {"success", true}}));
}

TEST(JsonLine, hasExactlySixKeys)
{
    EXPECT_EQ(
        jsonLine({"a.jpg", std::nullopt, 0, 0, "no", false}),
        R"({"source":"a.jpg","output":null,"originalBytes":0,"outputBytes":0,"message":"no","success":false})");
    EXPECT_EQ(
        jsonLine({"a.jpg", "a.webp", 12, 3, "Saved 9 bytes", true}),
        R"({"source":"a.jpg","output":"a.webp","originalBytes":12,"outputBytes":3,"message":"Saved 9 bytes","success":true})");
}

TEST(HelpText, namesEveryOptionAndFitsATerminal)
{
    const std::string help = helpText();
    for (const Option& option : options())
        EXPECT_THAT(help,
                    HasSubstr((!option.negation.empty() ? "--[no-]" : "--") + std::string(option.name)));
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(line.size(), 80u) << line;
}

TEST(HelpText, saysThatAskIsSkipWithoutATerminal)
{
    EXPECT_THAT(helpText(), HasSubstr("ask asks on a"));
}

} // namespace
} // namespace lumora::cli
