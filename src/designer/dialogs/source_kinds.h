// SPDX-License-Identifier: GPL-3.0-or-later
// The kinds of data sources that a user picks from, and how their connect strings are written.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace designer {

enum class SourceShape { File, Server, Text };  // Text: the connect string itself is typed

struct SourceKind {
    std::string_view title, provider;
    SourceShape shape = SourceShape::Text;
    std::string_view filter = {};                            // of a file dialog
    std::string_view server = {}, port = {}, database = {};  // keys of the connect string; without
    std::string_view user = {}, password = {};               // a key of the port it follows a comma
    std::string_view tables = {};                            // a query for schema (or Null) and name
    std::string_view openQuote = {}, closeQuote = {};        // around a name
    std::string_view queryHint = {};                         // for a query that is no SQL
    bool IsSql() const { return !openQuote.empty(); }
    // Whether the source is its rows: there is nothing to select.
    bool IsRows() const { return !IsSql() && queryHint.empty(); }
    bool HasLogon() const { return !user.empty(); }
};

// The last one has no provider: the user types it.
std::span<const SourceKind> SourceKinds();
// Returns the kind of a provider by its name, without regard to case; that of any other provider is the last
// one.
const SourceKind& KindOf(std::string_view provider);

struct SourceFields {
    std::string file = {}, server = {}, port = {}, database = {}, text = {};
    std::string user = {}, password = {};
    bool keepsLogon = false;  // in the connect string
    bool isText = false;      // `text` counts, whatever the shape of the kind
};

std::string ConnectStringOf(const SourceKind& kind, const SourceFields& fields);
// Returns the fields that a connect string is written from; nullopt if it has parts that no field shows.
std::optional<SourceFields> FieldsOf(const SourceKind& kind, std::string_view connectString);

// Returns the query for all rows of a table; `schema` may be empty.
std::string QueryOfTable(const SourceKind& kind, const std::string& schema, const std::string& name);

}  // namespace designer
