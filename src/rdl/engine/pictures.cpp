// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/api/pictures.h"

#include "rdl/image/decoder.h"
#include "rdl/image/type.h"
#include "rdl/values/error.h"

namespace rdl {

std::string FaultOfPicture(const std::string& bytes, const std::string& name) {
    try {
        image::CheckImage(bytes, name);
        return {};
    } catch (const Error& error) {
        return error.what();
    }
}

std::string TypeOfPicture(const std::string& bytes) {
    try {
        switch (image::TypeOf(bytes, {})) {
            case image::Type::Png:
                return "image/png";
            case image::Type::Jpeg:
                return "image/jpeg";
            case image::Type::Gif:
                return "image/gif";
            case image::Type::Bmp:
                return "image/bmp";
        }
    } catch (const Error&) {
        return {};
    }
    return {};
}

}  // namespace rdl
