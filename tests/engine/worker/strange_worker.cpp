// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A worker that does its work as any, but for files that end in an order of a test: what a decoder would do
// that is broken, or that was taken over.
#include "engine/local/local_picture_work.h"
#include "engine/local/worker_service.h"
#include "engine/worker/worker_program.h"
#include "formats/codec_preparation.h"
#include "system/confinement.h"
#include "system/message_channel.h"
#include "system/side_by_side.h"
#include "tests/engine/worker/strange_order.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <new>

namespace lumora {
namespace {

using test::StrangeOrder;
constexpr int channel = 3;

StrangeOrder orderIn(int file)
{
    struct stat status = {};
    std::array<char, test::orderMark.size() + 1> end{};
    if (fstat(file, &status) != 0 || status.st_size < static_cast<off_t>(end.size()) ||
        pread(file, end.data(), end.size(), status.st_size - static_cast<off_t>(end.size())) < 0 ||
        std::memcmp(end.data(), test::orderMark.data(), test::orderMark.size()) != 0)
        return StrangeOrder::none;
    return static_cast<StrangeOrder>(end.back());
}

[[noreturn]] void sleepForEver()
{
    for (;;)
        poll(nullptr, 0, -1);
}

void talkNonsense()
{
    const std::array<std::byte, ImageOptimizer::WorkerReply::bytes> nonsense{std::byte{0xFF}};
    sendMessage(channel, nonsense);
    sleepForEver();
}

// Each of these would be harm done.
void tryToLeave()
{
    const bool opened = open("/etc/passwd", O_RDONLY) >= 0;
    const bool made = open("/tmp", O_TMPFILE | O_RDWR, 0600) >= 0;
    const bool removed = unlink("/tmp") == 0;
    if (opened || made || removed || kill(getppid(), 0) == 0) return;
    socket(AF_INET, SOCK_STREAM, 0); // is the end
}

// Whether it has more than it was handed: variables, open files, or a memory image to leave behind.
bool isRich(int file)
{
    rlimit core{};
    getrlimit(RLIMIT_CORE, &core);
    if (*environ || core.rlim_cur != 0) return true;
    constexpr int many = 256;
    for (int other = channel + 1; other < many; ++other) {
        if (other != file && fcntl(other, F_GETFD) >= 0) return true;
    }
    return false;
}

// More than any picture of a test needs, but none of it ever touched.
void eatMemory()
{
    constexpr std::size_t block = std::size_t{64} << 20U;
    constexpr int most = 4096;
    [[maybe_unused]] static void* volatile last = nullptr; // or the optimizer does without them
    try {
        for (int blocks = 0; blocks < most; ++blocks)
            last = ::operator new(block);
    } catch (const std::bad_alloc&) {
        std::_Exit(ImageOptimizer::outOfMemoryExit);
    }
}

class StrangeWork : public ImageOptimizer::LocalPictureWork
{
public:
    ImageOptimizer::WorkResult<ImageOptimizer::PictureHead> open(int file,
                                                                 const OptimizerSettings& settings) override
    {
        m_order = orderIn(file);
        obey(StrangeOrder::dieOnOpening, [] { std::abort(); });
        obey(StrangeOrder::sleep, sleepForEver);
        obey(StrangeOrder::talkNonsense, talkNonsense);
        obey(StrangeOrder::leave, tryToLeave);
        obey(StrangeOrder::startProgram, [] { execl("/bin/true", "true", nullptr); });
        obey(StrangeOrder::runShortOfMemory, [] { std::_Exit(ImageOptimizer::outOfMemoryExit); });
        obey(StrangeOrder::eatMemory, eatMemory);
        if (m_order == StrangeOrder::dieIfRich && isRich(file)) std::abort();
        return LocalPictureWork::open(file, settings);
    }

    ImageOptimizer::WorkResult<ImageOptimizer::PictureSize> encode(int output,
                                                                   const std::string& type) override
    {
        obey(StrangeOrder::dieEncoding, [] { std::abort(); });
        obey(StrangeOrder::spinEncoding, [] {
            for (volatile unsigned turns = 0;;)
                turns = turns + 1;
        });
        if (m_order == StrangeOrder::dieWithOneProcessor && usedProcessors() == 1) std::abort();
        if (m_order == StrangeOrder::lieAboutOutput) return ImageOptimizer::PictureSize{64, 48};
        return LocalPictureWork::encode(output, type);
    }

private:
    void obey(StrangeOrder order, void (*deed)()) const
    {
        if (m_order == order) deed();
    }

    StrangeOrder m_order = StrangeOrder::none;
};

} // namespace
} // namespace lumora

int main()
{
    lumora::prepareCodecs(lumora::ImageOptimizer::outOfMemoryExit);
    lumora::confineProcess();
    lumora::StrangeWork work;
    lumora::ImageOptimizer::serve(work, lumora::channel);
    std::_Exit(EXIT_SUCCESS);
}
