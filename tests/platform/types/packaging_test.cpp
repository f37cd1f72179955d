// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What desktops and file managers read of the package, against the table.
#include "tests/support/files.h"
#include "types/format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <sstream>
#include <string>
#include <vector>

namespace lumora {
namespace {

struct TypeList
{
    const char* file;
    const char* key;
};

void PrintTo(const TypeList& list, std::ostream* out)
{
    *out << list.file;
}

class PackagedTypeList : public testing::TestWithParam<TypeList>
{
protected:
    static std::vector<std::string> typesIn(const TypeList& list)
    {
        std::istringstream lines(
            test::readFile(std::filesystem::path(LUMORA_SOURCE_DIR) / "packaging" / list.file));
        const std::string key = std::string(list.key) + "=";
        std::vector<std::string> types;
        for (std::string line; std::getline(lines, line);) {
            if (!line.starts_with(key)) continue;
            std::istringstream values(line.substr(key.size()));
            for (std::string type; std::getline(values, type, ';');)
                types.push_back(type);
        }
        return types;
    }
};

// A desktop offers the program for these, and the program takes in files by their extensions.
TEST_P(PackagedTypeList, NamesWhatIsTakenInAndFolders)
{
    std::vector<std::string> expected{"inode/directory"};
    for (const Format* format : formats()) {
        if (!format->extensions.empty())
            expected.insert(expected.end(), format->mimeTypes.begin(), format->mimeTypes.end());
    }
    EXPECT_THAT(typesIn(GetParam()), testing::UnorderedElementsAreArray(expected));
}

INSTANTIATE_TEST_SUITE_P(, PackagedTypeList,
                         testing::Values(TypeList{"desktop/example.tidewell.Lumora.desktop", "MimeType"},
                                         TypeList{"file-managers/lumora-action.desktop", "MimeTypes"},
                                         TypeList{"file-managers/lumora-servicemenu.desktop", "MimeType"},
                                         TypeList{"file-managers/lumora.nemo_action", "Mimetypes"}),
                         [](const auto& test) {
                             std::string name = test.param.file;
                             std::erase_if(name, [](unsigned char c) { return !std::isalnum(c); });
                             return name;
                         });

} // namespace
} // namespace lumora
