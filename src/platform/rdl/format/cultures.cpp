#include <algorithm>
#include <vector>

#include "platform/rdl/format/culture_table.h"
#include "platform/rdl/format/format.h"

namespace rdl {
namespace {

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// Without regard to case; _ counts as -.
bool SameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Lower(x == '_' ? '-' : x) == Lower(y == '_' ? '-' : y); });
}

std::string_view LanguageOf(std::string_view name) {
    return name.substr(0, name.find_first_of("-_"));
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

const Culture& Search(std::string_view name) {
    const Culture* main = nullptr;
    const std::string_view language = LanguageOf(name);
    for (const Culture& culture : Cultures()) {
        if (SameName(culture.name, name)) {
            return culture;
        }
        if (!main && !language.empty() && SameName(LanguageOf(culture.name), language)) {
            main = &culture;
        }
    }
    return main ? *main : Cultures().front();
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
