// SPDX-License-Identifier: GPL-3.0-or-later
// The file structure of a PDF document (ISO 32000-1, 7.5): numbered objects, streams, cross-reference table
// and trailer. Objects are written at once; only their offsets are kept.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/spool/spool.h"
#include "rdl/writers/common/writers.h"

struct libdeflate_compressor;

namespace rdl::writers {

class PdfFile {
 public:
    explicit PdfFile(Output& output);
    PdfFile(const PdfFile&) = delete;
    PdfFile& operator=(const PdfFile&) = delete;

    // Returns the number of an object to be written later.
    int Reserve();
    void Object(int number, std::string_view body);
    int Object(std::string_view body);
    // Writes a stream (7.3.8); `entries` is its dictionary without Length and Filter.
    void Stream(int number, std::string_view entries, std::string_view data, bool compress = true);
    int Stream(std::string_view entries, std::string_view data, bool compress = true);
    // The same for data that is too large for memory: `produce` passes it on in pieces.
    using Produce = std::function<void(const Spool::Take& take)>;
    int Stream(std::string_view entries, const Produce& produce);
    // Writes cross-reference table and trailer (7.5.4, 7.5.5); the file identifier (14.4) is computed from
    // `seed`.
    void Finish(int catalog, int info, std::string_view seed);

 private:
    void Put(std::string_view bytes);
    void Begin(int number);
    void BeginStream(int number, std::string_view entries, std::size_t size, bool isCompressed);
    std::string_view Deflate(std::string_view data);

    Output& m_output;
    std::uint64_t m_position = 0;
    std::vector<std::uint64_t> m_places;  // byte offsets by number - 1; 0: not written
    struct FreeCompressor {
        void operator()(libdeflate_compressor* compressor) const;
    };
    std::unique_ptr<libdeflate_compressor, FreeCompressor> m_compressor;
    std::string m_packed;
};

// Returns "12 0 R" (7.3.10).
std::string PdfReference(int number);
// Returns a text string (7.9.2.2), in UTF-16BE if necessary.
std::string PdfText(std::string_view utf8);
// Returns bytes as a literal string (7.3.4.2).
std::string PdfLiteral(std::string_view bytes);
// Appends a number (7.3.3) with at most three decimals and no exponent. NaN and values out of range are
// clamped.
void PdfNumber(std::string& out, double number);
std::string PdfHexUtf16(std::string_view utf8);

}  // namespace rdl::writers
