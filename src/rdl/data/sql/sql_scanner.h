// Where texts, quoted names and comments of a statement end, by the rules of each server.
#pragma once

#include <cstddef>
#include <string_view>

#include "rdl/data/common/provider.h"

namespace rdl::data {

class SqlScanner {
 public:
    SqlScanner(std::string_view text, ProviderKind dialect) : m_text(text), m_dialect(dialect) {}

    // The end of the string, name or comment that begins at `at`; `at` when none does.
    std::size_t QuotedEnd(std::size_t at) const;
    // What begins here is known to be a text, a quoted name or a comment. Hints and what MySQL runs out of
    // comments are none.
    bool IsComment(std::size_t at) const;
    // E'it\'s' of PostgreSQL.
    bool HasEscapeMark(std::size_t at) const;

 private:
    std::size_t After(std::string_view mark, std::size_t from) const;
    std::size_t LineEnd(std::size_t at) const;
    std::size_t BlockEnd(std::size_t at) const;
    std::size_t StringEnd(std::size_t begin, char close) const;
    std::size_t DollarEnd(std::size_t begin) const;
    bool IsDoubleMinus(std::string_view rest) const;

    std::string_view m_text;
    ProviderKind m_dialect;
};

}  // namespace rdl::data
