// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Metadata and pictures written while memory is short: one allocation after the other fails. A program of its
// own, because it replaces the allocator. Without XMP, whose toolkit takes such a failure for a damaged
// packet or stops with its lock held.
#include "encoding.h"

#include "tests/platform/formats/written_pictures.h"

#include <cstdlib>
#include <new>
#include <unistd.h>

namespace {

// Allocations of this thread until one fails; below zero none does.
thread_local long allocationsLeft = -1;

} // namespace

void* operator new(std::size_t size)
{
    if (allocationsLeft >= 0 && allocationsLeft-- == 0) throw std::bad_alloc();
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (!memory) throw std::bad_alloc();
    return memory;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
try {
    return operator new(size);
} catch (const std::bad_alloc&) {
    return nullptr;
}
void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

// The metadata library loses memory of its own when an allocation fails half-way.
extern "C" const char* __asan_default_options() // NOLINT(bugprone-reserved-identifier): the sanitizer's name
{
    return "detect_leaks=0";
}

namespace lumora {
namespace {

const PictureFacts facts{16, 12, true, {}};

Metadata metadataWithoutXmp()
{
    Metadata metadata = test::someMetadata();
    metadata.xmp.clear();
    return metadata;
}

const Metadata metadata = metadataWithoutXmp();

// Runs the work with its first allocation failing, then its second, until all of them succeed. False when the
// work has not come to its end by then.
template <class Work>
long withEachAllocationFailing(Work work)
{
    constexpr long most = 100'000;
    for (long failing = 0; failing < most; ++failing) {
        allocationsLeft = failing;
        work();
        const bool isDone = std::exchange(allocationsLeft, -1) >= 0;
        if (isDone) return failing;
    }
    return most;
}

class ShortMemory : public test::WrittenPictures
{
protected:
    // The length of the file. Opening it is not what runs short.
    Result<std::int64_t> encoded(const Format& format, const Image& image)
    {
        const long left = std::exchange(allocationsLeft, -1);
        auto file = AtomicFile::create(m_folder / "encoded");
        allocationsLeft = left;
        const auto status = encodeImage(format, image, 82, metadata, *file);
        if (!status) return status.error();
        return std::int64_t{lseek(file->descriptor(), 0, SEEK_END)};
    }
};

template <class Make>
void expectWholeOrThrown(Make make)
{
    const auto whole = make();
    ASSERT_FALSE(whole.empty());
    long thrown = 0;
    const long failures = withEachAllocationFailing([&] {
        try {
            const auto made = make();
            const long left = std::exchange(allocationsLeft, -1);
            EXPECT_EQ(made, whole);
            allocationsLeft = left;
        } catch (const std::bad_alloc&) {
            ++thrown;
        }
    });
    EXPECT_GT(thrown, 0);
    EXPECT_LT(failures, 100'000);
}

TEST_F(ShortMemory, LeavesTheExifBlockAsAnException)
{
    expectWholeOrThrown([] { return exifBlock(metadata, facts); });
}

TEST_F(ShortMemory, LeavesTheIptcBlockAsAnException)
{
    expectWholeOrThrown([] { return iptcBlock(metadata); });
}

TEST_F(ShortMemory, IsAnErrorOfThePictureThatIsWritten)
{
    const Image image = redrawn(test::corneredPicture(16, 12));
    for (const char* type :
         {"public.jpeg", "public.png", "com.compuserve.gif", "public.tiff", "com.microsoft.bmp"}) {
        const Format& format = *formatWithIdentifier(type);
        const auto whole = encoded(format, image);
        ASSERT_TRUE(whole);
        long refused = 0;
        withEachAllocationFailing([&] {
            const auto bytes = encoded(format, image);
            const long left = std::exchange(allocationsLeft, -1);
            if (bytes) {
                EXPECT_EQ(*bytes, *whole) << type;
            } else {
                ++refused;
                EXPECT_EQ(bytes.error().cause, Error::Cause::memory) << type;
                EXPECT_EQ(bytes.error().description, "not enough memory") << type;
            }
            allocationsLeft = left;
        });
        EXPECT_GT(refused, 0) << type;
    }
}

} // namespace
} // namespace lumora
