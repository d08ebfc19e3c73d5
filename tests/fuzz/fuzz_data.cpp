// SPDX-License-Identifier: GPL-3.0-or-later
#include <string>

#include "fuzz/targets.h"
#include "rdl/data/files/csv_cursor.h"
#include "rdl/data/files/json_cursor.h"
#include "rdl/data/files/xml_cursor.h"
#include "rdl/data/sql/query_text.h"
#include "rdl/values/error.h"
#include "rdl/values/value.h"

namespace fuzz {
namespace {

void ReadAll(rdl::data::Cursor& cursor) {
    while (cursor.Next()) {
        for (std::size_t i = 0; i < cursor.Columns().size(); ++i) {
            cursor.Cell(i);
        }
    }
}

// Every parameter that is found becomes a bind, and what the text says to the server is one statement or
// none.
void Bind(std::string_view text) {
    using rdl::data::ProviderKind;
    const std::vector<rdl::data::NamedValue> values = {
        {"@a", rdl::Value::Integer(1)}, {":b", rdl::Value::Text("x")}, {"?", rdl::Value()}};
    for (const ProviderKind kind : {ProviderKind::Sqlite, ProviderKind::PostgreSql, ProviderKind::MySql}) {
        rdl::data::IsOneStatement(text, kind);
        rdl::data::BindParameters(text, values, kind);
    }
}

}  // namespace

void RunData(std::string_view input) {
    const std::size_t end = input.find('\n');
    const std::string_view first = input.substr(0, end);
    const std::string_view rest = end == std::string_view::npos ? std::string_view() : input.substr(end + 1);
    const std::string_view path = first.substr(std::min(first.size(), first.find(' ') + 1));
    try {
        if (first.starts_with("json")) {
            ReadAll(*rdl::data::OpenJson(rest, path));
        } else if (first.starts_with("xml")) {
            ReadAll(*rdl::data::OpenXml(rest, ""));
        } else if (first.starts_with("sql")) {
            Bind(rest);
        } else {
            ReadAll(*rdl::data::OpenCsv(rest, {}));
        }
    } catch (const rdl::Error&) {
        return;
    }
}

}  // namespace fuzz
