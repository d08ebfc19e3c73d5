// When a schedule or a package runs next. Two sets of rules with different words, and different rules for the
// same word. The step is always from the stored date, never from today: missed runs are caught up one a poll.
// Words are compared exactly, case included.
#pragma once

#include <string>

#include "platform/contracts/dates.h"

namespace Global {

// Moves `NextDate` to the date after `stored`. A word that is not known ("WeekDays" and "Quartely" are none
// for a single schedule) leaves it as it is.
void NextSingleRun(const std::string& frequency, DateValue stored, DateValue& NextDate);

// "Monthly" is the first Monday of the next month; a word that is not known moves on by a month.
DateValue NextPackageRun(const std::string& frequency, DateValue stored);

}  // namespace Global
