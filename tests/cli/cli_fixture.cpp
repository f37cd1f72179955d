// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/cli/cli_fixture.h"

#include "samples/pictures.h"

#include <cstdlib>
#include <sstream>

namespace lumora::cli::test {

namespace fs = std::filesystem;

std::vector<std::string> Outcome::lines() const
{
    std::vector<std::string> result;
    std::istringstream stream(results);
    for (std::string line; std::getline(stream, line);)
        result.push_back(line);
    return result;
}

std::vector<nlohmann::json> Outcome::objects() const
{
    std::vector<nlohmann::json> result;
    for (const std::string& line : lines())
        result.push_back(nlohmann::json::parse(line));
    return result;
}

CliTest::CliTest()
{
    fs::permissions(m_place.path(), fs::perms::all);
    for (const char* name : {"in", "out", "tmp", "home"})
        folder(name);
    m_launch.workingDirectory = m_place / "in";
    m_launch.program = LUMORA_CLI_PROGRAM;
    m_launch.results = m_place / "results";
    m_launch.environment = {
        {"PATH", "/usr/bin:/bin"},         {"LC_ALL", "C.UTF-8"}, {"TERM", "xterm"},
        {"TMPDIR", m_place / "tmp"},       {"HOME", home()},      {"XDG_CONFIG_HOME", home() / "config"},
        {"XDG_DATA_HOME", home() / "data"}};
    for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"})
        if (const char* value = std::getenv(name)) m_launch.environment[name] = value;
}

void CliTest::TearDown()
{
    EXPECT_TRUE(fs::is_empty(m_place / "tmp")) << "temporary files are left";
}

fs::path CliTest::folder(const std::string& name) const
{
    fs::create_directory(m_place / name);
    // Whoever the program runs as may write here.
    fs::permissions(m_place / name, fs::perms::all);
    return m_place / name;
}

std::vector<std::string> CliTest::outputs() const
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(m_place / "out"))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

fs::path CliTest::photograph(const std::string& name, int width, int height) const
{
    // The library would read options out of some names.
    const fs::path plain = m_place / ("made" + fs::path(name).extension().string());
    samples::writePhotograph(plain, {width, height}, 1);
    fs::rename(plain, in(name));
    return in(name);
}

void CliTest::useCopyOfProgram()
{
    const fs::path copy = folder("program") / "Contents" / "MacOS";
    fs::create_directories(copy);
    for (const char* name : {"lumora-cli", "lumora-worker"})
        fs::copy_file(m_launch.program.parent_path() / name, copy / name);
    m_launch.program = copy / "lumora-cli";
}

void CliTest::useEncoder(const std::string& script)
{
    const fs::path encoder = m_place / "encoder";
    writeFile(encoder, "#!/bin/sh\n" + script + "\n");
    fs::permissions(encoder, fs::perms::all);
    m_launch.environment["LUMORA_CWEBP_PATH"] = encoder;
}

std::map<std::string, std::string> CliTest::originals() const
{
    std::map<std::string, std::string> contents;
    for (const auto& entry : fs::directory_iterator(m_place / "in")) {
        std::error_code unreadable;
        if (entry.is_regular_file(unreadable)) contents[entry.path()] = readFile(entry.path());
    }
    return contents;
}

std::unique_ptr<CliProcess> CliTest::start(const std::vector<std::string>& arguments)
{
    m_originals = originals();
    m_launch.arguments = arguments;
    return std::make_unique<CliProcess>(m_launch);
}

Outcome CliTest::finish(CliProcess& process)
{
    const int status = process.wait();
    const auto now = originals();
    for (const auto& [name, content] : m_originals) {
        const bool isUntouched = now.contains(name) && now.at(name) == content;
        EXPECT_TRUE(isUntouched) << name;
    }
    return {status, readFile(m_launch.results), process.complaints()};
}

Outcome CliTest::run(const std::vector<std::string>& arguments)
{
    return finish(*start(arguments));
}

Outcome CliTest::runInto(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), {"-o", out("")});
    return run(arguments);
}

} // namespace lumora::cli::test
