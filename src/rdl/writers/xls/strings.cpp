// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/strings.h"

#include <QChar>
#include <algorithm>

#include "rdl/writers/xls/record.h"

namespace rdl::writers {
namespace {

constexpr std::uint16_t SharedStrings = 0x00FC;
constexpr std::size_t LongestText = 32767;

// A text may continue in the next record (MS-XLS, 2.4.58): its header must not be split, and the continuation
// repeats the character width.
class ChainWriter {
 public:
    explicit ChainWriter(std::uint32_t uses, std::size_t count) {
        m_records.Begin(SharedStrings);
        m_start = m_records.bytes().size();
        m_records.U32(uses);
        m_records.U32(static_cast<std::uint32_t>(count));
    }

    void Add(std::u16string_view text) {
        if (Room() < 5) {  // the head and a character
            Next();
        }
        const bool narrow = IsNarrow(text);
        m_records.U16(static_cast<unsigned>(text.size()));
        m_records.U8(narrow ? 0 : 1);
        for (;;) {
            std::size_t fits = std::min(text.size(), Room() / (narrow ? 1 : 2));
            if (fits > 0 && fits < text.size() && QChar::isHighSurrogate(text[fits - 1])) {
                --fits;  // readers take each record's part by itself
            }
            for (const char16_t c : text.substr(0, fits)) {
                if (narrow) {
                    m_records.U8(c);
                } else {
                    m_records.U16(c);
                }
            }
            text.remove_prefix(fits);
            if (text.empty()) {
                return;
            }
            Next();
            m_records.U8(narrow ? 0 : 1);
        }
    }

    std::string Finish() {
        m_records.End();
        return std::move(m_records.bytes());
    }

 private:
    std::size_t Room() const { return XlsRecordLimit - (m_records.bytes().size() - m_start); }
    void Next() {
        m_records.End();
        m_records.Begin(XlsContinue);
        m_start = m_records.bytes().size();
    }

    XlsRecords m_records;
    std::size_t m_start = 0;
};

}  // namespace

std::uint32_t XlsStrings::Index(std::string_view text) {
    ++m_uses;
    if (const auto found = m_indexes.find(text); found != m_indexes.end()) {
        return found->second;
    }
    const auto index = static_cast<std::uint32_t>(m_texts.size());
    m_texts.push_back(&m_indexes.emplace(std::string(text), index).first->first);
    return index;
}

std::string XlsStrings::Records() const {
    ChainWriter chain(m_uses, m_texts.size());
    for (const std::string* text : m_texts) {
        chain.Add(ToUtf16(*text, LongestText));
    }
    return chain.Finish();
}

}  // namespace rdl::writers
