// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Asks on the terminal whether an existing file may be replaced. Main thread only; the event loop goes on
// meanwhile.
#pragma once

#include <QEventLoop>

#include <filesystem>
#include <string>

namespace lumora::cli {

class Console;

class OverwritePrompt
{
public:
    explicit OverwritePrompt(Console& console) : m_console(console) {}

    // Whether there is a terminal to ask on.
    static bool isPossible();

    // True replaces. Return alone replaces too; the end of the input skips.
    bool ask(const std::filesystem::path& output);

    // Answers the question that stands, and every later one, with skip.
    void refuse();

private:
    void readAnswer();

    Console& m_console;
    QEventLoop m_wait;
    std::string m_answer;
    bool m_refused = false;
};

} // namespace lumora::cli
