// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/session.h"

#include "cli/json_line.h"
#include "cli/named_images.h"
#include "cli/text_rows.h"
#include "history/history.h"
#include "model/batch_outcome.h"
#include "model/stats_store.h"
#include "model/termination_signals.h"

#include <QCoreApplication>

#include <csignal>

namespace lumora::cli {

Session::Session(const CommandLine& line, Console& console)
    : m_line(line), m_console(console), m_prompt(console),
      m_stats(line.recordStats ? std::make_unique<StatsStore>() : nullptr),
      m_model([this] { return m_line.settings(); }, m_stats.get(), services())
{
    connect(&m_model, &ProcessingModel::resultInserted, this, [this] { report(m_model.resultAt(0)); });
    connect(&m_model, &ProcessingModel::statusTextChanged, this,
            [this] { m_console.progress(m_model.statusText().toStdString()); });
    m_model.setOnComplete([this] { finish(); });
}

Session::~Session() = default;

ProcessingServices Session::services()
{
    ProcessingServices services = ProcessingServices::system();
    services.workers = m_line.jobs;
    services.debounce = std::chrono::milliseconds(0);
    services.expand = [complaints = m_complaintsAboutPaths](const auto& paths, const std::stop_token& stop) {
        NamedImages found = findImages(paths, stop);
        *complaints = std::move(found.complaints);
        return std::move(found.images);
    };
    if (m_line.keepHistory) {
        auto history = std::make_shared<History>(History::fileIn(StatsStore::userDataFolder()));
        services.history = [history = std::move(history)] { return history; };
    }
    services.origin = "lumora-cli";
    if (m_line.existing == Existing::ask && OverwritePrompt::isPossible())
        services.confirmOverwrite = [this](const std::filesystem::path& output) {
            return m_prompt.ask(output);
        };
    return services;
}

int Session::run()
{
    TerminationSignals signals;
    connect(&signals, &TerminationSignals::received, this, &Session::interrupt);
    m_model.process(m_line.paths);
    QCoreApplication::exec();
    return exitStatus();
}

void Session::report(const ProcessingResult& result)
{
    m_totals.add(result);
    if (isLeftAlone(result)) ++m_leftAlone;
    const bool isAsWanted = result.isSuccess || isLeftAlone(result);
    if (m_line.json)
        m_console.result(jsonLine(result));
    else if (!m_line.quiet || !isAsWanted)
        m_console.result(resultRow(result, m_locale));
    if (m_console.resultsFailed()) stop();
}

// The first Ctrl+C lets the files in flight end, the second ends their encoders. Who sends another signal is
// not waiting at a terminal.
void Session::interrupt(int signalNumber)
{
    const bool patient = signalNumber == SIGINT && !m_interruptedBy;
    if (!m_interruptedBy) m_interruptedBy = signalNumber;
    if (!patient) return m_model.cancelNow();
    if (!m_line.quiet)
        m_console.complain("interrupted; the files in work are being finished (Ctrl+C again ends them)");
    stop();
}

void Session::stop()
{
    m_prompt.refuse();
    m_model.cancel();
}

void Session::finish()
{
    m_console.progress({});
    if (!m_interruptedBy) {
        for (const std::string& complaint : *m_complaintsAboutPaths)
            m_console.complain(complaint);
    }
    if (m_totals.files == 0 && !m_interruptedBy)
        m_console.complain(m_model.statusText().toStdString());
    else if (!m_line.json && !m_line.quiet)
        m_console.result(summaryRow(m_totals, m_locale));
    QCoreApplication::quit();
}

int Session::exitStatus() const
{
    if (m_interruptedBy) return 128 + *m_interruptedBy;
    const bool allSucceeded = m_totals.files > 0 && m_totals.succeeded + m_leftAlone == m_totals.files;
    return allSucceeded && m_complaintsAboutPaths->empty() && !m_console.resultsFailed() ? 0 : 1;
}

} // namespace lumora::cli
