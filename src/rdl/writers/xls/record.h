// SPDX-License-Identifier: GPL-3.0-or-later
// Builds records of a workbook stream: type, length, little-endian data (MS-XLS, 2.1.4 Record).
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

namespace rdl::writers {

// Records of both the workbook and its sheets (MS-XLS, 2.3.1).
inline constexpr std::uint16_t XlsBof = 0x0809, XlsEof = 0x000A, XlsContinue = 0x003C;
inline constexpr std::size_t XlsRecordLimit = 8224;  // maximum data of a record, in bytes

class XlsRecords {
 public:
    // Begin and End enclose the data of a record.
    // The caller splits data above XlsRecordLimit into Continue records.
    void Begin(std::uint16_t type) {
        U16(type);
        m_begin = m_bytes.size();
        U16(0);
    }
    void End() {
        const std::size_t length = m_bytes.size() - m_begin - 2;
        m_bytes[m_begin] = static_cast<char>(length & 0xFF);
        m_bytes[m_begin + 1] = static_cast<char>(length >> 8);
    }
    void U8(unsigned n) { m_bytes += static_cast<char>(n & 0xFF); }
    void U16(unsigned n) {
        const char bytes[] = {static_cast<char>(n & 0xFF), static_cast<char>(n >> 8 & 0xFF)};
        m_bytes.append(bytes, 2);
    }
    void U32(std::uint32_t n) {
        U16(n & 0xFFFF);
        U16(n >> 16);
    }
    void Double(double d) {
        const auto bits = std::bit_cast<std::uint64_t>(d);
        U32(static_cast<std::uint32_t>(bits));
        U32(static_cast<std::uint32_t>(bits >> 32));
    }
    void Bytes(std::string_view bytes) { m_bytes += bytes; }
    // Append a string: length in one byte or in two, flags, characters (single bytes if all are below 256).
    // Truncate to the range of the length.
    void ShortText(std::u16string_view text);
    void LongText(std::u16string_view text);

    std::string& bytes() { return m_bytes; }
    const std::string& bytes() const { return m_bytes; }

 private:
    void Characters(std::u16string_view text);

    std::string m_bytes;
    std::size_t m_begin = 0;
};

// Converts to UTF-16 of at most `limit` code units, without splitting a surrogate pair. Drops control
// characters that Excel rejects.
std::u16string ToUtf16(std::string_view utf8, std::size_t limit);
// Whether all code units are below 256, so that a string is stored in single bytes.
bool IsNarrow(std::u16string_view text);

}  // namespace rdl::writers
