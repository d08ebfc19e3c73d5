// SPDX-License-Identifier: GPL-3.0-or-later
// Computes when a schedule or a package runs next. The two have different words, and different rules for the
// same word. The step starts at the stored date, never at today: missed runs are made up, one in each poll.
// Words are compared exactly, case included.
#pragma once

#include <string>

#include "platform/contracts/dates.h"

namespace Global {

// Sets `NextDate` to the date after `stored`. An unknown word leaves `NextDate` unchanged; "WeekDays" and
// "Quartely" are unknown here.
void NextSingleRun(const std::string& frequency, DateValue stored, DateValue& NextDate);

// "Monthly" is the first Monday of the next month. "Quartely" (sic) adds three months. An unknown word adds
// one month.
DateValue NextPackageRun(const std::string& frequency, DateValue stored);

}  // namespace Global
