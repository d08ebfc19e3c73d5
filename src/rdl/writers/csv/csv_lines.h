// SPDX-License-Identifier: GPL-3.0-or-later
// Lines of text files and their fields (RFC 4180, section 2).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rdl/api/output.h"
#include "rdl/values/value.h"

namespace rdl::writers {

// Appends a field, in quotation marks if it needs them. A text that begins with =, +, - or @ stays as it is:
// the file has the report's values, and RFC 4180 knows no formulas.
void AppendField(std::string& line, std::string_view text);

// Collects lines and passes them on in pieces.
class CsvLines {
 public:
    explicit CsvLines(Output& output) : m_output(output) {}
    void Add(const std::vector<std::string>& fields);
    void Add(const std::vector<std::string_view>& fields);
    // Passes the rest on. Call this after the last line.
    void Flush();

 private:
    template <typename Fields>
    void AddLine(const Fields& fields);

    Output& m_output;
    std::string m_text;
};

// Returns a value as programs read it: numbers with a point and without grouping, dates and times by
// ISO 8601 (a midnight as the date alone), true or false, bytes in base64, nothing for Null.
std::string PlainText(const Value& value);

}  // namespace rdl::writers
