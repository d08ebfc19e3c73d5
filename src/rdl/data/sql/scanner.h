// SPDX-License-Identifier: GPL-3.0-or-later
// Finds the ends of strings, quoted names and comments by the rules of each server.
#pragma once

#include <cstddef>
#include <string_view>

#include "rdl/data/common/provider.h"

namespace rdl::data {

class SqlScanner {
 public:
    SqlScanner(std::string_view text, ProviderKind dialect) : m_text(text), m_dialect(dialect) {}

    // Returns the end of the string, quoted name or comment that starts at `at`; `at` if none does.
    std::size_t QuotedEnd(std::size_t at) const;
    // Requires that a string, quoted name or comment starts at `at`. Hints and comments that MySQL executes
    // do not count as comments.
    bool IsComment(std::size_t at) const;
    // Whether a string with escapes of PostgreSQL starts here: E'it\'s'.
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
