// SPDX-License-Identifier: GPL-3.0-or-later
// Caches images of drawings that recur, as an indicator's few states do in the rows of a table.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace rdl::layout {

struct DrawingInstance;

class PictureCache {
 public:
    using Bytes = std::shared_ptr<const std::string>;

    // Returns the image that `paint` makes of the drawing; equal drawings share the same bytes.
    Bytes Of(const DrawingInstance& drawing, const std::function<Bytes(const DrawingInstance&)>& paint);

 private:
    struct Made {
        Bytes picture;
        std::vector<Bytes>
            images;  // images of the drawing, kept alive because their addresses are part of the key
    };
    std::unordered_map<std::string, Made> m_made;  // by the content of the drawing
};

}  // namespace rdl::layout
