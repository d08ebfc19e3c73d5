// The compound file that a workbook stream lies in.
#pragma once

#include <memory>
#include <string_view>

#include "rdl/writers/common/writers.h"

namespace rdl::writers {

class XlsFile {
 public:
    // Raises rdl::Error when there is no room for temporary files.
    XlsFile();
    ~XlsFile();
    XlsFile(const XlsFile&) = delete;
    XlsFile& operator=(const XlsFile&) = delete;

    // More of the workbook stream.
    void Append(std::string_view bytes);
    void Finish(Output& output);

 private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

}  // namespace rdl::writers
