// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sqlite/sql_functions.h"

#include <sqlite3.h>

#include <string>
#include <string_view>

#include "platform/base/convert.h"
#include "platform/base/date_reader.h"
#include "platform/base/text.h"
#include "platform/contracts/dates.h"
#include "platform/contracts/regional.h"
#include "platform/data_provider/statement_text.h"

namespace {

constexpr std::size_t LongestPattern = 50'000;  // SQLite's own bound

std::string_view TextOf(sqlite3_value* value) {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return bytes == nullptr ? std::string_view()
                            : std::string_view(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

Variant VariantOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
            return static_cast<std::int64_t>(sqlite3_value_int64(value));
        case SQLITE_FLOAT:
            return sqlite3_value_double(value);
        default:
            return std::string(TextOf(value));
    }
}

void Fail(sqlite3_context* context, const RuntimeError& error) {
    *static_cast<std::optional<RuntimeError>*>(sqlite3_user_data(context)) = error;
    sqlite3_result_error(context, error.what(), -1);
}

// No exception may pass through SQLite, which is C.
template <typename Body>
void Guarded(sqlite3_context* context, Body body) {
    try {
        body();
    } catch (...) {
        Fail(context, CurrentError());
    }
}

bool AnyNull(int count, sqlite3_value** values) {
    for (int index = 0; index < count; ++index) {
        if (sqlite3_value_type(values[index]) == SQLITE_NULL) {
            return true;
        }
    }
    return false;
}

void ReturnText(sqlite3_context* context, std::string_view text) {
    sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void Left(sqlite3_context* context, int count, sqlite3_value** values) {
    Guarded(context, [&] {
        if (AnyNull(count, values)) {
            return;
        }
        const sqlite3_int64 wanted = sqlite3_value_int64(values[1]);
        if (wanted < 0) {
            throw RuntimeError(err::DataSyntax,
                               "The function left cannot take a negative number of characters");
        }
        ReturnText(context, FirstCharacters(TextOf(values[0]), static_cast<std::size_t>(wanted)));
    });
}

DateValue DateArgument(sqlite3_value* value) {
    try {
        return CDate(VariantOf(value));
    } catch (const RuntimeError&) {
        throw RuntimeError(err::DataTypeMismatch, "Data type mismatch in the statement; the value \"" +
                                                      std::string(TextOf(value)) + "\" is not a date");
    }
}

void DateDiff(sqlite3_context* context, int count, sqlite3_value** values) {
    Guarded(context, [&] {
        if (AnyNull(count, values)) {
            return;
        }
        if (!SameText(TextOf(values[0]), "d")) {
            throw RuntimeError(err::DataSyntax,
                               "The function datediff counts days only, by the interval \"d\"");
        }
        sqlite3_result_int64(context, DiffDays(DateArgument(values[1]), DateArgument(values[2])));
    });
}

void NowFunction(sqlite3_context* context, int /*count*/, sqlite3_value** /*values*/) {
    Guarded(context, [&] { ReturnText(context, NowText()); });
}

// `text like pattern` calls this with the pattern first. SQLite's own LIKE knows only A to Z.
void Like(sqlite3_context* context, int count, sqlite3_value** values) {
    Guarded(context, [&] {
        if (AnyNull(count, values)) {
            return;
        }
        char32_t escape = NoCharacter;
        if (count == 3) {
            const std::string_view text = TextOf(values[2]);
            if (text.empty() || CharacterAt(text, 0).length != text.size()) {
                throw RuntimeError(err::DataSyntax, "What stands after escape must be one character");
            }
            escape = CharacterAt(text, 0).code;
        }
        const std::string_view pattern = TextOf(values[0]);
        if (pattern.size() > LongestPattern) {
            throw RuntimeError(err::DataSyntax, "The pattern after like is too long");
        }
        sqlite3_result_int(context, LikeText(TextOf(values[1]), pattern, escape) ? 1 : 0);
    });
}

// SQLite's NOCASE knows only A to Z. This one sorts A to Z in the same way, so an index made by another
// program stays valid as long as no two texts differ in the case of another character.
int CompareNoCase(void* /*unused*/, int leftBytes, const void* left, int rightBytes, const void* right) {
    return CompareText({static_cast<const char*>(left), static_cast<std::size_t>(leftBytes)},
                       {static_cast<const char*>(right), static_cast<std::size_t>(rightBytes)});
}

// Compares texts as the moments that they hold. Texts without a moment are equal, and older than all others.
int CompareMoments(void* /*unused*/, int leftBytes, const void* left, int rightBytes, const void* right) {
    const auto moment = [](const void* text, int bytes) {
        return ReadDateText({static_cast<const char*>(text), static_cast<std::size_t>(bytes)}, Regional());
    };
    const auto first = moment(left, leftBytes);
    const auto second = moment(right, rightBytes);
    return static_cast<int>(second < first) - static_cast<int>(first < second);
}

}  // namespace

int RegisterDialect(sqlite3* handle, std::optional<RuntimeError>* failure) {
    struct Function {
        const char* name;
        int arguments;
        void (*body)(sqlite3_context*, int, sqlite3_value**);
    };
    for (const Function& function :
         {Function{"left", 2, Left}, Function{"datediff", 3, DateDiff}, Function{"now", 0, NowFunction},
          Function{"like", 2, Like}, Function{"like", 3, Like}}) {
        const int code = sqlite3_create_function_v2(handle, function.name, function.arguments, SQLITE_UTF8,
                                                    failure, function.body, nullptr, nullptr, nullptr);
        if (code != SQLITE_OK) {
            return code;
        }
    }
    const int code =
        sqlite3_create_collation_v2(handle, "nocase", SQLITE_UTF8, nullptr, CompareNoCase, nullptr);
    return code != SQLITE_OK
               ? code
               : sqlite3_create_collation_v2(handle, "moment", SQLITE_UTF8, nullptr, CompareMoments, nullptr);
}
