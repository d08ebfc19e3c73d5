// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/hidden_arguments.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "platform/base/ascii.h"
#include "platform/base/text.h"

namespace tools {
namespace {

void Hide(char* text) {
    std::fill_n(text, std::strlen(text), '*');
}

bool EndsWithKey(std::string_view text) {
    text = Trim(text, " \t");
    constexpr std::array<std::string_view, 2> Keys{"Password", "Pwd"};
    return std::any_of(Keys.begin(), Keys.end(), [text](std::string_view key) {
        return text.size() >= key.size() && SameText(text.substr(text.size() - key.size()), key);
    });
}

// Returns where the first password of a connect string begins; npos if there is none.
std::size_t PasswordIn(std::string_view text) {
    for (std::size_t sign = text.find('='); sign != std::string_view::npos; sign = text.find('=', sign + 1)) {
        if (EndsWithKey(text.substr(0, sign))) {
            return sign + 1;
        }
    }
    return std::string_view::npos;
}

// Hides the rest of the argument: providers differ on where a value ends.
void HidePassword(char* connectString) {
    if (const std::size_t begin = PasswordIn(connectString); begin != std::string_view::npos) {
        Hide(connectString + begin);
    }
}

}  // namespace

void HideSecrets(int argc, char** argv) {
    for (int n = 1; n + 1 < argc; ++n) {
        const std::string_view option(argv[n]);
        if (option == "--password") {
            Hide(argv[n + 1]);
        } else if (option == "--data-source") {
            HidePassword(argv[n + 1]);
        }
    }
}

void HideConnectStrings(int argc, char** argv) {
    for (int n = 1; n < argc; ++n) {
        HidePassword(argv[n]);
    }
}

bool HoldsPassword(std::string_view connectString) {
    return PasswordIn(connectString) != std::string_view::npos;
}

std::string TakeFromEnvironment(const char* name) {
    char* const value = std::getenv(name);
    if (value == nullptr) {
        return {};
    }
    std::string taken(value);
    Hide(value);
    unsetenv(name);
    return taken;
}

}  // namespace tools
