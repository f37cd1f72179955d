// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The cards of the preferences window, each with its rows. Settings and statistics must outlive them.
#pragma once

#include <functional>

namespace lumora {

class LumoraSettings;
class PreferenceSection;
class StatsStore;

PreferenceSection* makeOutputSection(LumoraSettings& settings);
PreferenceSection* makeOptimizationSection(LumoraSettings& settings);
PreferenceSection* makeDestinationSection(LumoraSettings& settings, std::function<void()> chooseFolder);
PreferenceSection* makeMiscellaneousSection(LumoraSettings& settings);
// `confirm` is asked before the figures go.
PreferenceSection* makeLifetimeStatsSection(StatsStore& stats, std::function<bool()> confirm);
PreferenceSection* makeSafetySection(LumoraSettings& settings, const std::function<void()>& forget);

} // namespace lumora
