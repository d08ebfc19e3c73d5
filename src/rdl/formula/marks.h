// The marks around texts.
#pragma once

#include <string>
#include <string_view>

namespace rdl::formula {

// The same formula without the mark ': texts stand between double marks, and a ' within one is chr(39). The
// formula of a report file is put into statements, which build on the mark.
std::string WithoutSingleMarks(std::string_view formula);

}  // namespace rdl::formula
