// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/console.h"

#include <iostream>

#include "platform/base/one_line.h"
#include "platform/contracts/runtime.h"

namespace tools {

void Print(const std::string& text) {
    std::cout << text << std::flush;
    if (!std::cout) {
        throw RuntimeError(err::PathFileAccess, "The output cannot be written");
    }
}

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

void Complain(const std::string& program, const std::string& text) {
    std::cerr << program + ": " + OnOneLine(text) << std::endl;
}

void ComplainOfUsage(const std::string& program, const std::string& text) {
    Complain(program, text + " (see " + program + " --help)");
}

}  // namespace tools
