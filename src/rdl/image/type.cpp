// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/image/type.h"

#include "rdl/values/error.h"

namespace rdl::image {

Type TypeOf(std::string_view bytes, const std::string& name) {
    if (bytes.substr(0, 8) == "\x89PNG\r\n\x1A\n") {
        return Type::Png;
    }
    if (bytes.substr(0, 3) == "\xFF\xD8\xFF") {
        return Type::Jpeg;
    }
    if (bytes.substr(0, 4) == "GIF8") {
        return Type::Gif;
    }
    if (bytes.substr(0, 2) == "BM") {
        return Type::Bmp;
    }
    throw Error("Image \"" + name + "\" is none of PNG, JPEG, GIF and BMP");
}

}  // namespace rdl::image
