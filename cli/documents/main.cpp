// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the completions and the man page's options into a source tree: lumora-cli-documents FOLDER.
#include "cli/documents/completions.h"
#include "cli/documents/manual.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

std::string content(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool write(const std::filesystem::path& file, const std::string& text)
{
    std::ofstream stream(file, std::ios::trunc);
    stream << text << std::flush;
    return stream.good();
}

} // namespace

int main(int count, char** arguments)
{
    using namespace lumora::cli;
    if (count != 2) return 2;
    const std::filesystem::path root = arguments[1];
    const auto completions = root / "packaging" / "completions";
    const auto page = root / "docs" / "lumora-cli.1";
    const std::string manual = withOptions(content(page));
    return write(completions / "lumora-cli.bash", bashCompletion()) &&
                   write(completions / "_lumora-cli", zshCompletion()) &&
                   write(completions / "lumora-cli.fish", fishCompletion()) && write(page, manual)
               ? 0
               : 1;
}
