// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/pdf/file.h"

#include <QChar>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "rdl/values/error.h"
#include "rdl/values/utf8.h"
#include "rdl/writers/pdf/deflater.h"

namespace rdl::writers {
namespace {

constexpr int MostInPack = 200;
constexpr std::uint64_t InPack = 1ull << 63;
constexpr int IndexBits = 16;
constexpr std::size_t FewStreams = 16;  // that need no thread
constexpr std::size_t MostWaitingBytes = std::size_t{4} << 20;
constexpr std::size_t LongestForThread = std::size_t{1} << 20;

std::uint64_t Mix(std::uint64_t hash, std::string_view bytes) {
    for (const char c : bytes) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ull;
    }
    return hash;
}

constexpr std::string_view EndOfStream = "\nendstream\nendobj\n";

// The dictionary of a stream and the keyword that its bytes follow.
std::string HeadOf(std::string_view entries, std::size_t size, PdfFile::Filter filter) {
    std::string head = "<<";
    head += entries;
    head += "/Length " + std::to_string(size);
    head += filter == PdfFile::Filter::Deflate ? "/Filter/FlateDecode>>\nstream\n" : ">>\nstream\n";
    return head;
}

}  // namespace

PdfFile::PdfFile(Output& output) : m_output(output) {
    // The second line shows transfer programs that the file is binary.
    Put("%PDF-1.7\n%\xE2\xE3\xCF\xD3\n");
}

void PdfFile::Put(std::string_view bytes) {
    if (m_waiting.empty()) {
        Write(bytes);
        return;
    }
    m_waiting.back().after += bytes;
    m_waitingBytes += bytes.size();
    WriteWaiting();
}

void PdfFile::Write(std::string_view bytes) {
    m_output.Write(bytes);
    m_position += bytes.size();
}

int PdfFile::Reserve() {
    if (m_places.size() >= m_mostObjects) {
        throw Error(m_standard + ": the document has more than " + std::to_string(m_mostObjects) +
                    " objects");
    }
    m_places.push_back(0);
    return static_cast<int>(m_places.size());
}

void PdfFile::Begin(int number) {
    if (m_waiting.empty()) {
        m_places[static_cast<std::size_t>(number) - 1] = m_position;
    } else {
        m_waiting.back().objects.emplace_back(number, m_waiting.back().after.size());
    }
    Put(std::to_string(number) + " 0 obj\n");
}

void PdfFile::Object(int number, std::string_view body) {
    Begin(number);
    Put(body);
    Put("\nendobj\n");
}

int PdfFile::Object(std::string_view body) {
    const int number = Reserve();
    Object(number, body);
    return number;
}

void PdfFile::Limit(std::size_t objects, std::string standard) {
    m_mostObjects = objects;
    m_standard = std::move(standard);
}

void PdfFile::Packed(int number, std::string_view body) {
    if (m_pack.number == 0) {
        m_pack.number = Reserve();
    }
    m_isPacked = true;
    m_places[static_cast<std::size_t>(number) - 1] = InPack |
                                                     static_cast<std::uint64_t>(m_pack.number) << IndexBits |
                                                     static_cast<std::uint64_t>(m_pack.count);
    m_pack.places += std::to_string(number) + " " + std::to_string(m_pack.bodies.size()) + " ";
    m_pack.bodies += body;
    m_pack.bodies += '\n';
    if (++m_pack.count == MostInPack) {
        WritePack();
    }
}

void PdfFile::WritePack() {
    if (m_pack.number != 0) {
        const Pack pack = std::exchange(m_pack, {});
        Stream(
            pack.number,
            "/Type/ObjStm/N " + std::to_string(pack.count) + "/First " + std::to_string(pack.places.size()),
            pack.places + pack.bodies);
    }
}

// Null: the stream is compressed at once.
CompressionThread* PdfFile::ThreadFor(std::size_t size) {
    if (++m_streams > FewStreams && !m_isThreadTried) {
        m_isThreadTried = true;
        m_thread = CompressionThread::Start();
    }
    return size <= LongestForThread ? m_thread.get() : nullptr;
}

