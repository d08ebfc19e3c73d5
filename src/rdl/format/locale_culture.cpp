// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/format/locale_culture.h"

#include <QLocale>
#include <algorithm>
#include <array>

#include "rdl/format/date_tokens.h"
#include "rdl/values/ascii.h"

namespace rdl {
namespace {

constexpr const char* NoCurrency = "\xC2\xA4";

struct Tags {
    QLocale::Language language = QLocale::AnyLanguage;
    QLocale::Script script = QLocale::AnyScript;
    QLocale::Territory territory = QLocale::AnyTerritory;
    bool known = false;
};

// "zh-Hant-TW", "es-ES_tradnl": what is no script and no region says nothing of numbers and dates.
Tags ReadTags(std::string_view name) {
    Tags tags;
    bool first = true;
    while (!name.empty()) {
        const std::size_t end = std::min(name.find_first_of("-_"), name.size());
        const QString tag = QString::fromUtf8(name.substr(0, end));
        name.remove_prefix(std::min(end + 1, name.size()));
        if (first) {
            first = false;
            tags.language = QLocale::codeToLanguage(tag.toLower());
            tags.known = tags.language != QLocale::AnyLanguage && tags.language != QLocale::C;
        } else if (tag.compare("CHT", Qt::CaseInsensitive) == 0) {
            tags.script = QLocale::TraditionalHanScript;  // as older reports have it
        } else if (tag.size() == 4 && tags.script == QLocale::AnyScript) {
            tags.script = QLocale::codeToScript(tag);
        } else if ((tag.size() == 2 || (tag.size() == 3 && tag[0].isDigit())) &&
                   tags.territory == QLocale::AnyTerritory) {
            tags.territory = QLocale::codeToTerritory(tag);
            tags.known = tags.known && tags.territory != QLocale::AnyTerritory;
        }
    }
    return tags;
}

// Spaces of every width are the one that numbers are read with; marks of direction would be taken for text.
QString Plain(QString text, QChar space) {
    for (const char16_t mark : {u'\u200E', u'\u200F', u'\u061C'}) {
        text.remove(QChar(mark));
    }
    text.replace(QChar(u'\u202F'), space);
    return text.replace(QChar(u'\u00A0'), space);
}

DateTokens TokensOf(const QString& pattern) {
    return ReadDateTokens(Plain(pattern, u' ').toStdString());
}

// The marks between the first two characters, `usual` where there are words.
std::string SeparatorOf(const DateTokens& tokens, const char* usual) {
    const auto isLetter = [](const DateToken& token) { return token.letter != 0; };
    const auto first = std::find_if(tokens.begin(), tokens.end(), isLetter);
    if (tokens.end() - first < 3 || std::next(first)->letter != 0) {
        return usual;
    }
    const std::string& text = std::next(first)->text;
    const bool marks = std::all_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x80 && !IsAsciiLetterOrDigit(c);
    });
    return marks ? text : usual;
}

DateTokens WithSeconds(DateTokens tokens, const std::string& separator) {
    const auto minutes = std::find_if(tokens.begin(), tokens.end(),
                                      [](const DateToken& token) { return token.letter == 'm'; });
    if (minutes != tokens.end()) {
        tokens.insert(std::next(minutes), {DateToken{0, separator}, DateToken{'s', "ss"}});
    }
    return tokens;
}

void TakeDates(const QLocale& locale, Culture& culture) {
    const DateTokens shortDate = TokensOf(locale.dateFormat(QLocale::ShortFormat));
    const DateTokens longDate = TokensOf(locale.dateFormat(QLocale::LongFormat));
    const DateTokens shortTime = TokensOf(locale.timeFormat(QLocale::ShortFormat));
    culture.dateSeparator = SeparatorOf(shortDate, "/");
    const auto hour = std::find_if(shortTime.begin(), shortTime.end(), [](const DateToken& token) {
        return token.letter == 'h' || token.letter == 'H';
    });
    culture.timeSeparator = SeparatorOf({hour, shortTime.end()}, ":");
    culture.shortDate = PatternOf(shortDate);
    culture.longDate = PatternOf(longDate);
    culture.shortTime = PatternOf(shortTime);
    culture.longTime = PatternOf(WithSeconds(shortTime, culture.timeSeparator));
    culture.monthDay = PatternOf(OnlyLetters(longDate, "dM"));
    culture.yearMonth = PatternOf(OnlyLetters(longDate, "My"));
    culture.am = locale.amText().toStdString();
    culture.pm = locale.pmText().toStdString();
    culture.firstDayOfWeek = locale.firstDayOfWeek() % 7;  // there Sunday is the seventh
    for (int i = 0; i < 12; ++i) {
        culture.months[i] = locale.standaloneMonthName(i + 1).toStdString();
        culture.genitiveMonths[i] = locale.monthName(i + 1).toStdString();
        culture.shortMonths[i] = locale.standaloneMonthName(i + 1, QLocale::ShortFormat).toStdString();
    }
    for (int i = 0; i < 7; ++i) {
        const int day = i == 0 ? 7 : i;
        culture.days[i] = locale.standaloneDayName(day).toStdString();
        culture.shortDays[i] = locale.standaloneDayName(day, QLocale::ShortFormat).toStdString();
    }
}

