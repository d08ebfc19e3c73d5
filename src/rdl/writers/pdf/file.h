// The outer form of a PDF document: numbered objects, streams, the table of their places at the end. Objects
// go out as they are made; nothing but their places is kept.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/writers/common/writers.h"

struct libdeflate_compressor;

namespace rdl::writers {

class PdfFile {
 public:
    explicit PdfFile(Output& output);
    PdfFile(const PdfFile&) = delete;
    PdfFile& operator=(const PdfFile&) = delete;

    // A number for an object that is written later.
    int Reserve();
    void Object(int number, std::string_view body);
    int Object(std::string_view body);
    // `entries` are the dictionary's without Length and Filter.
    void Stream(int number, std::string_view entries, std::string_view data, bool compress = true);
    int Stream(std::string_view entries, std::string_view data, bool compress = true);
    // Places of the objects and the trailer; `seed` tells documents apart in the ID.
    void Finish(int catalog, int info, std::string_view seed);

 private:
    void Put(std::string_view bytes);
    void Begin(int number);
    std::string_view Deflate(std::string_view data);

    Output& m_output;
    std::uint64_t m_position = 0;
    std::vector<std::uint64_t> m_places;  // by number - 1; 0: not written
    struct FreeCompressor {
        void operator()(libdeflate_compressor* compressor) const;
    };
    std::unique_ptr<libdeflate_compressor, FreeCompressor> m_compressor;
    std::string m_packed;
};

// "12 0 R"
std::string PdfReference(int number);
// A text string, in UTF-16 where it must be.
std::string PdfText(std::string_view utf8);
// Bytes as a literal string.
std::string PdfLiteral(std::string_view bytes);
// At most three decimals, never an exponent; what is no number or out of all bounds is held at the bound.
void PdfNumber(std::string& out, double number);
std::string PdfHexUtf16(std::string_view utf8);

}  // namespace rdl::writers
