// SPDX-License-Identifier: GPL-3.0-or-later
// Domain names in UTF-8, as users write them, and in ASCII, as the domain name system needs them (IDNA 2008,
// RFC 5891).
#pragma once

#include <string>

namespace mailer {

// Returns the ASCII form: "bücher.example" is xn--bcher-kva.example. A name in ASCII stays unchanged. Returns
// an empty text if there is no such form.
std::string AsciiDomain(const std::string& domain);
// The reverse, for display. A name without xn-- labels stays unchanged.
std::string ReadableDomain(const std::string& domain);

}  // namespace mailer
