#include "platform/rdl/data/query_text.h"

#include <algorithm>
#include <cctype>

#include "platform/rdl/data/message.h"
#include "platform/rdl/error.h"

namespace rdl::data {
namespace {

constexpr std::size_t MostBinds = 30'000;  // SQLite takes 32,766, SQL Server less and says so itself

bool IsNameChar(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

std::string_view WithoutMark(std::string_view name) {
    return !name.empty() && std::string_view("@:$?").find(name.front()) != std::string_view::npos
               ? name.substr(1)
               : name;
}

class Binder {
 public:
    Binder(std::string_view text, const std::vector<NamedValue>& values, ProviderKind provider,
           bool positional)
        : m_text(text), m_values(values), m_provider(provider), m_positional(positional) {}

    BoundQuery Run() {
        while (m_at < m_text.size()) {
            const std::size_t quoted = QuotedEnd();
            if (quoted > m_at) {
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

    bool IsOneStatement() {
        bool ended = false;
        while (m_at < m_text.size()) {
            const char c = m_text[m_at];
            const std::size_t quoted = QuotedEnd();
            const bool comment = quoted > m_at && (c == '-' || c == '/' || c == '#');
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

    std::size_t After(std::string_view mark, std::size_t from) const {
        const std::size_t at = m_text.find(mark, from);
        return at == std::string_view::npos ? m_text.size() : at + mark.size();
    }

    // The end of a string or quoted name; the closing mark doubled is a part of it.
    std::size_t StringEnd(char close) const {
        const bool escapes = m_provider == ProviderKind::MySql && close != '`';
        for (std::size_t at = m_at + 1; at < m_text.size(); ++at) {
            if (escapes && m_text[at] == '\\') {
                ++at;
            } else if (m_text[at] == close) {
                if (at + 1 >= m_text.size() || m_text[at + 1] != close) {
                    return at + 1;
                }
                ++at;
            }
        }
        return m_text.size();
    }

    // The end of the string, name or comment that begins here; m_at when none does.
    std::size_t QuotedEnd() const {
        const std::string_view rest = m_text.substr(m_at);
        const bool brackets = m_provider != ProviderKind::PostgreSql && m_provider != ProviderKind::MySql;
        switch (rest.front()) {
            case '\'':
            case '"':
            case '`':
                return StringEnd(rest.front());
            case '[':
                return brackets ? StringEnd(']') : m_at;
            case '-':
                return rest.starts_with("--") ? After("\n", m_at) : m_at;
            case '#':
                return m_provider == ProviderKind::MySql ? After("\n", m_at) : m_at;
            case '/':
                return rest.starts_with("/*") ? After("*/", m_at + 2) : m_at;
            case '$':
                return m_provider == ProviderKind::PostgreSql ? DollarEnd() : m_at;
            case ':':
                return rest.starts_with("::") ? m_at + 2 : m_at;
            case '@':
                return rest.starts_with("@@") ? m_at + 2 : m_at;
            default:
                return m_at;
        }
    }

    // $$ ... $$ and $tag$ ... $tag$.
    std::size_t DollarEnd() const {
        std::size_t at = m_at + 1;
        while (at < m_text.size() && IsNameChar(m_text[at])) {
            ++at;
        }
        if (at >= m_text.size() || m_text[at] != '$') {
            return m_at;
        }
        const std::string_view tag = m_text.substr(m_at, at + 1 - m_at);
        return After(tag, at + 1);
    }

    bool TakeNamed() {
        const char mark = m_text[m_at];
        if ((mark != '@' && mark != ':' && mark != '$') || (m_at > 0 && IsNameChar(m_text[m_at - 1]))) {
            return false;
        }
        std::size_t end = m_at + 1;
        while (end < m_text.size() && IsNameChar(m_text[end])) {
            ++end;
        }
        const std::string_view name = m_text.substr(m_at + 1, end - m_at - 1);
        for (const NamedValue& value : m_values) {
            if (!name.empty() && EqualNoCase(WithoutMark(value.name), name)) {
                m_at = end;
                Put(value.value);
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
        Put(m_values[m_nextValue++].value);
    }

    void Put(const Value& value) {
        if (value.kind() != Kind::List) {
            m_result.text.push_back('?');
            Bind(value);
            return;
        }
        const std::size_t before = m_result.text.find_last_not_of(" \t\r\n");
        const bool inside =
            before != std::string::npos && (m_result.text[before] == '(' || m_result.text[before] == ',');
        m_result.text.append(inside ? "" : "(");
        if (value.AsList().empty()) {
            m_result.text.append("NULL");  // in an empty list is nothing
        }
        bool first = true;
        for (const Value& one : value.AsList()) {
            m_result.text.append(first ? "?" : ", ?");
            first = false;
            Bind(one);
        }
        m_result.text.append(inside ? "" : ")");
    }

    void Bind(const Value& value) {
        if (m_result.binds.size() >= MostBinds) {
            throw Error("the query has more than " + std::to_string(MostBinds) + " parameter values");
        }
        m_result.binds.push_back(value);
    }

    std::string_view m_text;
    const std::vector<NamedValue>& m_values;
    ProviderKind m_provider;
    bool m_positional;
    std::size_t m_at = 0, m_nextValue = 0;
    BoundQuery m_result;
};

}  // namespace

BoundQuery BindParameters(std::string_view text, const std::vector<NamedValue>& values,
                          ProviderKind provider) {
    if (values.empty()) {
        return {std::string(text), {}};
    }
    BoundQuery named = Binder(text, values, provider, false).Run();
    if (!named.binds.empty() || named.text != text) {
        return named;
    }
    // No name occurs: the parameters are marks, or the query leaves them alone.
    Binder positional(text, values, provider, true);
    const bool namesOnly = text.find('?') == std::string_view::npos;
    return namesOnly ? named : positional.Run();
}

bool IsOneStatement(std::string_view text, ProviderKind provider) {
    return Binder(text, {}, provider, false).IsOneStatement();
}

std::string ProcedureCall(std::string_view name, const std::vector<NamedValue>& values,
                          ProviderKind provider) {
    name = Trimmed(name);
    for (const char c : name) {
        if (!IsNameChar(c) && std::string_view(".[]\" ").find(c) == std::string_view::npos) {
            throw Error("\"" + CleanText(name) + "\" is no name of a stored procedure");
        }
    }
    if (provider == ProviderKind::Sqlite) {
        throw Error("a SQLite database has no stored procedures (\"" + CleanText(name) + "\")");
    }
    std::string arguments;
    for (const NamedValue& value : values) {
        const std::string_view parameter = WithoutMark(value.name);
        arguments.append(arguments.empty() ? "" : ", ");
        if (provider == ProviderKind::SqlServer && !parameter.empty()) {
            for (const char c : parameter) {
                if (!IsNameChar(c)) {
                    throw Error("\"" + CleanText(value.name) + "\" is no name of a parameter");
                }
            }
            arguments.append("@").append(parameter).append(" = ");
        }
        arguments.append("?");
    }
    switch (provider) {
        case ProviderKind::SqlServer:
            return "EXEC " + std::string(name) + " " + arguments;
        case ProviderKind::PostgreSql:
            return "SELECT * FROM " + std::string(name) + "(" + arguments + ")";
        case ProviderKind::MySql:
            return "CALL " + std::string(name) + "(" + arguments + ")";
        default:
            return "{CALL " + std::string(name) + "(" + arguments + ")}";
    }
}

std::string TableQuery(std::string_view name, ProviderKind provider) {
    const char quote = provider == ProviderKind::MySql ? '`' : '"';
    std::string quoted(1, quote);
    for (const char c : Trimmed(name)) {
        quoted.append(c == quote ? 2 : 1, c);
    }
    return "SELECT * FROM " + quoted + quote;
}

}  // namespace rdl::data
