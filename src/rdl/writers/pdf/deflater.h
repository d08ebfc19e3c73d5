// SPDX-License-Identifier: GPL-3.0-or-later
// Compresses a stream that arrives in pieces (RFC 1950, section 2.2, around blocks of RFC 1951, section 3.2):
// for data that is too large to be in memory at once.
#pragma once

#include <zlib.h>

#include <string_view>

#include "rdl/spool/spool.h"

namespace rdl::writers {

// Pages are many and short: time counts for more than the last tenth of size.
inline constexpr int DeflateLevel = 1;

class Deflater {
 public:
    // Appends the compressed bytes to `out`, which must outlive the object. `level` is 1, fast, to 9. Raises
    // rdl::Error if memory is short.
    Deflater(Spool& out, int level);
    ~Deflater();
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    void Add(std::string_view bytes) { Run(bytes, Z_NO_FLUSH); }
    // Call this once, after the last bytes.
    void Finish() { Run({}, Z_FINISH); }

 private:
    void Run(std::string_view bytes, int flush);

    Spool& m_out;
    z_stream m_stream{};
};

}  // namespace rdl::writers
