// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What is done with the pixels of one file, which come from strangers and go through decoders that know much
// and may be wrong. Descriptors only, no names: the work may be done in a process that has neither a file
// system nor a future. One file at a time, one thread.
#pragma once

#include "records/optimizer_settings.h"
#include "records/picture_part.h"
#include "system/result.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace lumora::ImageOptimizer {

struct WorkError
{
    enum class Kind {
        unreadable, // the input
        memory,
        unsupported, // the type of the output, on this machine
        drawing,     // the output cannot be drawn
        writing,     // the output
        stopped,     // by order
        notStarted,  // nobody is there to do it
    };

    Kind kind;
    std::string reason = {}; // of the system, for people; may be empty
};

template <class T>
using WorkResult = Result<T, WorkError>;

struct PictureHead
{
    std::string typeIdentifier; // as sniffed from the content
    std::int64_t memoryNeed;    // bytes, of everything that is to come
    bool keepsFrame = false;    // neither turned nor reduced
};

// Width and height in pixels, upright.
using PictureSize = std::pair<std::int64_t, std::int64_t>;

// What a viewer tells of a picture beside its pixels.
struct PictureLook
{
    PictureSize size;
    std::string profile = {}; // what its colour profile calls itself; empty without one
};

class PictureWork
{
public:
    PictureWork() = default;
    virtual ~PictureWork() = default;
    PictureWork(const PictureWork&) = delete;
    PictureWork& operator=(const PictureWork&) = delete;

    // Looks at the head of a file that is open for reading. Comes before all others; may come again.
    virtual WorkResult<PictureHead> open(int file, const OptimizerSettings& settings) = 0;

    // Decodes everything and keeps the picture for the encoder, where that takes little, or nothing of it.
    // Whether it is kept; open() must come again if not.
    virtual WorkResult<bool> proveReadable() = 0;

    // Writes the whole output into an empty file that is open for reading and writing. Tells what size it
    // has.
    virtual WorkResult<PictureSize> encode(int output, const std::string& typeIdentifier) = 0;
    // The same as the external encoder's input.
    virtual WorkResult<PictureSize> writePpm(int output) = 0;

    // After encode(): writes the input's own file into an empty one that is open for reading and writing,
    // without what the settings remove. False, and nothing to be used, where that would not show the same as
    // what was encoded.
    virtual WorkResult<bool> copy(int output) = 0;

    // After a failure of anybody: the input's part in it. Fails as proveReadable() does, or with `stopped`.
    virtual WorkResult<Done> findDamage() = 0;

    // What of the input could not come along into the whole output, in clauses for its row.
    virtual std::vector<std::string> losses(int output, const std::string& typeIdentifier) = 0;

    // Whether a file decodes to its last row, and to the picture that was encoded. Gives up the input.
    virtual bool isWhole(int output) = 0;

    // For whoever shows the picture as the file has it, upright.
    virtual WorkResult<PictureLook> look() = 0;
    // Writes a part of it as writeRgba() does. Uses up the picture: open() must come again.
    virtual WorkResult<Done> drawPart(int output, const PicturePart& part) = 0;

    // Gives up everything.
    virtual void close() = 0;
};

// Hands out the work on one file, to be given up at the stop.
using PictureWorkMaker = std::function<std::unique_ptr<PictureWork>(std::stop_token)>;

} // namespace lumora::ImageOptimizer
