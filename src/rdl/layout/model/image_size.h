// The size of a stored image from its header, without decoding it.
#pragma once

#include <string_view>

namespace rdl::layout {

struct ImageSize {
    double width = 0, height = 0;  // points, at 96 pixels an inch; 0 when it is no PNG, JPEG, GIF or BMP
};
ImageSize SizeOfImage(std::string_view bytes);

}  // namespace rdl::layout
