// SPDX-License-Identifier: GPL-3.0-or-later
// What every runner passes for the switches of a report (platform/contracts/report_engine.h).
#pragma once

namespace report {

inline constexpr bool WithoutPrompts = false;   // SetRunSwitches, Export
inline constexpr bool WithoutProgress = false;  // SetRunSwitches

}  // namespace report
