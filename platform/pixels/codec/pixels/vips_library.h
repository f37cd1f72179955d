// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The image library: what of it may run, and its errors and fields.
#pragma once

#include "system/result.h"

#include <cstddef>
#include <memory>
#include <string_view>

struct _VipsImage;

namespace lumora {

// Starts the library unless it runs: one thread a picture, because files already run in
// parallel; no operation cache, because no picture is met twice; and every loader and saver blocked until it
// is allowed by name, because content decides which one runs and content is not trusted. Modules, which
// bring the renderers of documents and other formats, are not even loaded. Thread-safe; ends the program when
// the library cannot start.
void ensureVipsReady();

// Unblocks one loader or saver by the name of its class. After ensureVipsReady. Thread-safe.
void allowOperation(const char* name);

// The same as ensureVipsReady with the HEIF reader, which is a module of its own: it and the video codecs
// behind it are loaded only once such a picture is met. Without the module those pictures cannot be read.
// Thread-safe.
void ensureHeifReady();

// The library's error text, cleared by the call. The buffer is shared by all threads: decide what failed by
// the step that failed, and use this text at most as a detail. A text about memory makes memory the cause.
Error takeVipsError();

struct VipsUnref
{
    void operator()(void* object) const;
};
// One reference to a library object.
using VipsImagePtr = std::unique_ptr<_VipsImage, VipsUnref>;

// The bytes of a field of a picture, empty without it. Valid until the field is replaced, which happens to
// those of a lazy picture when its decoder starts.
std::string_view blobOf(_VipsImage* image, const char* field);

// Of a picture as it is stored.
std::size_t pixelBytesOf(_VipsImage* image);
std::size_t rowBytesOf(_VipsImage* image);

} // namespace lumora
