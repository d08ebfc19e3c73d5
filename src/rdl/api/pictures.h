// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a report can show a picture, for programs that put pictures into reports.
#pragma once

#include <string>

namespace rdl {

// Returns why a report does not show the picture, as a sentence that has `name`: it is empty, damaged, of
// another format than PNG, JPEG, GIF and BMP, or has too many pixels. Empty if it can be shown.
std::string FaultOfPicture(const std::string& bytes, const std::string& name);

// Returns the MIME type of a picture that can be shown: "image/png"; empty for another format.
std::string TypeOfPicture(const std::string& bytes);

}  // namespace rdl
