// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/overwrite_prompt.h"

#include "cli/console.h"

#include <QSocketNotifier>

#include <unistd.h>

#include <array>
#include <cerrno>

namespace lumora::cli {

namespace {

constexpr int replace = 1;
constexpr int skip = 0;

bool meansReplace(const std::string& line)
{
    return line == "\n" || line[0] == 'r' || line[0] == 'R' || line[0] == 'y' || line[0] == 'Y';
}

} // namespace

bool OverwritePrompt::isPossible()
{
    return isatty(STDIN_FILENO) && isatty(STDERR_FILENO);
}

bool OverwritePrompt::ask(const std::filesystem::path& output)
{
    if (m_refused) return false;
    m_console.beginQuestion("Replace " + output.filename().native() +
                            "? A file with this name already exists. [Replace/skip]");
    m_answer.clear();
    QSocketNotifier notifier(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &m_wait, [this] { readAnswer(); });
    const bool answer = m_wait.exec() == replace;
    m_console.endQuestion();
    return answer;
}

void OverwritePrompt::refuse()
{
    m_refused = true;
    m_wait.exit(skip);
}

// A terminal hands over whole lines, but a long one in pieces.
void OverwritePrompt::readAnswer()
{
    std::array<char, 256> buffer;
    const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) return;
    if (count <= 0) return m_wait.exit(skip);
    m_answer.append(buffer.data(), static_cast<std::size_t>(count));
    if (m_answer.back() == '\n') m_wait.exit(meansReplace(m_answer) ? replace : skip);
}

} // namespace lumora::cli
