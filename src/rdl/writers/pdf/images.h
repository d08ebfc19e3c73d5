// The images of a PDF document, each written once: JPEG as it is, others decoded, their transparency as a
// mask.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "rdl/writers/pdf/file.h"

namespace rdl::writers {

class PdfImages {
 public:
    explicit PdfImages(PdfFile& file) : m_file(file) {}
    // The number of the image's object; its resource name is /I and that number. Raises rdl::Error, which
    // names the item, when it cannot be read or has more than 64 million pixels.
    int Use(const std::shared_ptr<const std::string>& bytes, const std::string& item);
    std::string Resources() const;

 private:
    struct Known {
        std::weak_ptr<const std::string> bytes;
        int number;
    };
    PdfFile& m_file;
    std::map<const std::string*, Known> m_byAddress;
    std::map<std::string, int> m_byDigest;  // the same picture loaded twice
};

}  // namespace rdl::writers
