// SPDX-License-Identifier: GPL-3.0-or-later
// The words of frequencies as schedules and packages store them. They are compared exactly, case included.
#pragma once

#include <array>
#include <string_view>

namespace Global::frequencies {

inline constexpr std::string_view Daily = "Daily";
inline constexpr std::string_view Weekdays = "Weekdays";
inline constexpr std::string_view Weekends = "Weekends";
inline constexpr std::string_view Weekly = "Weekly";
inline constexpr std::string_view Monthly = "Monthly";
inline constexpr std::string_view Quarterly = "Quartely";  // sic

// Report Properties stores this word, which NextSingleRun does not know (sic).
inline constexpr std::string_view WeekDaysOfProperties = "WeekDays";

// All that are stored for either, in the order in which messages name them.
inline constexpr std::array OfSchedules = {Daily, Weekdays, WeekDaysOfProperties, Weekends, Weekly, Monthly};
inline constexpr std::array OfPackages = {Daily, Weekly, Monthly, Quarterly};

}  // namespace Global::frequencies