// Writes what is compressed, and waits for more while too much waits.
void PdfFile::WriteWaiting() {
    while (!m_waiting.empty() &&
           (m_waitingBytes > MostWaitingBytes || m_thread->IsDone(*m_waiting.front().job))) {
        WriteFirst();
    }
}

void PdfFile::WriteAll() {
    while (!m_waiting.empty()) {
        WriteFirst();
    }
}

void PdfFile::WriteFirst() {
    m_thread->Wait(*m_waiting.front().job);
    const Waiting stream = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_waitingBytes -= stream.size + stream.after.size();
    const std::string& packed = stream.job->bytes;
    const auto placeOf = [this](int number) -> std::uint64_t& {
        return m_places[static_cast<std::size_t>(number) - 1];
    };
    placeOf(stream.number) = m_position;
    Write(std::to_string(stream.number) + " 0 obj\n" +
          HeadOf(stream.entries, packed.size(), Filter::Deflate));
    Write(packed);
    Write(EndOfStream);
    for (const auto& [number, offset] : stream.objects) {
        placeOf(number) = m_position + offset;
    }
    Write(stream.after);
}

void PdfFile::Stream(int number, std::string_view entries, std::string_view data, Filter filter) {
    CompressionThread* const thread = filter == Filter::Deflate ? ThreadFor(data.size()) : nullptr;
    if (thread) {
        auto job = std::make_shared<CompressionThread::Job>();
        job->bytes = data;
        thread->Add(job);
        m_waiting.push_back({number, std::string(entries), std::move(job), data.size(), {}, {}});
        m_waitingBytes += data.size();
        WriteWaiting();
        return;
    }
    const std::string_view bytes = filter == Filter::Deflate ? m_deflate(data) : data;
    BeginStream(number, entries, bytes.size(), filter);
    Put(bytes);
    Put(EndOfStream);
}

void PdfFile::BeginStream(int number, std::string_view entries, std::size_t size, Filter filter) {
    Begin(number);
    Put(HeadOf(entries, size, filter));
}

int PdfFile::Stream(std::string_view entries, std::string_view data, Filter filter) {
    const int number = Reserve();
    Stream(number, entries, data, filter);
    return number;
}

int PdfFile::Stream(std::string_view entries, const Produce& produce) {
    Spool packed;
    Deflater deflater(packed, DeflateLevel);
    produce([&](std::string_view piece) { deflater.Add(piece); });
    deflater.Finish();
    const int number = Reserve();
    BeginStream(number, entries, packed.size(), Filter::Deflate);
    packed.Read([&](std::string_view piece) { Put(piece); });
    Put(EndOfStream);
    return number;
}

void PdfFile::Finish(int catalog, int info, std::string_view seed) {
    WritePack();
    WriteAll();
    std::uint64_t first = Mix(14695981039346656037ull, seed), second = Mix(7809847782465536322ull, seed);
    for (const std::uint64_t place : m_places) {
        const std::string text = std::to_string(place);
        first = Mix(first, text);
        second = Mix(second, text);
    }
    char id[40];
    std::snprintf(id, sizeof id, "<%016llX%016llX>", static_cast<unsigned long long>(first),
                  static_cast<unsigned long long>(second));
    const std::string trailer =
        "/Root " + PdfReference(catalog) + "/Info " + PdfReference(info) + "/ID[" + id + id + "]";
    const std::uint64_t start = m_position;
    m_isPacked ? FinishWithStream(trailer) : FinishWithTable(trailer);
    Put("startxref\n" + std::to_string(start) + "\n%%EOF\n");
    WriteAll();
}

void PdfFile::FinishWithTable(const std::string& trailer) {
    const std::string size = std::to_string(m_places.size() + 1);
    std::string table = "xref\n0 " + size + "\n0000000000 65535 f \n";
    char line[32];
    for (const std::uint64_t place : m_places) {
        std::snprintf(line, sizeof line, "%010llu %05d %c \n", static_cast<unsigned long long>(place),
                      place ? 0 : 65535, place ? 'n' : 'f');
        table += line;
    }
    Put(table + "trailer\n<</Size " + size + trailer + ">>\n");
}

