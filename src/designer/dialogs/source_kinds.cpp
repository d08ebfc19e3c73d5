// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/source_kinds.h"

#include <algorithm>
#include <array>

#include "designer/new_report/source_text.h"
#include "platform/base/ascii.h"
#include "rdl/api/connect_string.h"

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
    SourceKind{.title = "Another provider", .provider = "", .openQuote = "\"", .closeQuote = "\""},
};

void Add(std::string& text, std::string_view key, const std::string& value) {
    if (!key.empty() && !value.empty()) {
        text += (text.empty() ? "" : ";") + std::string(key) + "=" + ConnectValue(value);
    }
}

std::string QuotedName(const SourceKind& kind, const std::string& name) {
    return InQuotes(name, kind.openQuote, kind.closeQuote);
}

}  // namespace

std::span<const SourceKind> SourceKinds() {
    return Kinds;
}

const SourceKind& KindOf(std::string_view provider) {
    const auto found = std::find_if(Kinds.begin(), Kinds.end() - 1, [&](const SourceKind& kind) {
        return SameAscii(kind.provider, provider);
    });
    return *found;
}

std::string ConnectStringOf(const SourceKind& kind, const SourceFields& fields) {
    std::string text;
    if (kind.shape == SourceShape::File && !fields.isText) {
        Add(text, "Data Source", fields.file);
        return text;
    }
    if (kind.shape == SourceShape::Server && !fields.isText) {
        const bool joins = kind.port.empty() && !fields.port.empty();
        Add(text, kind.server, joins ? fields.server + "," + fields.port : fields.server);
        Add(text, kind.port, fields.port);
        Add(text, kind.database, fields.database);
    } else {
        text = fields.text;
    }
    const bool hasUser = fields.isText && rdl::ConnectString(text).Has({kind.user});
    if (fields.keepsLogon && !fields.user.empty() && !hasUser) {
        Add(text, kind.user, fields.user);
        Add(text, kind.password, fields.password);
    }
    return text;
}

std::optional<SourceFields> FieldsOf(const SourceKind& kind, std::string_view connectString) {
    const rdl::ConnectString pairs(connectString);
    const auto valueOf = [&](std::string_view key) { return key.empty() ? std::string() : pairs.Get({key}); };
    SourceFields fields{.user = valueOf(kind.user), .password = valueOf(kind.password)};
    fields.keepsLogon = !fields.user.empty();
    if (kind.shape == SourceShape::File) {
        fields.file = valueOf("Data Source");
    } else if (kind.shape == SourceShape::Server) {
        fields.server = valueOf(kind.server);
        fields.port = valueOf(kind.port);
        fields.database = valueOf(kind.database);
        const std::size_t comma = fields.server.find(',');
        if (kind.port.empty() && comma != std::string::npos) {
            fields.port = fields.server.substr(comma + 1);
            fields.server.resize(comma);
        }
    } else {
        fields.text = connectString;
        fields.keepsLogon = false;
        return fields;
    }
    // What does not give the same text again would lose something.
    const bool isSame = ConnectStringOf(kind, fields) == Trim(connectString, " \t\r\n;");
    return isSame ? std::optional(std::move(fields)) : std::nullopt;
}

std::string QueryOfTable(const SourceKind& kind, const std::string& schema, const std::string& name) {
    return "select * from " + (schema.empty() ? std::string() : QuotedName(kind, schema) + ".") +
           QuotedName(kind, name);
}

}  // namespace designer
