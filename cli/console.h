// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The two streams of the program and the progress line on a terminal between them. Main thread only.
#pragma once

#include <string>

namespace lumora::cli {

class Console
{
public:
    struct Streams
    {
        int results; // descriptors, not owned
        int complaints;
    };

    // Progress is drawn on the stream of complaints when that is a terminal, else on that of results; nowhere
    // when neither is one or `showProgress` is false.
    Console(Streams streams, bool showProgress);
    ~Console();

    // Writes one line of results. After a failure (a full disk, a reader that left) nothing more is written
    // there.
    void result(const std::string& line);
    bool resultsFailed() const { return m_resultsFailed; }

    // Writes one line, after the program's name, on the stream of complaints.
    void complain(const std::string& message);

    // Replaces the progress line; an empty text erases it.
    void progress(const std::string& text);

    // A question waits for its answer on the terminal: until the matching call, results are kept back and no
    // progress is drawn, so that the question stays the last line.
    void beginQuestion(const std::string& question);
    void endQuestion();

private:
    void writeResults(const std::string& text);
    void eraseProgress();
    void drawProgress();

    const Streams m_streams;
    int m_terminal = -1; // the descriptor of the progress line
    std::string m_progress;
    bool m_progressIsDrawn = false;
    bool m_questionStands = false;
    std::string m_keptBack;
    bool m_resultsFailed = false;
};

} // namespace lumora::cli
