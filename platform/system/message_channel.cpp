// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/message_channel.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>

namespace lumora {
namespace {

// Room for one descriptor.
struct Attachment
{
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> bytes{};
};

// Takes every descriptor that came along, so that none stays open unknown.
FileDescriptor descriptorIn(msghdr& header)
{
    FileDescriptor found;
    for (cmsghdr* part = CMSG_FIRSTHDR(&header); part; part = CMSG_NXTHDR(&header, part)) {
        if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_RIGHTS) continue;
        for (std::size_t at = 0; at + sizeof(int) <= part->cmsg_len - CMSG_LEN(0); at += sizeof(int)) {
            int descriptor = -1;
            std::memcpy(&descriptor, CMSG_DATA(part) + at, sizeof descriptor);
            found = FileDescriptor(descriptor);
        }
    }
    return found;
}

} // namespace

bool sendMessage(int channel, std::span<const std::byte> message, int descriptor)
{
    iovec content{const_cast<std::byte*>(message.data()), message.size()}; // NOLINT: it is read only
    msghdr header{};
    header.msg_iov = &content;
    header.msg_iovlen = 1;
    Attachment attachment;
    if (descriptor >= 0) {
        header.msg_control = attachment.bytes.data();
        header.msg_controllen = attachment.bytes.size();
        cmsghdr* const part = CMSG_FIRSTHDR(&header);
        part->cmsg_level = SOL_SOCKET;
        part->cmsg_type = SCM_RIGHTS;
        part->cmsg_len = CMSG_LEN(sizeof descriptor);
        std::memcpy(CMSG_DATA(part), &descriptor, sizeof descriptor);
    }
    for (;;) {
        const ssize_t sent = ::sendmsg(channel, &header, MSG_NOSIGNAL);
        if (sent >= 0 || errno != EINTR) return sent == static_cast<ssize_t>(message.size());
    }
}

bool hasNews(int channel, std::chrono::milliseconds within)
{
    pollfd event{channel, POLLIN, 0};
    const int count = ::poll(&event, 1, static_cast<int>(within.count()));
    return count > 0 || (count < 0 && errno != EINTR);
}

bool receiveMessage(int channel, std::span<std::byte> message, FileDescriptor& descriptor)
{
    iovec content{message.data(), message.size()};
    Attachment attachment;
    msghdr header{};
    header.msg_iov = &content;
    header.msg_iovlen = 1;
    header.msg_control = attachment.bytes.data();
    header.msg_controllen = attachment.bytes.size();
    ssize_t received = 0;
    do {
        received = ::recvmsg(channel, &header, MSG_CMSG_CLOEXEC);
    } while (received < 0 && errno == EINTR);
    if (received < 0) return false;
    descriptor = descriptorIn(header);
    return received == static_cast<ssize_t>(message.size()) &&
           (header.msg_flags & (MSG_TRUNC | MSG_CTRUNC)) == 0;
}

} // namespace lumora
