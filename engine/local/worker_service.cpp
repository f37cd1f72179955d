// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/local/worker_service.h"

#include "system/freed_memory.h"
#include "system/message_channel.h"
#include "system/side_by_side.h"

#include <array>

namespace lumora::ImageOptimizer {
namespace {

template <class T, class Take>
WorkerReply replyOf(WorkResult<T> result, Take take)
{
    WorkerReply reply;
    if (result) {
        take(reply, std::move(*result));
    } else {
        reply.error = result.error();
    }
    return reply;
}

void takeHead(WorkerReply& reply, PictureHead head)
{
    reply.head = std::move(head);
}

void takeSize(WorkerReply& reply, PictureSize size)
{
    reply.size = size;
}

void takeAnswer(WorkerReply& reply, bool answer)
{
    reply.answer = answer;
}

} // namespace

WorkerReply answer(PictureWork& work, const WorkerRequest& request, int file)
{
    useProcessors(request.processors);
    switch (request.action) {
    case WorkerAction::open:
        return replyOf(work.open(file, request.settings.settings()), takeHead);
    case WorkerAction::proveReadable:
        return replyOf(work.proveReadable(), takeAnswer);
    case WorkerAction::encode:
        return replyOf(work.encode(file, request.typeIdentifier), takeSize);
    case WorkerAction::writePpm:
        return replyOf(work.writePpm(file), takeSize);
    case WorkerAction::copy:
        return replyOf(work.copy(file), takeAnswer);
    case WorkerAction::findDamage:
        return replyOf(work.findDamage(), [](WorkerReply&, Done) {});
    case WorkerAction::losses:
        return {.losses = work.losses(file, request.typeIdentifier)};
    case WorkerAction::isWhole:
        return {.answer = work.isWhole(file)};
    case WorkerAction::look:
        return replyOf(work.look(), [](WorkerReply& reply, PictureLook look) {
            reply.size = look.size;
            reply.profile = std::move(look.profile);
        });
    case WorkerAction::drawPart:
        return replyOf(work.drawPart(file, request.part), [](WorkerReply&, Done) {});
    case WorkerAction::close:
        break;
    }
    work.close();
    returnFreedMemory();
    return {};
}

void serve(PictureWork& work, int channel)
{
    std::array<std::byte, WorkerRequest::bytes> message{};
    for (FileDescriptor file; receiveMessage(channel, message, file); file = FileDescriptor()) {
        const auto request = requestIn(message);
        if (!request || !sendMessage(channel, messageOf(answer(work, *request, file.get())))) return;
    }
}

} // namespace lumora::ImageOptimizer
