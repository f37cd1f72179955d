// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a drag or the clipboard says of its files, read without a look at any disk by the main thread.
#pragma once

#include <filesystem>
#include <vector>

class QMimeData;

namespace lumora {

// True where the data announces files of this machine. A list announced but still empty counts: some file
// managers fill it only at the drop. A list of remote addresses alone does not.
bool offersFiles(const QMimeData& data);

// Stricter: true where one of the files named could be or hold an image. Folders are told by another thread;
// what takes longer than the hand on a drag could notice, or stands behind a portal, counts as one.
bool offersImages(const QMimeData& data);

// The files of this machine that the data names, in order. None where a portal keeps them.
std::vector<std::filesystem::path> listedFiles(const QMimeData& data);

} // namespace lumora
