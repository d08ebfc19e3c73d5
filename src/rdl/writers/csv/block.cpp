// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/csv/block.h"

#include <algorithm>
#include <cstring>

namespace rdl::writers {
namespace {

// Appends groups of seven bits, the lowest first. All but the last have the highest bit set.
inline void AppendNumber(std::string& bytes, std::uint64_t number) {
    for (; number >= 0x80; number >>= 7) {
        bytes += static_cast<char>(number | 0x80);
    }
    bytes += static_cast<char>(number);
}

// Reads what AppendNumber wrote.
class Reader {
 public:
    explicit Reader(std::string_view bytes) : m_at(bytes.data()) {}
    std::uint64_t Next() {
        std::uint64_t number = 0;
        for (unsigned shift = 0;; shift += 7) {
            const auto byte = static_cast<unsigned char>(*m_at++);
            number |= std::uint64_t{byte & 0x7Fu} << shift;
            if (byte < 0x80) {
                return number;
            }
        }
    }
    std::string_view Text(std::size_t length) {
        const std::string_view text(m_at, length);
        m_at += length;
        return text;
    }

 private:
    const char* m_at;
};

// How many values at the beginning of `values` are those of `before`.
template <typename Values>
std::size_t Same(const Values& values, const Values& before) {
    std::size_t same = 0;
    while (same < values.size() && same < before.size() && values[same] == before[same]) {
        ++same;
    }
    return same;
}

// Records begin as the ones before them do, with the values of outer groups. What is the same is not stored.
void AppendRecord(std::string& bytes, const CsvRecord& record, const CsvRecord& before) {
    AppendNumber(bytes, static_cast<std::uint64_t>(record.place + 1));
    const std::size_t groups = Same(record.groups, before.groups), cells = Same(record.cells, before.cells);
    AppendNumber(bytes, groups);
    AppendNumber(bytes, record.groups.size());
    for (std::size_t i = groups; i < record.groups.size(); ++i) {
        AppendNumber(bytes, record.groups[i]);
    }
    AppendNumber(bytes, cells);
    AppendNumber(bytes, record.cells.size());
    for (std::size_t i = cells; i < record.cells.size(); ++i) {
        AppendNumber(bytes, record.cells[i].first);
        AppendNumber(bytes, record.cells[i].second.size());
        bytes += record.cells[i].second;
    }
}

// Copies a record to the one before it, without what is the same.
void TakeOver(const CsvRecord& record, CsvRecord& before) {
    before.place = record.place;
    before.groups = record.groups;
    const std::size_t same = Same(record.cells, before.cells);
    before.cells.resize(record.cells.size());
    std::copy(record.cells.begin() + static_cast<std::ptrdiff_t>(same), record.cells.end(),
              before.cells.begin() + static_cast<std::ptrdiff_t>(same));
}

// Into the record before: a matrix has millions of them, and its memory serves again.
void ReadRecord(std::string_view bytes, CsvRecord& record) {
    Reader reader(bytes);
    record.place = static_cast<std::int32_t>(reader.Next()) - 1;
    const std::size_t groups = reader.Next();
    record.groups.resize(reader.Next());
    for (std::size_t i = groups; i < record.groups.size(); ++i) {
        record.groups[i] = reader.Next();
    }
    const std::size_t cells = reader.Next();
    record.cells.resize(reader.Next());
    for (std::size_t i = cells; i < record.cells.size(); ++i) {
        record.cells[i].first = static_cast<std::uint32_t>(reader.Next());
        record.cells[i].second.assign(reader.Text(reader.Next()));
    }
}

// A record's length has one byte, or this one and four more.
constexpr char LongRecord = '\xFF';
constexpr std::size_t LongestShort = 0xFE;

}  // namespace

std::uint32_t CsvBlock::Column(const std::string& key, const std::string& title) {
    const auto [found, isNew] = m_columns.try_emplace(key, static_cast<std::uint32_t>(m_titles.size()));
    if (isNew) {
        m_titles.push_back(title);
    }
    return found->second;
}

void CsvBlock::Add(const CsvRecord& record) {
    if (m_lines) {
        Join(record);
        m_lines->Add(m_line);
        return;
    }
    m_bytes.clear();
    AppendRecord(m_bytes, record, m_last);
    TakeOver(record, m_last);
    char length[1 + sizeof(std::uint32_t)] = {LongRecord};
    const auto size = static_cast<std::uint32_t>(m_bytes.size());
    std::memcpy(length + 1, &size, sizeof size);
    if (size <= LongestShort) {
        length[0] = static_cast<char>(size);
        m_records.Append({length, 1});
    } else {
        m_records.Append({length, sizeof length});
    }
    m_records.Append(m_bytes);
}

void CsvBlock::AddTotal(const CsvGroups& groups, CsvShared total) {
    m_totals[groups].push_back(std::move(total));
}

void CsvBlock::Join(const CsvRecord& record) {
    m_line.assign(m_titles.size(), {});
    for (const auto& [column, text] : record.cells) {
        m_line[column] = text;
    }
    if (m_totals.empty()) {
        return;
    }
    CsvGroups groups = record.groups;
    while (true) {
        if (const auto entry = m_totals.find(groups); entry != m_totals.end()) {
            m_found.resize(std::max(m_found.size(), groups.size() + 1));
            Found& here = m_found[groups.size()];
            if (here.totals != &entry->second) {
                here = {&entry->second, {}};
                for (const CsvShared& total : entry->second) {
                    here.places.Add(total);
                }
            }
            for (const std::uint32_t number : here.places.Holding(record.place)) {
                const CsvShared& total = entry->second[number];
                m_line[total.column] = total.text;
            }
        }
        if (groups.empty()) {
            return;
        }
        groups.pop_back();
    }
}

void CsvBlock::Begin(Output& output) {
    m_lines.emplace(output);
    m_lines->Add(m_titles);
}

void CsvBlock::Write(Output& output) {
    if (!m_lines) {
        Begin(output);
        WriteRecords();
    }
    m_lines->Flush();
}

void CsvBlock::WriteRecords() {
    CsvRecord record;
    SpoolReader records(m_records);
    while (true) {
        std::string_view length = records.Next(1);
        if (length.empty()) {
            break;
        }
        std::uint32_t size = static_cast<unsigned char>(length.front());
        if (length.front() == LongRecord) {
            length = records.Next(sizeof size);
            std::memcpy(&size, length.data(), sizeof size);
        }
        ReadRecord(records.Next(size), record);
        Join(record);
        m_lines->Add(m_line);
    }
}

}  // namespace rdl::writers
