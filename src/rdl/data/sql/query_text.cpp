// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/query_text.h"

#include <algorithm>

#include "rdl/data/common/message.h"
#include "rdl/data/sql/scanner.h"
#include "rdl/format/format.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"

namespace rdl::data {
namespace {

constexpr std::size_t MostBinds = 30'000;  // SQLite takes 32,766, SQL Server less and says so itself

std::string_view WithoutPrefix(std::string_view name) {
    return !name.empty() && std::string_view("@:$?").find(name.front()) != std::string_view::npos
               ? name.substr(1)
               : name;
}

class Binder {
 public:
    Binder(std::string_view text, const std::vector<NamedValue>& values, ProviderKind provider,
           bool positional)
        : m_text(text),
          m_scanner(text, provider),
          m_values(values),
          m_provider(provider),
          m_positional(positional),
          m_known(values.size()),
          m_isMySqlCall(provider == ProviderKind::MySql && IsCall(text)) {}

    BoundQuery Run() {
        while (m_at < m_text.size()) {
            const std::size_t quoted = QuotedEnd();
            if (quoted > m_at && IsComment()) {
                m_result.text.push_back(' ');
                m_at = quoted;
            } else if (quoted > m_at) {
                Copy(quoted);
            } else if (m_positional && m_text[m_at] == '?') {
                ++m_at;
                NextPositional();
            } else if (!TakeNamed()) {
                Copy(m_at + 1);
            }
        }
        if (m_positional && m_nextValue != m_values.size()) {
            throw Error("the query has " + std::to_string(m_nextValue) +
                        " parameter marks, but the data set " + std::to_string(m_values.size()) +
                        " parameters");
        }
        return std::move(m_result);
    }

    bool HasNames() const {
        return std::any_of(m_known.begin(), m_known.end(), [](std::size_t first) { return first != 0; });
    }

    bool IsOneStatement() {
        bool ended = false;
        while (m_at < m_text.size()) {
            const char c = m_text[m_at];
            const std::size_t quoted = QuotedEnd();
            const bool comment = quoted > m_at && IsComment();
            if (ended && !comment && std::string_view("; \t\r\n").find(c) == std::string_view::npos) {
                return false;
            }
            ended = ended || (quoted == m_at && c == ';');
            m_at = std::max(quoted, m_at + 1);
        }
        return true;
    }

 private:
    void Copy(std::size_t end) {
        m_result.text.append(m_text.substr(m_at, end - m_at));
        m_at = end;
    }

    std::size_t QuotedEnd() const { return m_scanner.QuotedEnd(m_at); }
    bool IsComment() const { return m_scanner.IsComment(m_at); }

    bool TakeNamed() {
        const char mark = m_text[m_at];
        if ((mark != '@' && mark != ':' && mark != '$') || (m_at > 0 && IsNameByte(m_text[m_at - 1]))) {
            return false;
        }
        std::size_t end = m_at + 1;
        while (end < m_text.size() && IsNameByte(m_text[end])) {
            ++end;
        }
        const std::string_view name = m_text.substr(m_at + 1, end - m_at - 1);
        for (std::size_t i = 0; i < m_values.size(); ++i) {
            if (!name.empty() && EqualNoCase(WithoutPrefix(m_values[i].name), name)) {
                m_at = end;
                Put(i);
                return true;
            }
        }
        Copy(end);  // a variable of the statement's own
        return true;
    }

    void NextPositional() {
        if (m_nextValue >= m_values.size()) {
            throw Error("the query has more parameter marks than the data set has parameters (" +
                        std::to_string(m_values.size()) + ")");
        }
        Put(m_nextValue++);
    }

    void Put(std::size_t index) {
        const Value& value = m_values[index].value;
        // PostgreSQL's marks have numbers: the same one again means the same value.
        std::size_t& first = m_known[index];
        std::size_t number = m_result.binds.size() + 1;
        const bool again = m_provider == ProviderKind::PostgreSql && first != 0;
        if (again) {
            number = first;
        }
        first = number;
        if (value.kind() != Kind::List) {
            PutOne(value, number, again);
            return;
        }
        const std::size_t before = m_result.text.find_last_not_of(" \t\r\n");
        const bool inside =
            before != std::string::npos && (m_result.text[before] == '(' || m_result.text[before] == ',');
        m_result.text.append(inside ? "" : "(");
        if (value.AsList().empty()) {
            m_result.text.append("NULL");  // no value is in an empty list
        }
        for (const Value& one : value.AsList()) {
            m_result.text.append(number == first ? "" : ", ");
            PutOne(one, number++, again);
        }
        m_result.text.append(inside ? "" : ")");
    }

    void PutOne(const Value& value, std::size_t number, bool isBound) {
        if (m_provider == ProviderKind::PostgreSql) {
            m_result.text.append("$").append(std::to_string(number));
        } else if (m_isMySqlCall) {
            m_result.text.append(VariableMark).append(std::to_string(number));
        } else {
            m_result.text.push_back('?');
        }
        if (isBound) {
            return;
        }
        if (m_result.binds.size() >= MostBinds) {
            throw Error("the query has more than " + std::to_string(MostBinds) + " parameter values");
        }
        m_result.binds.push_back(value);
    }