// Each object takes eight bytes: its kind, five of its place, two of its index. Only the differences from the
// object before are stored (7.4.4.4): most of them are equal.
void PdfFile::FinishWithStream(const std::string& trailer) {
    constexpr std::size_t RowSize = 8;
    constexpr char Up = 2;
    const int number = Reserve();
    m_places.back() = m_position;
    std::array<unsigned char, RowSize> before{};
    std::string table;
    const auto put = [&](std::uint64_t kind, std::uint64_t place, std::uint64_t index) {
        const std::uint64_t row = kind << 56 | (place & 0xFF'FFFF'FFFF) << IndexBits | index;
        table += Up;
        for (std::size_t i = 0; i < RowSize; ++i) {
            const auto byte = static_cast<unsigned char>(row >> 8 * (RowSize - 1 - i));
            table += static_cast<char>(byte - std::exchange(before[i], byte));
        }
    };
    put(0, 0, 0xFFFF);
    for (const std::uint64_t place : m_places) {
        if (place & InPack) {
            put(2, (place & ~InPack) >> IndexBits, place & ((1u << IndexBits) - 1));
        } else {
            put(place ? 1 : 0, place, place ? 0 : 0xFFFF);
        }
    }
    Stream(number,
           "/Type/XRef/W[1 5 2]/DecodeParms<</Predictor 12/Columns 8>>/Size " +
               std::to_string(m_places.size() + 1) + trailer,
           table);
}

std::string PdfReference(int number) {
    return std::to_string(number) + " 0 R";
}

std::string PdfHexUtf16(std::string_view utf8) {
    std::string hex;
    char unit[8];
    const auto put = [&](unsigned value) {
        std::snprintf(unit, sizeof unit, "%04X", value);
        hex += unit;
    };
    constexpr std::size_t MostDigits = 2 * (MostStringBytes - 6);  // a mark before it, a pair at its end
    for (std::size_t i = 0; i < utf8.size() && hex.size() < MostDigits;) {
        const char32_t code = NextCharacter(utf8, i);
        if (code < 0x10000) {
            put(static_cast<unsigned>(code));
        } else {
            put(QChar::highSurrogate(code));
            put(QChar::lowSurrogate(code));
        }
    }
    return hex;
}

std::string PdfText(std::string_view utf8) {
    const bool plain = std::all_of(utf8.begin(), utf8.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
    return plain ? PdfLiteral(utf8.substr(0, MostStringBytes)) : "<FEFF" + PdfHexUtf16(utf8) + ">";
}

std::string PdfLiteral(std::string_view bytes) {
    std::string out = "(";
    for (const char c : bytes) {
        if (c == '(' || c == ')' || c == '\\') {
            out += '\\';
        }
        if (c == '\r') {
            out += "\\r";
        } else {
            out += c;
        }
    }
    return out + ")";
}

void PdfNumber(std::string& out, double number) {
    constexpr double Bound = 1e6;
    const double held = std::isnan(number) ? 0 : std::clamp(number, -Bound, Bound);
    const bool isNegative = held < 0;
    // Not by lround, which costs more than the digits. NOLINTNEXTLINE(bugprone-incorrect-roundings)
    const auto thousandths = static_cast<unsigned>(std::abs(held) * 1000 + 0.5);
    // From the end, in one piece: a page has thousands of numbers.
    char digits[24];
    char* const end = digits + sizeof digits;
    char* begin = end;
    unsigned rest = thousandths % 1000;
    if (rest) {
        for (int place = 0; place < 3; ++place, rest /= 10) {
            if (begin != end || rest % 10) {
                *--begin = static_cast<char>('0' + rest % 10);
            }
        }
        *--begin = '.';
    }
    unsigned whole = thousandths / 1000;
    do {
        *--begin = static_cast<char>('0' + whole % 10);
        whole /= 10;
    } while (whole);
    if (isNegative && thousandths) {
        *--begin = '-';
    }
    out.append(begin, end);
}

}  // namespace rdl::writers
