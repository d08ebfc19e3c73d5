#include "platform/rdl/data/reading_statement.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <vector>

#include "platform/rdl/data/message.h"
#include "platform/rdl/data/sql_scanner.h"
#include "platform/rdl/error.h"

namespace rdl::data {
namespace {

struct Token {
    std::string text;     // words in small letters; a mark as it is
    bool isWord = false;  // neither quoted nor a mark
    bool isName = false;  // quoted
};

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

[[noreturn]] void Refuse(const std::string& word) {
    throw Error("a report only reads, and its query has the word \"" + CleanText(word) + "\"");
}

bool BeginsName(char c) {
    return c == '#' || c == '@' || IsNameByte(c);
}

// Words, quoted names and marks, without texts and comments.
std::vector<Token> TokensOf(std::string_view text, ProviderKind dialect) {
    const SqlScanner scanner(text, dialect);
    std::vector<Token> tokens;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t quoted = scanner.QuotedEnd(at);
        if (text.substr(at).starts_with("/*!") || text.substr(at).starts_with("/*M!")) {
            throw Error("a report only reads, and its query has a comment that the server runs");
        }
        if (quoted > at) {
            const bool isName = IsOneOf(text.substr(at, 1), {"\"", "`", "["});
            if (isName) {
                tokens.push_back({std::string(text.substr(at + 1, quoted - at - 2)), false, true});
            }
            at = quoted;
            continue;
        }
        std::size_t end = at + 1;
        if (BeginsName(text[at])) {
            while (end < text.size() && (IsNameByte(text[end]) || text[end] == '#')) {
                ++end;
            }
            tokens.push_back({LowerAscii(text.substr(at, end - at)), true, false});
        } else if (static_cast<unsigned char>(text[at]) > ' ') {
            tokens.push_back({std::string(1, text[at]), false, false});
        }
        at = end;
    }
    return tokens;
}

const Token& At(const std::vector<Token>& tokens, std::size_t index) {
    static const Token End;
    return index < tokens.size() ? tokens[index] : End;
}

// #rows and @rows are the batch's own and gone with it.
bool IsOwnTable(const Token& name) {
    return (name.isWord || name.isName) && (name.text.starts_with('#') || name.text.starts_with('@'));
}

// Where the name of the table stands that a writing word at `index` writes to; `index` itself when it does
// not write.
std::size_t TargetOf(const std::vector<Token>& tokens, std::size_t index) {
    const std::string& word = tokens[index].text;
    const std::string& next = At(tokens, index + 1).text;
    if (word == "into") {
        return index + 1;
    }
    if (IsOneOf(word, {"insert", "merge"}) && next != "join") {
        return next == "into" ? index + 2 : index + 1;
    }
    if (word == "delete") {
        return next == "from" ? index + 2 : index + 1;
    }
    // An index of a table that may not be written to cannot be had either: the server refuses it to a reader.
    if (word == "create" && IsOneOf(next, {"index", "unique", "clustered", "nonclustered"})) {
        return index;
    }
    if (IsOneOf(word, {"create", "drop", "alter", "truncate"})) {
        return next == "table" ? index + (At(tokens, index + 2).text == "if" ? 4 : 2) : index + 1;
    }
    if (word == "update" && next != "(" && next != "of") {
        return index + 1;
    }
    return index;
}

// `SELECT ... FOR UPDATE` locks rows and does not write.
bool IsForUpdate(const std::vector<Token>& tokens, std::size_t index) {
    return tokens[index].text == "update" && index > 0 && tokens[index - 1].text == "for";
}

void CheckBatch(const std::vector<Token>& tokens) {
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const Token& token = tokens[i];
        if (!token.isWord || IsForUpdate(tokens, i)) {
            continue;
        }
        if (IsOneOf(token.text,
                    {"grant", "revoke", "deny", "backup", "restore", "bulk", "openrowset", "opendatasource",
                     "shutdown", "kill", "reconfigure", "dbcc", "xp_cmdshell", "sp_configure"})) {
            Refuse(token.text);
        }
        const std::size_t target = TargetOf(tokens, i);
        if (target > i && !IsOwnTable(At(tokens, target))) {
            Refuse(token.text);
        }
    }
}

void CheckStatement(const std::vector<Token>& tokens, ProviderKind dialect) {
    const auto first = std::find_if(tokens.begin(), tokens.end(), [](const Token& token) {
        return !IsOneOf(token.text, {"(", "{", "?", "="});  // {? = call name} of ODBC
    });
    if (first == tokens.end()) {
        return;  // the server says what it thinks of an empty query
    }
    const bool calls = first->isWord && dialect != ProviderKind::Sqlite && first->text == "call";
    if (!calls && (!first->isWord || !IsOneOf(first->text, {"select", "with", "values", "table", "show",
                                                            "describe", "desc", "explain"}))) {
        Refuse(first->text);
    }
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const Token& token = tokens[i];
        const std::string& next = At(tokens, i + 1).text;
        if (token.isWord &&
            (token.text == "into" || (token.text == "delete" && next == "from") ||
             (token.text == "update" && At(tokens, i + 2).text == "set") ||
             (token.text == "explain" && next == "analyze") || (token.text == "load_file" && next == "("))) {
            Refuse(token.text);
        }
    }
}

}  // namespace

void CheckReads(std::string_view text, ProviderKind dialect) {
    const std::vector<Token> tokens = TokensOf(text, dialect);
    if (dialect == ProviderKind::SqlServer) {
        CheckBatch(tokens);
    } else {
        CheckStatement(tokens, dialect);
    }
}

}  // namespace rdl::data
