// The format of a picture.
#pragma once

#include <string>
#include <string_view>

namespace rdl::image {

enum class Type { Png, Jpeg, Gif, Bmp };

// By the first bytes themselves. Raises rdl::Error naming the item `name` for any other format.
Type TypeOf(std::string_view bytes, const std::string& name);

}  // namespace rdl::image
