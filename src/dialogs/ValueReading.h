// SPDX-License-Identifier: GPL-3.0-or-later
// Shows how a typed parameter value is understood on this machine, in words that are the same in every
// region.
#pragma once

#include <string>

#include "platform/contracts/report_engine.h"

enum class Numbers { Any, Whole };

// Returns "7 March 2026", "7 March 2026, 14:30:00", "14:30:00" or "1234.5" for a date or number field, and
// "not a date", "not a number" or, for a field of whole numbers, "not a whole number" for a text that cannot
// be converted. Returns an empty text for an empty `text` and for fields of any other type (`valueType` is a
// code such as report::NumberField).
std::string ReadingOf(int valueType, const std::string& text, Numbers numbers = Numbers::Any);

// Returns the sentence that refuses the text as a value of the parameter: it names both, and says what the
// parameter takes. `error` is the conversion's.
std::string ValueRefusal(const report::ParameterField& parameter, const std::string& text,
                         const RuntimeError& error);
