// SPDX-License-Identifier: GPL-3.0-or-later
// Gives the rows of a select an order: that in which they were put in, unless the select says another.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data_provider/tokens.h"

// Follows the tokens of one select, or of what stands in one pair of parentheses.
class SelectOrder {
 public:
    // Call them before and after a token is written to the end of `result`. `next` is the token after it, or
    // null.
    void Before(const Token& token, std::string& result);
    void After(const Token& token, const Token* next, std::string& result);
    void SetLimit(std::string_view limit) { m_limit = limit; }
    // Call it after the last token. Adds the order and the limit; a select in parentheses without a limit
    // needs no order.
    enum class Level { Outermost, InParentheses };
    void End(std::string& result, Level level);

 private:
    enum class Part { None, List, Sources, Conditions, Groups, Orders };

    void TakeSource(const Token& token);
    void EndOrderTerm(std::string& result);
    std::string RowOrder() const;
    void WrapDistinct(std::string& result);

    Part m_part = Part::None;
    std::string_view m_limit;            // empty: no limit
    std::vector<std::string> m_sources;  // the tables, each by its alias if it has one
    bool m_expectsSource = false;
    bool m_mayRename = false;  // an alias of the last source may follow
    bool m_isDistinct = false;
    bool m_isPlainList = true;  // the list of columns has names and commas only
    bool m_hasNoOrder = false;  // aggregates, groups, several selects, rows of a subselect
    std::size_t m_start = 0;    // of the select in the result
    std::size_t m_list = 0;     // of the list of columns
    std::size_t m_listEnd = 0;
    std::size_t m_term = 0;  // of the present term of `order by`
    bool m_termHoldsMoments = false;
    bool m_termFalls = false;
    bool m_termPlacesNulls = false;
    std::size_t m_end = 0;  // after the last token
};

// Returns the moment that a text expression holds, in the dialect of the server.
std::string MomentTerm(std::string_view term);
