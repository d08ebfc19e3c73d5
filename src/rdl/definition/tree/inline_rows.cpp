// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/tree/inline_rows.h"

#include <cstring>

namespace rdl {
namespace {

using Number = std::uint32_t;

void Append(std::size_t number, std::string& record) {
    const auto stored = static_cast<Number>(number);
    record.append(reinterpret_cast<const char*>(&stored), sizeof(stored));
}

std::size_t NumberAt(std::string_view bytes) {
    Number number = 0;
    std::memcpy(&number, bytes.data(), sizeof(number));
    return number;
}

}  // namespace

std::uint32_t InlineRows::IndexOf(std::string_view name) {
    const auto [entry, isNew] = m_indexes.emplace(name, static_cast<std::uint32_t>(m_names.size()));
    if (isNew) {
        m_names.emplace_back(name);
    }
    return entry->second;
}

void InlineRows::Add(const Row& row) {
    m_record.clear();
    Append(0, m_record);
    for (const auto& [name, text] : row) {
        Append(IndexOf(name), m_record);
        Append(text.size(), m_record);
        m_record += text;
    }
    const auto length = static_cast<Number>(m_record.size() - sizeof(Number));
    std::memcpy(m_record.data(), &length, sizeof(length));
    m_spool.Append(m_record);
    ++m_count;
}

bool InlineRows::Reader::Next() {
    m_cells.clear();
    const std::string_view length = m_bytes.Next(sizeof(Number));
    if (length.empty()) {
        return false;
    }
    std::string_view record = m_bytes.Next(NumberAt(length));
    while (!record.empty()) {
        const std::size_t index = NumberAt(record);
        const std::size_t size = NumberAt(record.substr(sizeof(Number)));
        m_cells.emplace_back(index, record.substr(2 * sizeof(Number), size));
        record.remove_prefix(2 * sizeof(Number) + size);
    }
    return true;
}

}  // namespace rdl
