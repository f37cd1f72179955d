// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Asks whether an existing output file may be replaced. Modal; main thread.
#pragma once

#include <filesystem>

class QAction;
class QWidget;

namespace lumora {

struct OverwriteAnswer
{
    enum class Choice { replace, skip, cancelBatch };

    Choice choice = Choice::skip;
    bool forRemaining = false; // of the batch

    bool operator==(const OverwriteAnswer&) const = default;
};

// Replaces exactly when the user chose "Replace". Closing the question, or ending the program while it
// stands, is skip for this file. `quit` works inside the question too, which otherwise takes all keys;
// `parent` may be hidden or minimised.
OverwriteAnswer askToOverwrite(const std::filesystem::path& output, QWidget* parent, QAction& quit);

} // namespace lumora
