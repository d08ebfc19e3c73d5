// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/pages/line_breaker.h"

#include <algorithm>
#include <iterator>

#include "rdl/values/utf8.h"

namespace rdl::layout {
namespace {

constexpr char32_t SoftHyphen = 0xAD;

bool IsBreakingSpace(char32_t c) {
    return c == ' ' || c == '\t' || c == 0x3000 || (c >= 0x2000 && c <= 0x200B && c != 0x2007);
}

bool IsIdeograph(char32_t c) {
    return (c >= 0x2E80 && c <= 0xA4CF && c != 0x3000) || (c >= 0xAC00 && c <= 0xD7AF) ||
           (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFF01 && c <= 0xFF60) || (c >= 0x20000 && c <= 0x3FFFF);
}

// Kana that belong to the one before: small vowels, and small tsu, ya, yu, yo, wa, ka and ke.
bool IsSmallKana(char32_t c) {
    static constexpr char32_t OfHiragana[] = {0x3041, 0x3043, 0x3045, 0x3047, 0x3049, 0x3063,
                                              0x3083, 0x3085, 0x3087, 0x308E, 0x3095, 0x3096};
    constexpr char32_t ToKatakana = 0x60;
    if (c >= 0x31F0 && c <= 0x31FF) {
        return true;
    }
    return std::any_of(std::begin(OfHiragana), std::end(OfHiragana),
                       [c](char32_t small) { return c == small || c == small + ToKatakana; });
}

// Never first in a line.
bool IsClosing(char32_t c) {
    static constexpr char32_t Marks[] = {'!',    ')',    ',',    '.',    ':',    ';',    '?',    ']',
                                         '}',    0x3001, 0x3002, 0x3005, 0x3009, 0x300B, 0x300D, 0x300F,
                                         0x3011, 0x3015, 0x3017, 0x3019, 0x301B, 0x303B, 0x309D, 0x309E,
                                         0x30FB, 0x30FC, 0x30FD, 0x30FE, 0xFF01, 0xFF09, 0xFF0C, 0xFF0E,
                                         0xFF1A, 0xFF1B, 0xFF1F, 0xFF3D, 0xFF5D, 0xFF60};
    return std::find(std::begin(Marks), std::end(Marks), c) != std::end(Marks) || IsSmallKana(c);
}

// French has a blank before them.
bool IsMarkAfterBlank(char32_t c) {
    return c == '!' || c == '?' || c == ';' || c == ':';
}

// Never last in a line.
bool IsOpening(char32_t c) {
    return c == '(' || c == '[' || c == '{' || c == 0x3008 || c == 0x300A || c == 0x300C || c == 0x300E ||
           c == 0x3010 || c == 0xFF08;
}

bool MayBreakBetween(char32_t left, char32_t right) {
    if (IsBreakingSpace(left)) {
        return !IsBreakingSpace(right) && !IsMarkAfterBlank(right);
    }
    if (IsBreakingSpace(right) || IsClosing(right) || IsOpening(left)) {
        return false;
    }
    if (IsIdeograph(left) || IsIdeograph(right)) {
        return true;
    }
    if (left == SoftHyphen) {
        return true;
    }
    const bool isHyphen = left == '-' || left == 0x2010 || left == 0x2013 || left == 0x2014;
    return isHyphen && right != '-' && !(right >= '0' && right <= '9');
}

}  // namespace

bool EndsWithSoftHyphen(std::string_view text) {
    return text.ends_with("\xC2\xAD");
}

void FindBreaks(std::string_view text, std::vector<BreakUnit>& units) {
    units.clear();
    BreakUnit unit;
    char32_t last = 0;
    const auto finish = [&](std::size_t end, bool hard) {
        unit.end = end;
        unit.hardBreak = hard;
        units.push_back(unit);
    };
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t next = at;
        const char32_t code = NextCharacter(text, next);
        if (code == '\n' || code == '\r' || code == 0x2028 || code == 0x2029) {
            finish(at, true);
            at = next;
            if (code == '\r' && at < text.size() && text[at] == '\n') {
                ++at;
            }
            unit = {at, at, at, false};
            last = 0;
            continue;
        }
        if (last != 0 && MayBreakBetween(last, code)) {
            finish(at, false);
            unit = {at, at, at, false};
        }
        at = next;
        if (!IsBreakingSpace(code)) {
            unit.visibleEnd = at;
        }
        last = code;
    }
    finish(text.size(), false);
}

}  // namespace rdl::layout
