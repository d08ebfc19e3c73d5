// SPDX-License-Identifier: GPL-3.0-or-later
// The server that a connect string names.
#pragma once

#include <string>

#include "rdl/api/connect_string.h"

namespace rdl::data {

// The server address, whatever the provider calls its keys.
struct ServerAddress {
    std::string host, database, user, password;
    int port = 0;  // 0: the provider's default
    bool integrated = false;
};
// Raises rdl::Error if the port is not a number.
ServerAddress ReadServerAddress(const ConnectString& text);

}  // namespace rdl::data
