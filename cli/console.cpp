// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/console.h"

#include "cli/printable.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

namespace lumora::cli {

namespace {

bool writeAll(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool canRedrawLines(int descriptor)
{
    const char* kind = std::getenv("TERM");
    return isatty(descriptor) && kind && std::string_view(kind) != "dumb";
}

std::size_t terminalWidth(int descriptor)
{
    winsize size{};
    if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 80;
    return size.ws_col;
}

} // namespace

Console::Console(Streams streams, bool showProgress) : m_streams(streams)
{
    if (!showProgress) return;
    if (canRedrawLines(streams.complaints))
        m_terminal = streams.complaints;
    else if (canRedrawLines(streams.results))
        m_terminal = streams.results;
}

Console::~Console()
{
    progress({});
}

void Console::result(const std::string& line)
{
    if (m_questionStands)
        m_keptBack += line + "\n";
    else
        writeResults(line + "\n");
}

void Console::writeResults(const std::string& text)
{
    if (m_resultsFailed || text.empty()) return;
    eraseProgress();
    if (writeAll(m_streams.results, text)) {
        drawProgress();
        return;
    }
    const int reason = errno;
    m_resultsFailed = true;
    // A reader that has seen enough (head, a pager) is no fault to complain of.
    if (reason != EPIPE) complain(std::string("cannot write the results: ") + std::strerror(reason));
}

void Console::complain(const std::string& message)
{
    eraseProgress();
    // Nobody is left to be told when this fails.
    static_cast<void>(writeAll(m_streams.complaints, "lumora-cli: " + printable(message) + "\n"));
    drawProgress();
}

void Console::progress(const std::string& text)
{
    eraseProgress();
    m_progress = text;
    drawProgress();
}

void Console::beginQuestion(const std::string& question)
{
    eraseProgress();
    m_questionStands = true;
    static_cast<void>(writeAll(m_streams.complaints, printable(question) + " "));
}

void Console::endQuestion()
{
    m_questionStands = false;
    writeResults(std::exchange(m_keptBack, {}));
    drawProgress();
}

void Console::eraseProgress()
{
    if (!m_progressIsDrawn) return;
    static_cast<void>(writeAll(m_terminal, "\r\x1b[K"));
    m_progressIsDrawn = false;
}

void Console::drawProgress()
{
    if (m_terminal < 0 || m_progress.empty() || m_questionStands || m_progressIsDrawn) return;
    // One column is left free: a full line would wrap on some terminals and could not be erased.
    static_cast<void>(writeAll(m_terminal, elided(m_progress, terminalWidth(m_terminal) - 1)));
    m_progressIsDrawn = true;
}

} // namespace lumora::cli
