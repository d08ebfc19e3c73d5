// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/csv/block.h"

#include <algorithm>
#include <cstring>

#include "rdl/writers/csv/fields.h"

namespace rdl::writers {
namespace {

template <typename Number>
void AppendNumber(std::string& bytes, Number number) {
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

// Reads what AppendNumber wrote.
class Reader {
 public:
    explicit Reader(std::string_view bytes) : m_bytes(bytes) {}
    template <typename Number>
    Number Next() {
        Number number;
        std::memcpy(&number, m_bytes.data(), sizeof number);
        m_bytes.remove_prefix(sizeof number);
        return number;
    }
    std::string_view Text(std::size_t length) {
        const std::string_view text = m_bytes.substr(0, length);
        m_bytes.remove_prefix(length);
        return text;
    }

 private:
    std::string_view m_bytes;
};

void AppendRecord(std::string& bytes, const CsvRecord& record) {
    AppendNumber(bytes, record.place);
    AppendNumber(bytes, static_cast<std::uint32_t>(record.groups.size()));
    for (const std::uint64_t group : record.groups) {
        AppendNumber(bytes, group);
    }
    AppendNumber(bytes, static_cast<std::uint32_t>(record.cells.size()));
    for (const auto& [column, text] : record.cells) {
        AppendNumber(bytes, column);
        AppendNumber(bytes, static_cast<std::uint32_t>(text.size()));
        bytes += text;
    }
}

// Into a used record: a matrix has millions of them, and its memory serves again.
void ReadRecord(std::string_view bytes, CsvRecord& record) {
    Reader reader(bytes);
    record.place = reader.Next<std::int32_t>();
    record.groups.resize(reader.Next<std::uint32_t>());
    for (std::uint64_t& group : record.groups) {
        group = reader.Next<std::uint64_t>();
    }
    record.cells.resize(reader.Next<std::uint32_t>());
    for (auto& [column, text] : record.cells) {
        column = reader.Next<std::uint32_t>();
        text.assign(reader.Text(reader.Next<std::uint32_t>()));
    }
}

}  // namespace

std::uint32_t CsvBlock::Column(const std::string& key, const std::string& title) {
    const auto [found, isNew] = m_columns.try_emplace(key, static_cast<std::uint32_t>(m_titles.size()));
    if (isNew) {
        m_titles.push_back(title);
    }
    return found->second;
}

void CsvBlock::Add(const CsvRecord& record) {
    constexpr std::size_t LengthSize = sizeof(std::uint32_t);
    m_bytes.assign(LengthSize, '\0');
    AppendRecord(m_bytes, record);
    const auto length = static_cast<std::uint32_t>(m_bytes.size() - LengthSize);
    std::memcpy(m_bytes.data(), &length, LengthSize);
    m_records.Append(m_bytes);
}

void CsvBlock::AddTotal(const CsvGroups& groups, CsvShared total) {
    m_totals[groups].push_back(std::move(total));
}

void CsvBlock::Join(const CsvRecord& record, std::vector<std::string>& line,
                    std::vector<Found>& found) const {
    line.assign(m_titles.size(), {});
    for (const auto& [column, text] : record.cells) {
        line[column] = text;
    }
    if (m_totals.empty()) {
        return;
    }
    CsvGroups groups = record.groups;
    while (true) {
        if (const auto entry = m_totals.find(groups); entry != m_totals.end()) {
            found.resize(std::max(found.size(), groups.size() + 1));
            Found& here = found[groups.size()];
            if (here.totals != &entry->second) {
                here = {&entry->second, {}};
                for (const CsvShared& total : entry->second) {
                    here.places.Add(total);
                }
            }
            for (const std::uint32_t number : here.places.Holding(record.place)) {
                const CsvShared& total = entry->second[number];
                line[total.column] = total.text;
            }
        }
        if (groups.empty()) {
            return;
        }
        groups.pop_back();
    }
}

void CsvBlock::Write(Output& output) {
    CsvLines lines(output);
    lines.Add(m_titles);
    CsvRecord record;
    std::vector<std::string> line;
    std::vector<Found> found;
    std::string rest;
    m_records.Read([&](std::string_view piece) {
        rest += piece;
        std::size_t at = 0;
        while (rest.size() - at >= sizeof(std::uint32_t)) {
            const std::size_t length = Reader(std::string_view(rest).substr(at)).Next<std::uint32_t>();
            if (rest.size() - at - sizeof(std::uint32_t) < length) {
                break;
            }
            ReadRecord(std::string_view(rest).substr(at + sizeof(std::uint32_t), length), record);
            Join(record, line, found);
            lines.Add(line);
            at += sizeof(std::uint32_t) + length;
        }
        rest.erase(0, at);
    });
    lines.Flush();
}

}  // namespace rdl::writers