// Read from a long number, as Qt does not report the sizes.
void TakeGroups(const QLocale& locale, Culture& culture) {
    const QString number = locale.toString(1e15, 'f', 0);
    const QStringList groups = number.split(locale.groupSeparator());
    if (groups.size() >= 3 && locale.zeroDigit().size() == 1) {
        culture.groupSize = static_cast<int>(groups.back().size());
        culture.higherGroupSize = static_cast<int>(groups[groups.size() - 2].size());
    }
}

// Numbers are always written in ASCII digits, which Arabic and Persian texts have a point and a comma with.
void TakeNumbers(const QLocale& locale, Culture& culture) {
    if (locale.zeroDigit() == "0") {
        culture.decimalSeparator = locale.decimalPoint().toStdString();
        culture.groupSeparator = Plain(locale.groupSeparator(), u'\u00A0').toStdString();
        culture.percentSymbol = Plain(locale.percent(), u' ').toStdString();
    }
    culture.currencyDecimalSeparator = culture.decimalSeparator;
    culture.currencyGroupSeparator = culture.groupSeparator;
    TakeGroups(locale, culture);
}

// Qt does not report the place of the percent sign either. A number without a language's entry has it right
// after it.
void TakePercentPattern(std::string_view language, Culture& culture) {
    constexpr std::array WithBlank = {"be", "bs", "ca", "cs", "da",  "de", "dsb", "es", "fi",
                                      "fo", "fr", "gl", "hr", "hsb", "lb", "lt",  "mk", "nb",
                                      "nn", "rm", "ro", "sk", "sl",  "sv", "uk"};
    const bool blank = std::find(WithBlank.begin(), WithBlank.end(), language) != WithBlank.end();
    culture.percentPositivePattern = culture.percentNegativePattern = blank ? 0 : 1;
    if (language == "tr") {
        culture.percentPositivePattern = culture.percentNegativePattern = 2;
    } else if (language == "eu") {
        culture.percentPositivePattern = 3;
        culture.percentNegativePattern = 7;
    }
}

// Negative amounts have the sign in front of everything; in Dutch it stands at the number.
void TakeCurrencyPattern(const QLocale& locale, std::string_view language, Culture& culture) {
    const QString amount = Plain(locale.toCurrencyString(1.0, "$"), u' ').trimmed();
    const bool blank = amount.contains(u' ');
    if (amount.startsWith(u'$')) {
        culture.currencyPositivePattern = blank ? 2 : 0;
        culture.currencyNegativePattern = !blank ? 1 : language == "nl" ? 12 : 9;
    } else {
        culture.currencyPositivePattern = blank ? 3 : 1;
        culture.currencyNegativePattern = blank ? 8 : 5;
    }
}

void TakeCurrency(const QLocale& locale, Culture& culture) {
    const QString amount = locale.toCurrencyString(1.0, "$");
    const auto digits =
        std::count_if(amount.begin(), amount.end(), [](const QChar c) { return c.isDigit(); });
    culture.currencySymbol = locale.currencySymbol().toStdString();
    culture.currencyDecimals = static_cast<int>(digits) - 1;
}

QLocale RegionLocale(QLocale::Territory territory) {
    return {QLocale::AnyLanguage, QLocale::AnyScript, territory};
}

}  // namespace

std::string FullCultureName(std::string_view name) {
    const Tags tags = ReadTags(name);
    if (!tags.known) {
        return {};
    }
    const QLocale locale(tags.language, tags.script, tags.territory);
    const bool own = locale.language() == tags.language;
    const QLocale::Territory territory =
        tags.territory != QLocale::AnyTerritory ? tags.territory : locale.territory();
    if (!own && tags.territory == QLocale::AnyTerritory) {
        return {};
    }
    std::string full = QLocale::languageToCode(tags.language).toStdString();
    if (tags.script != QLocale::AnyScript && tags.language != QLocale::Chinese) {
        full += "-" + QLocale::scriptToCode(tags.script).toStdString();
    }
    return full + "-" + QLocale::territoryToCode(territory).toStdString();
}

std::optional<Culture> LocaleCulture(std::string_view fullName) {
    const Tags tags = ReadTags(fullName);
    const QLocale locale(tags.language, tags.script, tags.territory);
    const bool script = tags.script == QLocale::AnyScript || locale.script() == tags.script;
    if (!tags.known || locale.language() != tags.language || locale.territory() != tags.territory ||
        !script) {
        return std::nullopt;
    }
    const std::string language = QLocale::languageToCode(locale.language()).toStdString();
    Culture culture;
    culture.name = fullName;
    TakeNumbers(locale, culture);
    TakePercentPattern(language, culture);
    TakeCurrencyPattern(locale, language, culture);
    TakeCurrency(locale, culture);
    if (culture.currencySymbol.empty()) {
        TakeRegionCurrency(fullName, culture);
    }
    TakeDates(locale, culture);
    return culture;
}

void TakeRegionCurrency(std::string_view fullName, Culture& culture) {
    const QLocale::Territory territory = ReadTags(fullName).territory;
    // A part of the world (150) has no money of its own, and what Qt finds for it is that of some state
    // there.
    const QString code = QLocale::territoryToCode(territory);
    if (!code.isEmpty() && !code.front().isDigit()) {
        TakeCurrency(RegionLocale(territory), culture);
    }
    if (culture.currencySymbol.empty()) {
        culture.currencySymbol = NoCurrency;
    }
}

}  // namespace rdl
