// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/common/server_address.h"

#include <algorithm>
#include <charconv>

#include "rdl/data/common/message.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"

namespace rdl::data {
namespace {

// Server=tcp:host,1433 and Server=host:port both carry the port with them.
void SplitPort(ServerAddress& address, std::string& port) {
    for (const std::string_view protocol : {"tcp:", "lpc:", "np:"}) {
        if (LowerAscii(address.host).starts_with(protocol)) {
            address.host.erase(0, protocol.size());
        }
    }
    std::size_t mark = address.host.find(',');
    if (mark == std::string::npos && address.host.find(':') == address.host.rfind(':')) {
        mark = address.host.find(':');
    }
    if (mark != std::string::npos) {
        port = Trimmed(std::string_view(address.host).substr(mark + 1));
        address.host.resize(mark);
    }
}

}  // namespace

ServerAddress ReadServerAddress(const ConnectString& text) {
    ServerAddress address;
    address.host = text.Get({"server", "host", "data source", "address", "addr", "network address"});
    address.database = text.Get({"database", "initial catalog", "dbname", "db"});
    address.user = text.Get({"user id", "uid", "user", "username", "user name"});
    address.password = text.Get({"password", "pwd"});
    const std::string integrated = LowerAscii(text.Get({"integrated security", "trusted connection"}));
    address.integrated = integrated == "true" || integrated == "yes" || integrated == "sspi";
    std::string port = text.Get({"port"});
    SplitPort(address, port);
    if (!port.empty()) {
        const auto [end, failure] = std::from_chars(port.data(), port.data() + port.size(), address.port);
        if (failure != std::errc() || end != port.data() + port.size() || address.port < 1 ||
            address.port > 65535) {
            throw Error("the port \"" + CleanText(port) + "\" of the connect string is no port number");
        }
    }
    // This machine, in front of an instance or alone.
    const std::size_t name = std::min(address.host.find('\\'), address.host.size());
    const std::string machine = LowerAscii(address.host.substr(0, name));
    if (machine.empty() || machine == "." || machine == "(local)") {
        address.host.replace(0, name, "localhost");
    }
    return address;
}

}  // namespace rdl::data
