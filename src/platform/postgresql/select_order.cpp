// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/select_order.h"

#include "platform/data_provider/statement_words.h"

void SelectOrder::Before(const Token& token, std::string& result) {
    if (m_part == Part::None && IsWord(&token, {"select"})) {
        m_start = result.size();
        return;
    }
    if (m_part == Part::List && IsWord(&token, {"from"})) {
        m_listEnd = m_end;
        m_part = Part::Sources;
        m_expectsSource = true;
        return;
    }
    if (m_part == Part::Sources && m_expectsSource && IsMark(&token, {"("})) {
        m_hasNoOrder = true;
        m_expectsSource = false;
    }
    if (m_part == Part::Orders && (IsMark(&token, {","}) || IsWord(&token, {"limit"}))) {
        EndOrderTerm(result);
    }
    if (m_part != Part::None && IsWord(&token, {"union", "except", "intersect", "limit", "offset"})) {
        m_hasNoOrder = true;
        m_part = Part::None;
    }
}

void SelectOrder::TakeSource(const Token& token) {
    if (IsMark(&token, {","}) || IsWord(&token, {"join"})) {
        m_expectsSource = true;
        m_mayRename = false;
    } else if (IsWord(&token, {"where"})) {
        m_part = Part::Conditions;
    } else if (IsWord(&token,
                      {"on", "inner", "left", "right", "full", "outer", "cross", "natural", "using"})) {
        m_mayRename = false;
    } else if (m_expectsSource && !NameOf(token).empty()) {
        m_sources.emplace_back(token.text);
        m_expectsSource = false;
        m_mayRename = true;
    } else if (m_mayRename && IsMark(&token, {"."})) {
        m_sources.pop_back();
        m_expectsSource = true;
    } else if (m_mayRename && !IsWord(&token, {"as"}) && !NameOf(token).empty()) {
        m_sources.back() = token.text;
        m_mayRename = false;
    }
}

void SelectOrder::After(const Token& token, const Token* next, std::string& result) {
    const std::size_t before = m_end;
    m_end = result.size();
    if (m_part == Part::None) {
        if (IsWord(&token, {"select"})) {
            m_part = Part::List;
            m_list = m_end;
        }
        return;
    }
    if (IsWord(&token, {"group"})) {
        m_part = Part::Groups;
        m_hasNoOrder = true;
    } else if (IsWord(&token, {"order"}) && IsWord(next, {"by"})) {
        m_part = Part::Orders;
        m_listEnd = m_listEnd == 0 ? before : m_listEnd;
    } else if (m_part == Part::List) {
        if (IsWord(&token, {"distinct"})) {
            m_isDistinct = true;
            m_list = m_end;
        } else if (IsWord(&token, {"count", "max", "min", "sum", "avg", "total"}) && IsMark(next, {"("})) {
            m_hasNoOrder = true;
        } else if (NameOf(token).empty() && !IsMark(&token, {","})) {
            m_isPlainList = false;
        }
    } else if (m_part == Part::Sources && !IsWord(&token, {"from"})) {
        TakeSource(token);
    } else if (m_part == Part::Orders) {
        if (IsWord(&token, {"by"}) || IsMark(&token, {","})) {
            m_term = m_end;
            m_termHoldsMoments = m_termFalls = m_termPlacesNulls = false;
        } else if (HoldsMoments(token) && EndsOrderTerm(next)) {
            m_termHoldsMoments = true;
            const std::string term(result.substr(m_term, m_end - m_term));
            result.replace(m_term, std::string::npos,
                           " " + MomentTerm(term.substr(term.find_first_not_of(' '))));
            m_end = result.size();
        }
        m_termFalls = m_termFalls || IsWord(&token, {"desc"});
        m_termPlacesNulls = m_termPlacesNulls || IsWord(&token, {"nulls"});
    }
}

// Null sorts below all values, as in the embedded database.
void SelectOrder::EndOrderTerm(std::string& result) {
    if (!m_termPlacesNulls) {
        const std::string_view place = m_termFalls ? " nulls last" : " nulls first";
        result.insert(m_end, place);
        m_end += place.size();
    }
}

std::string SelectOrder::RowOrder() const {
    std::string order;
    for (const std::string& source : m_sources) {
        std::string name(source);
        if (name.front() == '[' || name.front() == '`') {
            name = "\"" + name.substr(1, name.size() - 2) + "\"";
        }
        order += (order.empty() ? "" : ",") + name + ".rowid";
    }
    return order;
}

// select distinct a from t where c  ->  select a from (select distinct on (a) a,t.rowid from t where c
//                                       order by a,t.rowid) as firsts order by rowid
void SelectOrder::WrapDistinct(std::string& result) {
    const std::string list = result.substr(m_list, m_listEnd - m_list);
    const std::string rest = result.substr(m_listEnd, m_end - m_listEnd);
    const std::string wrapped = "select" + list + " from (select distinct on (" + list + ")" + list + "," +
                                RowOrder() + rest + " order by" + list + "," + RowOrder() +
                                ") as firsts order by rowid";
    result.replace(m_start, m_end - m_start, wrapped);
    m_end = m_start + wrapped.size();
}

void SelectOrder::End(std::string& result, Level level) {
    if (m_part == Part::Orders) {
        EndOrderTerm(result);
    }
    const bool matters = level == Level::Outermost || !m_limit.empty();
    if (m_part != Part::None && matters && !m_hasNoOrder && !m_sources.empty()) {
        if (!m_isDistinct) {
            const std::string order = (m_part == Part::Orders ? "," : " order by ") + RowOrder();
            result.insert(m_end, order);
            m_end += order.size();
        } else if (m_part != Part::Orders && m_isPlainList && m_sources.size() == 1) {
            WrapDistinct(result);
        }
    }
    if (!m_limit.empty()) {
        result.insert(m_end, " limit " + std::string(m_limit));
    }
}
