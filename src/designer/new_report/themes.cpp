// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/themes.h"

namespace designer {

std::string ThemeNames() {
    std::string names;
    for (const Theme& theme : Themes) {
        names += names.empty() ? "" : &theme == &Themes.back() ? " or " : ", ";
        names += theme.name;
    }
    return names;
}

}  // namespace designer
