// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdio>
#include <string_view>

namespace lumora {
namespace {

struct FreeOptions
{
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};

} // namespace

struct TiffFile::Procedures
{
    static State& stateOf(thandle_t handle) { return *static_cast<State*>(handle); }

    static tmsize_t read(thandle_t handle, void* bytes, tmsize_t count)
    {
        State& state = stateOf(handle);
        const ssize_t got = pread(state.file.get(), bytes, static_cast<std::size_t>(count),
                                  static_cast<off_t>(state.position));
        if (got > 0) state.position += static_cast<toff_t>(got);
        return got;
    }
    static tmsize_t write(thandle_t, void*, tmsize_t) { return -1; }
    static toff_t seek(thandle_t handle, toff_t offset, int from)
    {
        State& state = stateOf(handle);
        const toff_t start = from == SEEK_CUR ? state.position : from == SEEK_END ? size(handle) : 0;
        return state.position = start + offset;
    }
    static toff_t size(thandle_t handle)
    {
        struct stat status = {};
        return fstat(stateOf(handle).file.get(), &status) == 0 ? static_cast<toff_t>(status.st_size) : 0;
    }
    static int close(thandle_t) { return 0; }

    static int hearError(TIFF*, void* state, const char*, const char*, va_list)
    {
        stateOf(state).isDamaged = true;
        return 1;
    }
    // Other warnings are about fields.
    static int hearWarning(TIFF*, void* state, const char* module, const char*, va_list)
    {
        const std::string_view from = module ? module : "";
        if (from == "JPEGLib" || from.starts_with("Fax")) stateOf(state).isDamaged = true;
        return 1;
    }
};

Result<TiffFile> TiffFile::open(int descriptor)
{
    TiffFile file(std::make_unique<State>());
    State* const state = file.m_state.get();
    state->file = FileDescriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
    const std::unique_ptr<TIFFOpenOptions, FreeOptions> options(TIFFOpenOptionsAlloc());
    if (!state->file.isOpen() || !options) return Error{"no descriptor left"};
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), Procedures::hearError, state);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), Procedures::hearWarning, state);
    // Without mapping ("m"): a file that is cut while it is read would end the program.
    file.m_tiff.reset(TIFFClientOpenExt("picture", "rm", state, Procedures::read, Procedures::write,
                                        Procedures::seek, Procedures::close, Procedures::size, nullptr,
                                        nullptr, options.get()));
    if (!file.m_tiff) return Error{"not a readable TIFF"};
    state->isDamaged = false; // fields
    return file;
}

bool TiffFile::readAt(std::uint64_t position, std::span<std::uint8_t> bytes) const
{
    return pread(m_state->file.get(), bytes.data(), bytes.size(), static_cast<off_t>(position)) ==
           static_cast<ssize_t>(bytes.size());
}

std::uint16_t TiffFile::number(std::uint32_t tag, std::uint16_t fallback) const
{
    std::uint16_t value = fallback;
    return TIFFGetFieldDefaulted(get(), tag, &value) == 1 ? value : fallback;
}

} // namespace lumora
