// Domain names as people write them, and as the domain name system has them.
#pragma once

#include <string>

namespace mailer {

// The ASCII form of a domain in UTF-8 (IDNA 2008): "bücher.example" is xn--bcher-kva.example. A name in ASCII
// stays as it is. Empty when there is no such form.
std::string AsciiDomain(const std::string& domain);
// The other way, for people to read. A name that stands for nothing else stays as it is.
std::string ReadableDomain(const std::string& domain);

}  // namespace mailer
