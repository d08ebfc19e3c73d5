// SPDX-License-Identifier: GPL-3.0-or-later
// The file format of an image.
#pragma once

#include <string>
#include <string_view>

namespace rdl::image {

enum class Type { Png, Jpeg, Gif, Bmp };

// Returns the format by the signature at the start of `bytes`. Raises rdl::Error naming the item `name` for
// any other format.
Type TypeOf(std::string_view bytes, const std::string& name);

}  // namespace rdl::image
