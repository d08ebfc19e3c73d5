// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers the images of a document, so that each is stored once.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace rdl::writers {

class ImageNumbers {
 public:
    struct Number {
        std::size_t value;  // from 0
        bool isNew;
    };
    // Returns the number of the image; equal bytes have the same. The object keeps the bytes of new images.
    Number Of(const std::shared_ptr<const std::string>& bytes);

 private:
    std::vector<std::shared_ptr<const std::string>> m_kept;
    std::unordered_map<const std::string*, std::size_t> m_byAddress;  // of kept images
    std::unordered_map<std::string_view, std::size_t> m_byBytes;      // of images that were loaded again
};

}  // namespace rdl::writers