    std::string_view m_text;
    SqlScanner m_scanner;
    const std::vector<NamedValue>& m_values;
    ProviderKind m_provider;
    bool m_positional;
    std::size_t m_at = 0, m_nextValue = 0;
    std::vector<std::size_t> m_known;  // by parameter: the number of its first mark, 0: none yet
    bool m_isMySqlCall;
    BoundQuery m_result;
};

// A procedure takes several values as one text with commas between them.
Value JoinedList(const Value& value) {
    if (value.kind() != Kind::List) {
        return value;
    }
    std::string text;
    for (const Value& one : value.AsList()) {
        text.append(&one == value.AsList().data() ? "" : ",").append(ToText(one, FindCulture("")));
    }
    return Value::Text(text);
}

// Schema and table of a server; each may be quoted already. A SQLite file has one schema only.
std::vector<std::string> NamePieces(std::string_view name, ProviderKind provider) {
    if (provider == ProviderKind::Sqlite) {
        return {std::string(name)};
    }
    std::vector<std::string> pieces(1);
    char close = '\0';
    for (const char c : name) {
        if (close == '\0' && c == '.') {
            pieces.emplace_back();
        } else if (close == '\0' && pieces.back().empty() && (c == '[' || c == '"' || c == '`')) {
            close = c == '[' ? ']' : c;
        } else if (c == close) {
            close = '\0';
        } else {
            pieces.back().push_back(c);
        }
    }
    return pieces;
}

void CheckProcedureName(std::string_view name) {
    for (const char c : name) {
        if (!IsNameByte(c) && std::string_view(".[]\"` $#").find(c) == std::string_view::npos) {
            throw Error("\"" + CleanText(name) + "\" is no name of a stored procedure");
        }
    }
}

}  // namespace

BoundQuery BindParameters(std::string_view text, const std::vector<NamedValue>& values,
                          ProviderKind provider) {
    if (values.empty()) {
        return {std::string(text), {}};
    }
    Binder named(text, values, provider, false);
    BoundQuery query = named.Run();
    // No name occurs: the parameters are marks, or the query leaves them alone.
    const bool hasMarks = !named.HasNames() && query.text.find('?') != std::string::npos;
    return hasMarks ? Binder(text, values, provider, true).Run() : query;
}

bool IsOneStatement(std::string_view text, ProviderKind provider) {
    return Binder(text, {}, provider, false).IsOneStatement();
}

bool IsCall(std::string_view text) {
    text = Trimmed(text);
    return text.size() > 4 && EqualNoCase(text.substr(0, 4), "call") && !IsNameByte(text[4]);
}

BoundQuery ProcedureCall(std::string_view name, const std::vector<NamedValue>& values,
                         ProviderKind provider) {
    name = Trimmed(name);
    CheckProcedureName(name);
    if (provider == ProviderKind::Sqlite) {
        throw Error("a SQLite database has no stored procedures (\"" + CleanText(name) + "\")");
    }
    BoundQuery query;
    std::string arguments;
    for (const NamedValue& value : values) {
        const std::string_view parameter = WithoutPrefix(value.name);
        arguments.append(arguments.empty() ? "" : ", ");
        if (provider == ProviderKind::SqlServer && !parameter.empty()) {
            if (!std::all_of(parameter.begin(), parameter.end(), IsNameByte)) {
                throw Error("\"" + CleanText(value.name) + "\" is no name of a parameter");
            }
            arguments.append("@").append(parameter).append(" = ");
        }
        query.binds.push_back(JoinedList(value.value));
        const std::string number = std::to_string(query.binds.size());
        if (provider == ProviderKind::PostgreSql) {
            arguments.append("$").append(number);
        } else if (provider == ProviderKind::MySql) {
            arguments.append(VariableMark).append(number);
        } else {
            arguments.append("?");
        }
    }
    switch (provider) {
        case ProviderKind::SqlServer:
            query.text = "EXEC " + std::string(name) + " " + arguments;
            break;
        case ProviderKind::PostgreSql:
            query.text = "SELECT * FROM " + std::string(name) + "(" + arguments + ")";
            break;
        case ProviderKind::MySql:
            query.text = "CALL " + std::string(name) + "(" + arguments + ")";
            break;
        default:
            query.text = "{CALL " + std::string(name) + "(" + arguments + ")}";
            break;
    }
    return query;
}

std::string TableQuery(std::string_view name, ProviderKind provider) {
    const char quote = provider == ProviderKind::MySql ? '`' : '"';
    std::string quoted;
    for (const std::string& piece : NamePieces(Trimmed(name), provider)) {
        quoted.append(quoted.empty() ? "" : ".").push_back(quote);
        for (const char c : piece) {
            quoted.append(c == quote ? 2 : 1, c);
        }
        quoted.push_back(quote);
    }
    return "SELECT * FROM " + quoted;
}

}  // namespace rdl::data
