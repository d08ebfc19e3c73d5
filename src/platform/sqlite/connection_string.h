// Connection strings: pieces "Key=Value" between semicolons.
#pragma once

#include <string>
#include <string_view>

// The value of a key, which is looked for without regard to case; the last one of several counts. Blanks
// around keys and values do not count; a value in " or ' may hold semicolons, and the mark itself twice. A
// plain value holds those after which no key of the system's strings (Provider, Data Source, Persist Security
// Info) follows. Empty if there is none.
std::string ConnectionValue(std::string_view connectionString, std::string_view key);
