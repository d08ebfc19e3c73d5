// SPDX-License-Identifier: GPL-3.0-or-later
// The file structure of a PDF document (ISO 32000-1, 7.5): numbered objects, streams, cross-reference table
// and trailer. Only the offsets of objects are kept. In a long document, a stream waits while a thread
// compresses it, and what is written after it waits too: a few megabytes. With packed objects, the table is a
// stream (7.5.8).
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/api/output.h"
#include "rdl/spool/spool.h"
#include "rdl/writers/pdf/compressor.h"

namespace rdl::writers {

// The program, as documents name it.
inline constexpr const char* Producer = "Oxbow Courier";

class PdfFile {
 public:
    explicit PdfFile(Output& output);
    PdfFile(const PdfFile&) = delete;
    PdfFile& operator=(const PdfFile&) = delete;

    // Returns the number of an object to be written later.
    int Reserve();
    void Object(int number, std::string_view body);
    int Object(std::string_view body);
    // Writes an object into a stream of many (7.5.7): they are small together. Not for streams.
    void Packed(int number, std::string_view body);
    // Raises an rdl::Error that begins with `standard` once there are more objects than this.
    void Limit(std::size_t objects, std::string standard);
    // Writes a stream (7.3.8); `entries` is its dictionary without Length and Filter.
    enum class Filter { Deflate, None };
    void Stream(int number, std::string_view entries, std::string_view data, Filter filter = Filter::Deflate);
    int Stream(std::string_view entries, std::string_view data, Filter filter = Filter::Deflate);
    // The same for data that is too large for memory: `produce` passes it on in pieces.
    using Produce = std::function<void(const Spool::Take& take)>;
    int Stream(std::string_view entries, const Produce& produce);
    // Writes cross-reference table and trailer (7.5.4, 7.5.5); the file identifier (14.4) is computed from
    // `seed`.
    void Finish(int catalog, int info, std::string_view seed);

 private:
    void Put(std::string_view bytes);
    void Begin(int number);
    void BeginStream(int number, std::string_view entries, std::size_t size, Filter filter);
    void Write(std::string_view bytes);
    CompressionThread* ThreadFor(std::size_t size);
    void WriteWaiting();
    void WriteAll();
    void WriteFirst();
    void WritePack();
    void FinishWithTable(const std::string& trailer);
    void FinishWithStream(const std::string& trailer);

    Output& m_output;
    std::uint64_t m_position = 0;
    // By number - 1: the byte offset; the object stream and the index in it, marked by the highest bit; or 0:
    // not written.
    std::vector<std::uint64_t> m_places;
    struct Pack {
        int number = 0, count = 0;
        std::string places, bodies;
    };
    Pack m_pack;
    bool m_isPacked = false;
    std::size_t m_mostObjects = std::numeric_limits<int>::max();
    std::string m_standard = "PDF";
    Deflate m_deflate;
    // A stream that is being compressed, and what comes after it until the next one.
    struct Waiting {
        int number;
        std::string entries;
        std::shared_ptr<CompressionThread::Job> job;
        std::size_t size;  // of the stream, uncompressed
        std::string after;
        std::vector<std::pair<int, std::size_t>> objects;  // numbers, and where in `after` they begin
    };
    std::deque<Waiting> m_waiting;
    std::size_t m_waitingBytes = 0;
    std::size_t m_streams = 0;
    bool m_isThreadTried = false;
    std::unique_ptr<CompressionThread> m_thread;  // null: streams are compressed where they are written
};

// Returns "12 0 R" (7.3.10).
std::string PdfReference(int number);
// The most bytes of a string (ISO 32000-1, Annex C; ISO 19005-2, 6.1.13).
inline constexpr std::size_t MostStringBytes = 32'767;
// Returns a text string (7.9.2.2), in UTF-16BE if necessary. It ends where a string must.
std::string PdfText(std::string_view utf8);
// Returns bytes as a literal string (7.3.4.2).
std::string PdfLiteral(std::string_view bytes);
// Appends a number (7.3.3) with at most three decimals and no exponent. NaN and values out of range are
// clamped.
void PdfNumber(std::string& out, double number);
// Returns UTF-16BE in hexadecimal digits; ends where a string must.
std::string PdfHexUtf16(std::string_view utf8);

}  // namespace rdl::writers
