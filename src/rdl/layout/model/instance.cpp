// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/model/instance.h"

namespace rdl::layout {

std::string Instance::PlainText() const {
    std::string text;
    for (std::size_t i = 0; i < paragraphs.size(); ++i) {
        if (i > 0) {
            text += '\n';
        }
        for (const RunInstance& run : paragraphs[i].runs) {
            text += run.text;
        }
    }
    return text;
}

}  // namespace rdl::layout
