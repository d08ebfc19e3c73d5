// How a typed parameter value is understood on this machine, in words that read alike in every region.
#pragma once

#include <string>

// "7 March 2026", "7 March 2026, 14:30:00", "14:30:00" or "1234.5" for a field of a date or a number; what
// the field does not take is reported as "not a date", "not a number" or, where it takes nothing else, "not a
// whole number". Empty for an empty text and for every other type of field (see report::NumberField).
std::string ReadingOf(int valueType, const std::string& text, bool wholeNumbersOnly = false);
