// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/TextConventions.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "platform/base/convert.h"
#include "platform/base/marks.h"
#include "platform/base/text.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/loop.h"

namespace cmFunc {

namespace {

std::string TwoDigits(int number) {
    return number < 10 ? "0" + std::to_string(number) : std::to_string(number);
}

// Returns the position (from 1) of `find` at or after `start`, or 0.
std::size_t InStr(std::size_t start, const std::string& text, const std::string& find) {
    if (start > text.size()) {
        return 0;
    }
    const std::size_t found = text.find(find, start - 1);
    return found == std::string::npos ? 0 : found + 1;
}

}  // namespace

std::string FormatDateText(DateValue value) {
    return std::to_string(Year(value)) + "-" + TwoDigits(Month(value)) + "-" + TwoDigits(Day(value));
}

std::string FormatMomentText(DateValue value) {
    return FormatDateText(value) + " " + TimeText(value);
}

void StripQuotes(EditableText& box) {
    box.Text(WithoutMark(box.Text()));
}

std::string CleanedRecipients(const std::string& list) {
    const bool isOpen = !list.empty() && list.back() != ';';
    return WithoutMark(isOpen ? list + ";" : list);
}

std::string GetDelimitedField(const std::string& text, int number, const std::string& delimiter) {
    const std::size_t step = FirstCharacters(delimiter, 1).size();
    std::size_t start = 1;
    for (int field = 2; field <= number; ++field) {
        const std::size_t found = InStr(start, text, delimiter);
        start = found == 0 ? 1 : found + step;
    }
    const std::size_t found = InStr(start, text, delimiter);
    // A delimiter at the very start of the text does not end the field (sic).
    const std::size_t end = found <= 1 ? text.size() : found - 1;
    if (start > end) {
        return {};
    }
    return text.substr(start - 1, end - start + 1);
}

std::string PackageOfKey(const std::string& key) {
    return key.substr(key.rfind(':') + 1);  // the whole key if it has no ":"
}

int CountRecipients(const std::string& list) {
    const auto separators = std::count(list.begin(), list.end(), ';');
    return separators == 0 ? 1 : static_cast<int>(separators);
}

std::vector<std::string> RecipientsOf(const std::string& list) {
    std::vector<std::string> names;
    const int count = CountRecipients(list);
    for (int number = 1; number <= count; ++number) {
        names.push_back(GetDelimitedField(list, number, ";"));
    }
    return names;
}

void PauseSeconds(double seconds) {
    constexpr double Slice = 0.05;
    const DateValue target =
        DateValue::FromSeconds(Now().Seconds() + static_cast<std::int64_t>(std::ceil(seconds)));
    // If the clock is set back meanwhile, the pause does not get longer.
    const auto latest =
        std::chrono::steady_clock::now() + std::chrono::duration<double>(std::ceil(seconds) + 1);
    while (target > Now() && std::chrono::steady_clock::now() < latest) {
        TheLoop().YieldFor(Slice);
    }
}

}  // namespace cmFunc
