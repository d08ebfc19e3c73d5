// Images as pictures within a paragraph.
#pragma once

#include <memory>
#include <string>

#include "rdl/layout/model/instance.h"

namespace rdl::writers {

class RtfPictures {
 public:
    // Appends the picture of an image item, sized as the item says; nothing when it has no bytes. Raises
    // rdl::Error naming the item when it is none that can be shown.
    void Append(const layout::Instance& item, std::string& out);

 private:
    const std::string& Converted(const layout::Instance& item);

    // The last picture that had to be made into another kind: a table shows the same in many rows.
    std::shared_ptr<const std::string> m_source;
    std::string m_converted;
};

}  // namespace rdl::writers
