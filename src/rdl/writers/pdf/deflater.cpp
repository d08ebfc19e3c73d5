// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/pdf/deflater.h"

#include "rdl/values/error.h"

namespace rdl::writers {

Deflater::Deflater(Spool& out, int level) : m_out(out) {
    if (deflateInit(&m_stream, level) != Z_OK) {
        throw Error("PDF: no memory to compress with");
    }
}

Deflater::~Deflater() {
    deflateEnd(&m_stream);
}

void Deflater::Run(std::string_view bytes, int flush) {
    Bytef packed[16 << 10];
    // The library does not write there. NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    m_stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    m_stream.avail_in = static_cast<uInt>(bytes.size());
    do {
        m_stream.next_out = packed;
        m_stream.avail_out = sizeof packed;
        deflate(&m_stream, flush);  // fails only if called wrongly
        m_out.Append({reinterpret_cast<const char*>(packed), sizeof packed - m_stream.avail_out});
    } while (m_stream.avail_out == 0);
}

}  // namespace rdl::writers
