// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/caption.h"

#include "platform/base/ascii.h"
#include "platform/base/text.h"

namespace {

bool IsSmall(char c) {
    return c >= 'a' && c <= 'z';
}

bool IsCapital(char c) {
    return c >= 'A' && c <= 'Z';
}

}  // namespace

std::string CaptionOf(std::string_view name) {
    std::string caption;
    for (std::size_t at = 0; at < name.size(); ++at) {
        const char c = name[at];
        if (IsCapital(c) && at > 0 && IsSmall(name[at - 1])) {
            caption += ' ';
        }
        caption += c == '_' ? ' ' : c;
    }
    caption = Trim(caption);
    const std::string first(FirstCharacters(caption, 1));
    return caption.empty() ? std::string(name) : UpperText(first) + caption.substr(first.size());
}
