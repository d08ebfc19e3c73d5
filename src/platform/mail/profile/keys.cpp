// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/profile/keys.h"

namespace mailer {

std::string Alternatives(const ProfileKey& key) {
    std::string text;
    for (std::size_t at = 0; at < key.words.size(); ++at) {
        const bool isLast = at + 1 == key.words.size();
        text.append(at == 0 ? "" : isLast ? " or " : ", ").append(key.words[at]);
    }
    return text;
}

}  // namespace mailer
