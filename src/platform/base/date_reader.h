// Reads the date and time texts that people and the data hold.
#pragma once

#include <optional>
#include <string_view>

#include "platform/contracts/dates.h"
#include "platform/contracts/regional.h"

// A date, a time or a date and a time behind a blank or a comma; nothing when the text is none of them.
// Dates: 2003-12-31 in any region; day, month and year between equal separators / - or . in the region's
// order, or in another order where that one makes no date; 31 December 2003, Dec 31, 2003, 31-Dec-2003.
// Times: 9:05, 09:05:07, 9:05 PM, 9 pm.
std::optional<DateValue> ReadDateText(std::string_view text, const RegionalSettings& regional);
