// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One run of the command line: paths in, rows and an exit status out, by the same processing model as the
// application.
#pragma once

#include "cli/command_line.h"
#include "cli/console.h"
#include "cli/overwrite_prompt.h"
#include "model/processing_model.h"
#include "model/result_text.h"

#include <QLocale>
#include <QObject>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumora {
class StatsStore;
}

namespace lumora::cli {

// Main thread only; runs the event loop of the QCoreApplication that exists.
class Session : public QObject
{
public:
    // `console` outlives the session.
    Session(const CommandLine& line, Console& console);
    ~Session() override;

    // Returns when every file is done or the run was interrupted: the exit status of the program.
    int run();

private:
    ProcessingServices services();
    void report(const ProcessingResult& result);
    void interrupt(int signalNumber);
    void stop();
    void finish();
    int exitStatus() const;

    const CommandLine m_line;
    Console& m_console;
    const QLocale m_locale = QLocale::system();
    // Written by the thread that expands the paths, before the first result is there. That of an interrupted
    // run may outlive the session.
    const std::shared_ptr<std::vector<std::string>> m_complaintsAboutPaths =
        std::make_shared<std::vector<std::string>>();
    OverwritePrompt m_prompt;
    std::unique_ptr<StatsStore> m_stats;
    ProcessingModel m_model;
    ResultTotals m_totals;
    int m_leftAlone = 0;                // as it was asked for
    std::optional<int> m_interruptedBy; // the first signal
};

} // namespace lumora::cli
