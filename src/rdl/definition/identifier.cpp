// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/identifier.h"

#include <QtCore/QChar>
#include <QtCore/QList>
#include <QtCore/QString>

#include "rdl/values/ascii.h"

namespace rdl {
namespace {

constexpr qsizetype LongestShown = 60;

bool MayBeginName(char32_t character) {
    switch (QChar::category(character)) {
        case QChar::Letter_Uppercase:
        case QChar::Letter_Lowercase:
        case QChar::Letter_Titlecase:
        case QChar::Letter_Modifier:
        case QChar::Letter_Other:
        case QChar::Number_Letter:
            return true;
        default:
            return character == '_';
    }
}

bool MayContinueName(char32_t character) {
    switch (QChar::category(character)) {
        case QChar::Number_DecimalDigit:
        case QChar::Punctuation_Connector:
        case QChar::Mark_NonSpacing:
        case QChar::Mark_SpacingCombining:
            return true;
        default:
            return false;
    }
}

}  // namespace

bool IsIdentifier(std::string_view name) {
    bool isFirst = true;
    for (const uint character : QString::fromUtf8(name).toUcs4()) {
        if (!MayBeginName(character) && (isFirst || !MayContinueName(character))) {
            return false;
        }
        isFirst = false;
    }
    return !isFirst;
}

std::string NotAnIdentifier(std::string_view kind, std::string_view name) {
    QString shown = QString::fromUtf8(name);
    if (shown.size() > LongestShown) {
        shown = shown.left(LongestShown) + "...";
    }
    shown.replace('\'', '"');
    return std::string(kind) + " \"" + shown.toStdString() +
           "\": this is not a name: a letter or _ must come first, then letters, digits and _";
}

std::string DistinctNames::Add(const std::string& name) {
    const auto [known, isNew] = m_names.emplace(LowerAscii(name), name);
    if (isNew) {
        return {};
    }
    return known->second == name
               ? "there are two of this name"
               : "there is \"" + known->second + "\" as well, and names are compared without regard to case";
}

}  // namespace rdl
