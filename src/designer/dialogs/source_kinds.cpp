// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/source_kinds.h"

#include <array>

#include "designer/new_report/source_text.h"

namespace designer {
namespace {

constexpr std::array Kinds = {
    SourceKind{.title = "SQLite file",
               .provider = "SQLITE",
               .shape = SourceShape::File,
               .filter = "SQLite files (*.db *.db3 *.sqlite *.sqlite3);;All files (*)",
               .tables = "select null, name from sqlite_master where type in ('table', 'view') and "
                         "name not like 'sqlite~_%' escape '~' order by name",
               .openQuote = "\"",
               .closeQuote = "\""},
    SourceKind{.title = "CSV or text file",
               .provider = "CSV",
               .shape = SourceShape::File,
               .filter = "Text files (*.csv *.txt *.tsv);;All files (*)"},
    SourceKind{.title = "PostgreSQL",
               .provider = "PostgreSQL",
               .shape = SourceShape::Server,
               .server = "Host",
               .port = "Port",
               .database = "Database",
               .user = "Username",
               .password = "Password",
               .tables = "select table_schema, table_name from information_schema.tables where table_schema "
                         "not in ('pg_catalog', 'information_schema') order by 1, 2",
               .openQuote = "\"",
               .closeQuote = "\""},
    SourceKind{.title = "MySQL or MariaDB",
               .provider = "MySQL",
               .shape = SourceShape::Server,
               .server = "Server",
               .port = "Port",
               .database = "Database",
               .user = "Uid",
               .password = "Pwd",
               .tables = "select null, table_name from information_schema.tables where table_schema = "
                         "database() order by 2",
               .openQuote = "`",
               .closeQuote = "`"},
    SourceKind{.title = "SQL Server",
               .provider = "SQL",
               .shape = SourceShape::Server,
               .server = "Data Source",
               .database = "Initial Catalog",
               .user = "User ID",
               .password = "Password",
               .tables = "select table_schema, table_name from information_schema.tables order by 1, 2",
               .openQuote = "[",
               .closeQuote = "]"},
    SourceKind{.title = "ODBC",
               .provider = "ODBC",
               .user = "Uid",
               .password = "Pwd",
               .openQuote = "\"",
               .closeQuote = "\""},
    SourceKind{.title = "XML file",
               .provider = "XML",
               .shape = SourceShape::File,
               .filter = "XML files (*.xml);;All files (*)",
               .queryHint = "Orders {}/Order {@ID(Integer), Total(Decimal)}"},
    SourceKind{.title = "JSON file",
               .provider = "JSON",
               .shape = SourceShape::File,
               .filter = "JSON files (*.json);;All files (*)",
               .queryHint = "$.orders[*]"},
};

void Add(std::string& text, std::string_view key, const std::string& value) {
    if (!key.empty() && !value.empty()) {
        text += (text.empty() ? "" : ";") + std::string(key) + "=" + ConnectValue(value);
    }
}

std::string QuotedName(const SourceKind& kind, const std::string& name) {
    std::string quoted(kind.openQuote);
    for (const char c : name) {
        quoted += c;
        quoted += c == kind.closeQuote.front() ? kind.closeQuote : std::string_view();
    }
    return quoted + std::string(kind.closeQuote);
}

}  // namespace

std::span<const SourceKind> SourceKinds() {
    return Kinds;
}

std::string ConnectStringOf(const SourceKind& kind, const SourceFields& fields) {
    std::string text;
    if (kind.shape == SourceShape::File) {
        Add(text, "Data Source", fields.file);
        return text;
    }
    if (kind.shape == SourceShape::Server) {
        const bool joins = kind.port.empty() && !fields.port.empty();
        Add(text, kind.server, joins ? fields.server + "," + fields.port : fields.server);
        Add(text, kind.port, fields.port);
        Add(text, kind.database, fields.database);
    } else {
        text = fields.text;
    }
    if (fields.keepsLogon && !fields.user.empty()) {
        Add(text, kind.user, fields.user);
        Add(text, kind.password, fields.password);
    }
    return text;
}

std::string QueryOfTable(const SourceKind& kind, const std::string& schema, const std::string& name) {
    return "select * from " + (schema.empty() ? std::string() : QuotedName(kind, schema) + ".") +
           QuotedName(kind, name);
}

}  // namespace designer
