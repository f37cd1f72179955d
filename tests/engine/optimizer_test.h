// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A test with folders of its own for inputs, temporary files and what goes to the Trash, and a user who gives
// one answer.
#pragma once

#include "engine/image_optimizer.h"
#include "tests/engine/local_services.h"
#include "tests/support/fake_encoder.h"
#include "tests/support/settings.h"

#include <filesystem>
#include <string>
#include <vector>

namespace lumora::test {

class OptimizerTest : public EncoderTest
{
protected:
    OptimizerTest()
    {
        installReal();
        m_services = localServices();
        m_services.moveToTrash = [this](const std::filesystem::path& url) -> Status {
            std::filesystem::rename(url, m_trash / url.filename());
            return Done{};
        };
        m_services.confirmOverwrite = [this](const std::filesystem::path& url) {
            m_asked.push_back(url.filename());
            return m_answer;
        };
        std::filesystem::create_directories(m_trash);
        std::filesystem::create_directories(m_in);
    }

    ProcessingResult optimize(const std::filesystem::path& file, const SettingsDraft& draft = {})
    {
        return ImageOptimizer::optimize(file, settings(draft), m_services);
    }

    std::string failureOf(const std::filesystem::path& file, const SettingsDraft& draft = {})
    {
        try {
            optimize(file, draft);
        } catch (const std::exception& error) {
            return error.what();
        }
        return "no failure";
    }

    std::filesystem::path photo(const std::string& name, const SaveOptions& options = {})
    {
        save(m_in / name, corneredPicture(64, 48), options);
        return m_in / name;
    }

    std::size_t filesIn(const std::filesystem::path& folder) const
    {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
    }

    std::filesystem::path m_in = m_folder / "in";
    std::filesystem::path m_trash = m_folder / "trash";
    std::vector<std::filesystem::path> m_asked;
    bool m_answer = true;
    OptimizerServices m_services;
};

} // namespace lumora::test
