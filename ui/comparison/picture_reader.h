// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Reads one of the two pictures: a thread that waits, and a worker process that does what is untrusted. What
// is wanted replaces what was wanted before and has not begun. Destruction ends the work at once. Main
// thread; signals too.
#pragma once

#include "engine/worker/worker_processes.h"
#include "model/main_thread_queue.h"
#include "records/picture_part.h"

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>

#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>

namespace lumora {

// What is said of a picture beside it.
struct PictureFacts
{
    QSize size; // upright
    QString format;
    QString profile; // empty without one
    std::int64_t bytes = 0;
    bool isInTrash = false;
};

// Where the picture's file is, or why there is none, in a sentence.
struct PictureFile
{
    std::optional<std::filesystem::path> path;
    bool isInTrash = false;
    QString reason = {};
};

class PictureReader : public QObject
{
    Q_OBJECT

public:
    // `find` is called on the reader's thread, `worker` the program of the worker. `name` begins the
    // sentences about it: "The original".
    PictureReader(QString name, std::function<PictureFile()> find, const std::filesystem::path& worker,
                  QObject* parent = nullptr);
    ~PictureReader() override;

    void want(const PicturePart& part);
    // How far the part in work is, from 0 to 1; absent while there is none.
    std::optional<double> progress() const;

Q_SIGNALS:
    void opened(const lumora::PictureFacts& facts);
    void drawn(const lumora::PicturePart& part, const QImage& pixels);
    // Nothing more comes.
    void failed(const QString& sentence);

private:
    class Work;

    void run(const std::stop_token& stop);
    std::optional<PicturePart> nextPart(const std::stop_token& stop);
    void setInWork(int output, std::int64_t bytes);
    void unsetInWork();

    const QString m_name;
    const std::function<PictureFile()> m_find;
    // Its own: a worker ends with the thread that started it.
    ImageOptimizer::WorkerProcesses m_processes;
    MainThreadQueue m_mainThread;
    mutable std::mutex m_mutex;
    std::condition_variable_any m_wanted;
    // Guarded by m_mutex.
    std::optional<PicturePart> m_part;
    int m_output = -1; // in work
    std::int64_t m_outputBytes = 0;
    // The last member: it uses all the others.
    std::jthread m_thread;
};

} // namespace lumora
