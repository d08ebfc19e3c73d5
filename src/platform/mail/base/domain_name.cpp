// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/base/domain_name.h"

#include <idn2.h>

#include <algorithm>
#include <memory>

namespace mailer {
namespace {

using Text = std::unique_ptr<char, decltype(&idn2_free)>;

}  // namespace

std::string AsciiDomain(const std::string& domain) {
    if (std::all_of(domain.begin(), domain.end(), [](char byte) { return byte >= 0; })) {
        return domain;
    }
    char* ascii = nullptr;
    // The rules of IDNA 2003 replace some characters: mail would go to another owner's domain.
    const int code = idn2_to_ascii_8z(domain.c_str(), &ascii, IDN2_NFC_INPUT | IDN2_NONTRANSITIONAL);
    const Text owner(ascii, &idn2_free);
    return code == IDN2_OK ? ascii : "";
}

std::string ReadableDomain(const std::string& domain) {
    char* readable = nullptr;
    const int code = idn2_to_unicode_8z8z(domain.c_str(), &readable, IDN2_NONTRANSITIONAL);
    const Text owner(readable, &idn2_free);
    return code == IDN2_OK ? readable : domain;
}

}  // namespace mailer
