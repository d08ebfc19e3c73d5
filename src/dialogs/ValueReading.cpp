// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/ValueReading.h"

#include <array>
#include <cmath>

#include "platform/base/convert.h"
#include "shared/Global.h"

namespace {

constexpr std::array<const char*, 12> Months = {"January",   "February", "March",    "April",
                                                "May",       "June",     "July",     "August",
                                                "September", "October",  "November", "December"};

std::string DayInWords(DateValue value) {
    const DateParts parts = Split(value);
    return std::to_string(parts.day) + " " + Months.at(static_cast<std::size_t>(parts.month) - 1) + " " +
           std::to_string(parts.year);
}

// A moment on the zero day, 1899-12-30, is a time without a date.
std::string MomentInWords(DateValue value) {
    if (value.SecondOfDay() == 0) {
        return DayInWords(value);
    }
    return (value.DayNumber() == 0 ? "" : DayInWords(value) + ", ") + TimeText(value);
}

// Returns the user's word for the values of such a field.
std::string KindOf(const report::ParameterField& parameter) {
    switch (parameter.ValueType()) {
        case report::NumberField:
            return parameter.IsWholeNumber() ? "a whole number" : "a number";
        case report::BooleanField:
            return "True or False";
        case report::DateTimeField:
            return "a date or a time";
        default:
            return "a value that the report takes";
    }
}

}  // namespace

std::string ReadingOf(int valueType, const std::string& text, Numbers numbers) {
    const bool isDate = valueType == report::DateTimeField;
    if ((!isDate && valueType != report::NumberField) || text.find_first_not_of(' ') == std::string::npos) {
        return {};
    }
    const bool isWhole = numbers == Numbers::Whole;
    const char* const noNumber = isWhole ? "not a whole number" : "not a number";
    try {
        if (isDate) {
            return MomentInWords(CDate(text));
        }
        const double number = CDbl(text);
        return isWhole && number != std::floor(number) ? noNumber : Variant(number).Text();
    } catch (const RuntimeError&) {
        return isDate ? "not a date" : noNumber;
    }
}

std::string ValueRefusal(const report::ParameterField& parameter, const std::string& text,
                         const RuntimeError& error) {
    const std::string name = "parameter \"" + parameter.Name() + "\"";
    const std::string what = text.empty() ? "The " + name + " is empty, which is not "
                                          : "The value \"" + text + "\" of the " + name + " is not ";
    return Global::ErrorText(what + KindOf(parameter) + ". ", error);
}
