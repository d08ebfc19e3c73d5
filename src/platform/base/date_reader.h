// SPDX-License-Identifier: GPL-3.0-or-later
// Reads date and time texts as users type them and as the database holds them.
#pragma once

#include <optional>
#include <string_view>

#include "platform/contracts/dates.h"
#include "platform/contracts/regional.h"

// Returns the year that is typed as a number of so many digits. One or two digits mean a year from 1930 to
// 2029. The report engine stands alone: TakeYear in rdl/format/parse_date.cpp has the same rule.
int FullYear(int number, int digits);

// Reads a date, a time, or both with a blank or a comma between them. Returns nullopt for any other text.
// Dates: 2003-12-31 in any region; day, month and year between equal separators / - or . in the region's
// order, or in another order if that one gives no date; 31 December 2003, Dec 31, 2003, 31-Dec-2003.
// Times: 9:05, 09:05:07, 9:05 PM, 9 pm.
std::optional<DateValue> ReadDateText(std::string_view text, const RegionalSettings& regional);
