// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A place for one run of lumora-cli: folders of its own for inputs, outputs, temporary files and the user's
// data. After each run the originals are as they were and no temporary file is left.
#pragma once

#include "tests/cli/cli_process.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <memory>

namespace lumora::cli::test {

using lumora::test::readFile;
using lumora::test::writeFile;

struct Outcome
{
    int status;
    std::string results;
    std::string complaints;

    std::vector<std::string> lines() const;
    // The lines of --json.
    std::vector<nlohmann::json> objects() const;
};

class CliTest : public testing::Test
{
protected:
    CliTest();
    void TearDown() override;

    std::filesystem::path in(const std::string& name) const { return m_place / "in" / name; }
    std::filesystem::path out(const std::string& name) const { return m_place / "out" / name; }
    std::filesystem::path home() const { return m_place / "home"; }
    std::vector<std::string> outputs() const; // the names in out, sorted
    std::filesystem::path beside(const std::string& name) const { return m_place / name; }
    // A fresh folder beside the others.
    std::filesystem::path folder(const std::string& name) const;

    // A small photograph among the inputs.
    std::filesystem::path photograph(const std::string& name, int width = 320, int height = 240) const;
    // A copy of the program with its worker and without the encoder.
    void useCopyOfProgram();
    // An encoder of our own: a shell script with this body.
    void useEncoder(const std::string& script);

    std::unique_ptr<CliProcess> start(const std::vector<std::string>& arguments);
    Outcome finish(CliProcess& process);
    Outcome run(const std::vector<std::string>& arguments);
    // With "-o out" before the arguments.
    Outcome runInto(std::vector<std::string> arguments);

    // What the next start uses; tests may change it.
    Launch m_launch;

private:
    std::map<std::string, std::string> originals() const;

    const lumora::test::TemporaryDirectory m_place;
    std::map<std::string, std::string> m_originals; // contents before the last start
};

// The one row of a file that cannot be read.
MATCHER(IsUnreadable, "")
{
    return arg.at("success") == false && arg.at("output").is_null() &&
           arg.at("message") == "The image could not be read.";
}

} // namespace lumora::cli::test
