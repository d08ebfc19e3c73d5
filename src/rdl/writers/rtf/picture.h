// SPDX-License-Identifier: GPL-3.0-or-later
// Writes images as RTF pictures (RTF 1.9.1, Pictures).
#pragma once

#include <memory>
#include <string>

#include "rdl/layout/model/instance.h"

namespace rdl::writers {

class RtfPictures {
 public:
    // Appends the image of an item at its size, nothing if it has no bytes. Raises rdl::Error naming the item
    // if its format is not supported.
    void Append(const layout::Instance& item, std::string& out);

 private:
    const std::string& Converted(const layout::Instance& item);

    // The last converted image: tables repeat the same one in many rows.
    std::shared_ptr<const std::string> m_source;
    std::string m_converted;
};

}  // namespace rdl::writers
