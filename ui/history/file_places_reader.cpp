// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/file_places_reader.h"

#include <algorithm>
#include <utility>

namespace lumora {

FilePlacesReader::~FilePlacesReader()
{
    const std::lock_guard lock(m_mutex);
    m_wanted.clear();
}

void FilePlacesReader::want(std::vector<FileRecord> files)
{
    std::ranges::reverse(files);
    {
        const std::lock_guard lock(m_mutex);
        m_wanted = std::move(files);
        if (m_wanted.empty()) return;
    }
    m_thread.run([this] { work(); });
}

void FilePlacesReader::forgetTrash()
{
    const std::lock_guard lock(m_mutex);
    m_forgetsTrash = true;
}

void FilePlacesReader::work()
{
    for (;;) {
        FileRecord file;
        {
            const std::lock_guard lock(m_mutex);
            if (std::exchange(m_forgetsTrash, false)) m_trash = {};
            if (m_wanted.empty()) return;
            file = std::move(m_wanted.back());
            m_wanted.pop_back();
        }
        const FilePlaces places = placesOf(file, m_trash);
        m_mainThread.post([this, id = file.id, places] { m_take(id, places); });
    }
}

} // namespace lumora
