// SPDX-License-Identifier: GPL-3.0-or-later
// The system's own connection strings, to its database: "Key=Value" pairs between semicolons, as OLE DB reads
// them. rdl/api/connect_string.h reads those of report files, which may also be ODBC's: there the first of
// several keys counts, { } are marks too, and a semicolon always ends a plain value.
#pragma once

#include <string>
#include <string_view>

struct QuotedValue {
    std::string value;
    bool isClosed = false;
};

// Removes and returns the value at the front of a text that begins with " or ', with its marks; the mark
// itself is doubled inside. A value that is not closed goes to the end.
QuotedValue TakeQuoted(std::string_view& text);

// Returns the value of a key, compared without regard to case; the last of several counts. Blanks around keys
// and values do not count. A value in " or ' may hold semicolons, and the mark itself doubled. A plain value
// continues over a semicolon that is not followed by a key of the system's strings (Provider, Data Source,
// Persist Security Info). Returns an empty text if the key is missing.
std::string ConnectionValue(std::string_view connectionString, std::string_view key);
