// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/text/cff.h"

#include <cstdint>
#include <exception>

#include "rdl/values/bytes.h"
#include "rdl/values/error.h"

namespace rdl::text {

namespace {

// Big-endian numbers; past the end is an error of the file.
class Bytes {
 public:
    explicit Bytes(std::string_view bytes) : m_bytes(bytes) {}
    std::uint32_t Number(std::size_t at, std::size_t size) const {
        return static_cast<std::uint32_t>(NumberOfBytes(Part(at, size), std::endian::big));
    }
    std::string_view Part(std::size_t at, std::size_t size) const {
        if (at > m_bytes.size() || size > m_bytes.size() - at) {
            throw Error("The font program is cut off");
        }
        return m_bytes.substr(at, size);
    }

 private:
    std::string_view m_bytes;
};

std::string_view TableOf(std::string_view openType) {
    const Bytes bytes(openType);
    const std::uint32_t count = bytes.Number(4, 2);
    for (std::size_t entry = 12; entry < 12 + 16 * static_cast<std::size_t>(count); entry += 16) {
        if (bytes.Part(entry, 4) == "CFF ") {
            return bytes.Part(bytes.Number(entry + 8, 4), bytes.Number(entry + 12, 4));
        }
    }
    throw Error("The font file has no program of this kind");
}

// A row of objects of any size: their number, the size of an offset, one more offset than objects.
struct Index {
    std::size_t count = 0, first = 0, firstSize = 0, end = 0;
};

Index IndexAt(const Bytes& bytes, std::size_t at) {
    Index index;
    index.count = bytes.Number(at, 2);
    if (index.count == 0) {
        index.end = at + 2;
        return index;
    }
    const std::size_t size = bytes.Number(at + 2, 1);
    const auto offset = [&](std::size_t i) { return bytes.Number(at + 3 + i * size, size); };
    const std::size_t data = at + 2 + (index.count + 1) * size;  // offsets count from 1
    index.first = data + offset(0);
    index.firstSize = offset(1) - offset(0);
    index.end = data + offset(index.count);
    return index;
}

struct TopDict {
    bool isCidKeyed = false;
    std::uint32_t charset = 0, charStrings = 0;
};

// Operands come before their operator. Only whole numbers count here.
TopDict ReadTopDict(std::string_view dict) {
    constexpr std::uint32_t Charset = 15, CharStrings = 17, Escape = 12, Ros = 30, Real = 30;
    const Bytes bytes(dict);
    TopDict top;
    std::uint32_t operand = 0;
    for (std::size_t at = 0; at < dict.size();) {
        const std::uint32_t lead = bytes.Number(at++, 1);
        if (lead == Escape) {
            top.isCidKeyed = top.isCidKeyed || bytes.Number(at++, 1) == Ros;
        } else if (lead == Charset) {
            top.charset = operand;
        } else if (lead == CharStrings) {
            top.charStrings = operand;
        } else if (lead == 28 || lead == 29) {
            const std::size_t size = lead == 28 ? 2 : 4;
            operand = bytes.Number(at, size);
            at += size;
        } else if (lead == Real) {
            while ((bytes.Number(at++, 1) & 0xFU) != 0xF) {
            }
        } else if (lead >= 32 && lead <= 246) {
            operand = lead - 139;
        } else if (lead >= 247 && lead <= 254) {
            const std::uint32_t low = bytes.Number(at++, 1);
            operand = lead < 251 ? (lead - 247) * 256 + low + 108 : 0;
        }
    }
    return top;
}

void Put(std::string& program, std::size_t at, std::size_t number) {
    program.at(at) = static_cast<char>(number >> 8U);
    program.at(at + 1) = static_cast<char>(number & 0xFFU);
}

// The table keeps its form, and so its size: only the first number of each stretch is another.
void NumberByIndex(std::string& program, std::size_t charset, std::size_t glyphs) {
    const std::uint32_t format = Bytes(program).Number(charset, 1);
    std::size_t at = charset + 1;
    for (std::size_t glyph = 1; glyph < glyphs;) {
        Put(program, at, glyph);
        at += 2;
        if (format == 0) {
            ++glyph;
        } else {
            const std::size_t size = format == 1 ? 1 : 2;
            glyph += Bytes(program).Number(at, size) + 1;
            at += size;
        }
    }
}

}  // namespace

std::string CidProgram(std::string_view openType) {
    try {
        std::string program(TableOf(openType));
        const Bytes bytes(program);
        const Index names = IndexAt(bytes, bytes.Number(2, 1));
        const Index dicts = IndexAt(bytes, names.end);
        const TopDict top = ReadTopDict(bytes.Part(dicts.first, dicts.firstSize));
        if (!top.isCidKeyed) {
            return {};
        }
        constexpr std::uint32_t LastPredefined = 2;
        if (top.charset > LastPredefined) {
            NumberByIndex(program, top.charset, IndexAt(bytes, top.charStrings).count);
        }
        return program;
    } catch (const std::exception&) {
        return {};
    }
}

}  // namespace rdl::text
