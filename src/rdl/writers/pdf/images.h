// SPDX-License-Identifier: GPL-3.0-or-later
// The images of a PDF document (ISO 32000-1, 8.9.5), each written once: JPEG unchanged, others decoded, with
// transparency as a soft mask (11.6.5.3).
#pragma once

#include <map>
#include <memory>
#include <string>

#include "rdl/writers/pdf/file.h"

namespace rdl::writers {

class PdfImages {
 public:
    explicit PdfImages(PdfFile& file) : m_file(file) {}
    // From now on, images in CMYK are decoded: an output intent in RGB does not define their colours
    // (ISO 19005-2, 6.2.4.3).
    void WithoutCmyk() { m_takesCmyk = false; }
    // Writes the image on first use and returns its object number; the resource name is /I and that number.
    // Raises rdl::Error naming `item` if the image cannot be read or has more than 64 million pixels.
    int Use(const std::shared_ptr<const std::string>& bytes, const std::string& item);
    std::string Resources() const;

 private:
    struct Known {
        std::weak_ptr<const std::string> bytes;
        int number;
    };
    PdfFile& m_file;
    bool m_takesCmyk = true;
    std::map<const std::string*, Known> m_byAddress;
    std::map<std::string, int> m_byDigest;  // finds an image that was loaded twice
};

}  // namespace rdl::writers
