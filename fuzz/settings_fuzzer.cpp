// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes may stand in the preferences file: every setting has a value, and what is set reads back.
#include "fuzz/fuzzing.h"
#include "model/settings_store.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

namespace {

// A new name each time: the toolkit keeps what it has read of a file while its size and time stay.
QString fileWith(const std::uint8_t* data, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/settings"));
    static int count = 0;
    QFile file(folder.filePath(QString::number(++count)));
    lumora::fuzz::require(file.open(QIODevice::WriteOnly));
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    return file.fileName();
}

} // namespace

// For a list the toolkit reserves as many values as the file claims. That takes addresses, of which there are
// plenty, and where there are not, the list reads as no value; the sanitizer would pay for them in memory.
extern "C" const char* __asan_default_options() // NOLINT(bugprone-reserved-identifier): its name is given
{
    return "allocator_may_return_null=1:max_allocation_size_mb=1024";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int count = 0;
    static const QCoreApplication application(count, nullptr);
    const QString file = fileWith(data, size);
    {
        lumora::SettingsStore store(file);
        const lumora::OptimizerSettings before = store.snapshot();
        lumora::fuzz::require(!before.destinationFolderURL ||
                              std::filesystem::is_directory(*before.destinationFolderURL));
        store.settings().quality.set(50);
        lumora::fuzz::require(store.snapshot().quality == 50);
        lumora::fuzz::require(store.snapshot().filenamePrefix == before.filenamePrefix);
    }
    QFile::remove(file);
    return 0;
}
