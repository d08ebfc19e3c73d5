// Pictures of drawings that come again and again, as an indicator's few states do in the rows of a table.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace rdl::layout {

struct DrawingInstance;

class Pictures {
 public:
    using Bytes = std::shared_ptr<const std::string>;

    // What `paint` makes of the drawing; the same bytes for a drawing that looks the same.
    Bytes Of(const DrawingInstance& drawing, const std::function<Bytes(const DrawingInstance&)>& paint);

 private:
    struct Made {
        Bytes picture;
        std::vector<Bytes> images;  // in it: told apart by address, so they are kept alive
    };
    std::unordered_map<std::string, Made> m_made;  // by all that is drawn
};

}  // namespace rdl::layout
