// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Dropped items that wait for their batch, in drop order, each once. Main thread only.
#pragma once

#include <filesystem>
#include <string>
#include <unordered_set>
#include <vector>

namespace lumora {

class PendingInputs
{
public:
    // Adds what is not waiting already and returns how many that were.
    int add(const std::vector<std::filesystem::path>& paths);
    // Hands over everything and is empty then.
    std::vector<std::filesystem::path> take();

    bool isEmpty() const { return m_paths.empty(); }

private:
    std::vector<std::filesystem::path> m_paths;
    std::unordered_set<std::string> m_keys; // exactly the keys of m_paths
};

} // namespace lumora
