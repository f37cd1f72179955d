// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The HEIF library's decoder of HEVC in our own hands. The library's passes over every damage that the codec
// notices, and shows what the codec made up instead.
#pragma once

namespace lumora {

// From here on the HEIF library decodes HEVC with it in the whole process, whoever asks. Any thread; throws
// std::bad_alloc.
void ensureHevcDecoder();

// Whether what this thread decodes next is wanted in RGB. It comes so where the stream says that its colours
// are the usual ones (hevc_rgb.h), and in its components otherwise.
void wantHevcInRgb(bool isWanted);

} // namespace lumora
