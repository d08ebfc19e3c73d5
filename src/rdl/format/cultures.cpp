// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <map>
#include <mutex>
#include <vector>

#include "rdl/format/culture_table.h"
#include "rdl/format/format.h"
#include "rdl/format/locale_culture.h"
#include "rdl/values/ascii.h"

namespace rdl {
namespace {

// Without regard to case; _ counts as -.
bool SameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return AsciiLower(x == '_' ? '-' : x) == AsciiLower(y == '_' ? '-' : y);
    });
}

std::string_view LanguageOf(std::string_view name) {
    return name.substr(0, name.find_first_of("-_"));
}

std::string_view RegionOf(std::string_view name) {
    return name.substr(name.rfind('-') + 1);
}

void SplitList(const char* list, std::string* items, std::size_t count) {
    std::string_view rest = list;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t bar = rest.find('|');
        items[i] = rest.substr(0, bar);
        rest = bar == std::string_view::npos ? std::string_view() : rest.substr(bar + 1);
    }
}

const LanguageRow& LanguageRowOf(std::string_view code) {
    for (std::size_t i = 0; i < LanguageRowCount; ++i) {
        if (SameName(LanguageRows[i].code, code)) {
            return LanguageRows[i];
        }
    }
    return LanguageRows[0];
}

Culture MakeCulture(const RegionRow& region) {
    Culture culture;
    culture.name = region.name;
    culture.decimalSeparator = culture.currencyDecimalSeparator = region.decimalSeparator;
    culture.groupSeparator = region.groupSeparator;
    culture.currencyGroupSeparator = region.currencyGroupSeparator;
    culture.currencySymbol = region.currencySymbol;
    culture.currencyDecimals = region.currencyDecimals;
    culture.currencyPositivePattern = region.currencyPositive;
    culture.currencyNegativePattern = region.currencyNegative;
    culture.percentPositivePattern = region.percentPositive;
    culture.percentNegativePattern = region.percentNegative;
    culture.numberNegativePattern = region.numberNegative;
    culture.shortDate = region.shortDate;
    culture.longDate = region.longDate;
    culture.shortTime = region.shortTime;
    culture.longTime = region.longTime;
    culture.monthDay = region.monthDay;
    culture.yearMonth = region.yearMonth;
    culture.dateSeparator = region.dateSeparator;
    culture.timeSeparator = region.timeSeparator;
    culture.firstDayOfWeek = region.firstDayOfWeek;
    const LanguageRow& language = LanguageRowOf(LanguageOf(region.name));
    SplitList(language.months, culture.months, 12);
    SplitList(language.shortMonths, culture.shortMonths, 12);
    SplitList(*language.genitiveMonths ? language.genitiveMonths : language.months, culture.genitiveMonths,
              12);
    SplitList(language.days, culture.days, 7);
    SplitList(language.shortDays, culture.shortDays, 7);
    culture.am = language.am;
    culture.pm = language.pm;
    culture.era = language.era;
    return culture;
}

const std::vector<Culture>& Cultures() {
    static const std::vector<Culture> all = [] {
        std::vector<Culture> made;
        for (std::size_t i = 0; i < RegionRowCount; ++i) {
            made.push_back(MakeCulture(RegionRows[i]));
        }
        return made;
    }();
    return all;
}

const Culture* FindRow(std::string_view name) {
    for (const Culture& culture : Cultures()) {
        if (SameName(culture.name, name)) {
            return &culture;
        }
    }
    return nullptr;
}

// The main region of the language; null when there is no row of it.
const Culture* FindMainRow(std::string_view language) {
    for (const Culture& culture : Cultures()) {
        if (!language.empty() && SameName(LanguageOf(culture.name), language)) {
            return &culture;
        }
    }
    return nullptr;
}

// Returns the first row of the region; null if there is none.
const Culture* FindRegionRow(std::string_view region) {
    for (const Culture& culture : Cultures()) {
        if (culture.name.size() > region.size() && SameName(RegionOf(culture.name), region)) {
            return &culture;
        }
    }
    return nullptr;
}

// A language in a region that does not write it: its own words and dates, and the money of the region.
Culture AbroadCulture(const std::string& fullName) {
    const std::string_view language = LanguageOf(fullName);
    const Culture* row = FindMainRow(language);
    Culture culture = row ? *row : LocaleCulture(FullCultureName(language)).value_or(Cultures().front());
    culture.name = fullName;
    if (const Culture* home = FindRegionRow(RegionOf(fullName))) {
        culture.currencySymbol = home->currencySymbol;
        culture.currencyDecimals = home->currencyDecimals;
    } else {
        TakeRegionCurrency(fullName, culture);
    }
    return culture;
}

// Made once and never moved: callers hold on to them. There are no more than languages times regions.
const Culture& MadeCulture(const std::string& fullName) {
    static std::mutex lock;
    static std::map<std::string, Culture, std::less<>> made;
    const std::lock_guard guard(lock);
    auto found = made.find(fullName);
    if (found == made.end()) {
        std::optional<Culture> culture = LocaleCulture(fullName);
        found = made.emplace(fullName, culture ? *std::move(culture) : AbroadCulture(fullName)).first;
    }
    return found->second;
}

const Culture& Search(std::string_view name) {
    if (const Culture* row = FindRow(name)) {
        return *row;
    }
    const std::string_view language = LanguageOf(name);
    const Culture* main = FindMainRow(language);
    if (main && language.size() == name.size()) {
        return *main;
    }
    const std::string fullName = FullCultureName(name);
    if (fullName.empty()) {
        return main ? *main : Cultures().front();
    }
    const Culture* row = FindRow(fullName);
    return row ? *row : MadeCulture(fullName);
}

}  // namespace

const Culture& FindCulture(std::string_view name) {
    // Every text of a report asks for the same one or two.
    thread_local std::string lastName;
    thread_local const Culture* last = nullptr;
    if (!last || lastName != name) {
        last = &Search(name);
        lastName = name;
    }
    return *last;
}

}  // namespace rdl
