// SPDX-License-Identifier: GPL-3.0-or-later
// The compound file around a workbook stream (MS-CFB: 2.2 header, 2.3 FAT, 2.5 DIFAT, 2.6 directory).
#pragma once

#include <memory>
#include <string_view>

#include "rdl/api/output.h"

namespace rdl::writers {

class XlsFile {
 public:
    // Raises rdl::Error if temporary files cannot be created.
    XlsFile();
    ~XlsFile();
    XlsFile(const XlsFile&) = delete;
    XlsFile& operator=(const XlsFile&) = delete;

    // Appends to the workbook stream. Raises rdl::Error if the disk is full.
    void Append(std::string_view bytes);
    // Writes the whole file. Call this once, at the end.
    void Finish(Output& output);

 private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

}  // namespace rdl::writers
