// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/heif_input.h"

#include <sys/stat.h>
#include <unistd.h>

namespace lumora {

HeifInput::HeifInput(int descriptor, HevcWish wish) : m_descriptor(descriptor), m_wish(wish)
{
    struct stat status = {};
    if (fstat(descriptor, &status) == 0) m_size = status.st_size;
    m_calls.reader_api_version = 1;
    m_calls.get_position = [](void* self) { return of(self).m_at; };
    m_calls.read = [](void* to, std::size_t size, void* self) { return of(self).read(to, size); };
    m_calls.seek = [](std::int64_t to, void* self) {
        of(self).m_at = to;
        return 0;
    };
    m_calls.wait_for_file_size = [](std::int64_t size, void* self) {
        return size > of(self).m_size ? heif_reader_grow_status_size_beyond_eof
                                      : heif_reader_grow_status_size_reached;
    };
}

HeifInput::~HeifInput()
{
    wishForHevc({});
}

HeifHandle HeifInput::primaryPicture(heif_context* context)
{
    heif_image_handle* primary = nullptr;
    if (heif_context_read_from_reader(context, &m_calls, this, nullptr).code != heif_error_Ok ||
        heif_context_get_primary_image_handle(context, &primary).code != heif_error_Ok)
        return nullptr;
    return HeifHandle(primary);
}

// The library decodes a picture, and each piece of one on a thread of its own, after reading it there.
int HeifInput::read(void* to, std::size_t size)
{
    wishForHevc(m_wish);
    if (pread(m_descriptor, to, size, m_at) != static_cast<ssize_t>(size)) return 1;
    m_at += static_cast<std::int64_t>(size);
    return 0;
}

} // namespace lumora
