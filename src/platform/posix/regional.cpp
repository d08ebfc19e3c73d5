// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/regional.h"

#include <langinfo.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <cstddef>
#include <optional>
#include <string>

namespace {

std::optional<RegionalSettings>& Chosen() {
    static std::optional<RegionalSettings> chosen;
    return chosen;
}

struct Region {
    std::string name;         // de_DE.UTF-8; empty for the C locale
    std::string datePattern;  // of strftime
};

// Reads the environment's locale without setting it: the process keeps the C locale, so that numbers in files
// keep their point.
Region FromEnvironment() {
    const locale_t locale = newlocale(LC_TIME_MASK, "", nullptr);
    if (locale == nullptr) {
        return {};
    }
    const Region region{nl_langinfo_l(_NL_LOCALE_NAME(LC_TIME), locale), nl_langinfo_l(D_FMT, locale)};
    freelocale(locale);
    const bool noRegion = region.name == "C" || region.name == "POSIX" || region.name.substr(0, 2) == "C.";
    return noRegion ? Region{} : region;
}

// Removes the conversion at the front of the pattern and returns its character, or '\0'.
char TakeConversion(std::string_view& pattern) {
    if (pattern.empty() || pattern.front() != '%') {
        return '\0';
    }
    const std::size_t at = pattern.find_first_not_of("-_0EO", 1);
    if (at == std::string_view::npos) {
        return '\0';
    }
    const char conversion = pattern[at];
    pattern.remove_prefix(at + 1);
    return conversion;
}

}  // namespace

RegionalSettings RegionalFromPattern(std::string_view pattern) {
    if (pattern == "%D") {
        return {DateOrder::MonthDayYear, '/'};
    }
    std::array<char, 3> part{};
    std::array<char, 2> separator{};
    for (std::size_t index = 0; index < part.size(); ++index) {
        part[index] = TakeConversion(pattern);
        if (index < separator.size()) {
            separator[index] = pattern.empty() ? '\0' : pattern.front();
            pattern.remove_prefix(pattern.empty() ? 0 : 1);
        }
    }
    const bool oneSeparator =
        separator[0] == separator[1] && (separator[0] == '/' || separator[0] == '-' || separator[0] == '.');
    if (!oneSeparator || !pattern.empty()) {
        return {};
    }
    const auto isDay = [](char conversion) { return conversion == 'd' || conversion == 'e'; };
    const auto isYear = [](char conversion) { return conversion == 'y' || conversion == 'Y'; };
    if (isDay(part[0]) && part[1] == 'm' && isYear(part[2])) {
        return {DateOrder::DayMonthYear, separator[0]};
    }
    if (part[0] == 'm' && isDay(part[1]) && isYear(part[2])) {
        return {DateOrder::MonthDayYear, separator[0]};
    }
    if (isYear(part[0]) && part[1] == 'm' && isDay(part[2])) {
        return {DateOrder::YearMonthDay, separator[0]};
    }
    return {};
}

const RegionalSettings& Regional() {
    if (!Chosen()) {
        const Region region = FromEnvironment();
        Chosen() = region.name.empty() ? RegionalSettings{} : RegionalFromPattern(region.datePattern);
    }
    return *Chosen();
}

std::string RegionTag() {
    std::string tag = FromEnvironment().name;
    tag.erase(std::min(tag.find_first_of(".@"), tag.size()));
    std::replace(tag.begin(), tag.end(), '_', '-');
    return tag.empty() ? "en-US" : tag;
}

void KeepNumbersPlain() {
    std::setlocale(LC_NUMERIC, "C");
}

void SetRegional(const RegionalSettings& settings) {
    Chosen() = settings;
}
