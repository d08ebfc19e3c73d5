// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/formula/function_table.h"
#include "rdl/values/characters.h"
#include "rdl/values/utf8.h"

namespace rdl::formula {

// Goes back to the last run only, so that a pattern full of stars costs no more than text times pattern.
bool MatchesFormulaLike(std::string_view text, std::string_view pattern) {
    const std::u32string where = Lower(ToUtf32(text));
    const std::u32string what = Lower(ToUtf32(pattern));
    constexpr std::size_t None = std::u32string::npos;
    std::size_t at = 0, wanted = 0, run = None, runAt = 0;
    while (at < where.size()) {
        const char32_t element = wanted < what.size() ? what[wanted] : U'\0';
        if (wanted < what.size() && (element == U'*' || element == U'%')) {
            run = wanted++;
            runAt = at;
        } else if (wanted < what.size() && (element == U'?' || element == U'_' || element == where[at])) {
            ++wanted;
            ++at;
        } else if (run != None) {
            wanted = run + 1;
            at = ++runAt;
        } else {
            return false;
        }
    }
    while (wanted < what.size() && (what[wanted] == U'*' || what[wanted] == U'%')) {
        ++wanted;
    }
    return wanted == what.size();
}

}  // namespace rdl::formula
