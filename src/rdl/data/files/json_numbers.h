// SPDX-License-Identifier: GPL-3.0-or-later
// The numbers of a JSON document as they are written. A parser makes floating point of them, which has
// neither the zeros at the end of 1.10 nor more than 17 digits.
#pragma once

#include <QJsonValue>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rdl::data {

class JsonNumbers {
 public:
    // Reads the numbers (RFC 8259, section 6). Returns nullopt if one is damaged or too large for floating
    // point: a parser says where. `bytes` must outlive the result.
    static std::optional<JsonNumbers> Of(std::string_view bytes);

    // Returns the document with the index of each number in its place, counted from 0.
    const std::string& Indexed() const { return m_indexed; }
    // Returns a number of the document as it is written; `index` is a number of the indexed document.
    std::string_view Text(const QJsonValue& index) const;
    // Returns a value of the indexed document with its numbers, those in lists too, as a parser makes them.
    QJsonValue Parsed(const QJsonValue& indexed) const;

 private:
    std::string m_indexed;
    std::vector<std::string_view> m_numbers;
};

}  // namespace rdl::data
