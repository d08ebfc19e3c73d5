// A connect string: pairs key=value between semicolons, values in " or ' (doubled inside) or in { }.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rdl::data {

class ConnectString {
 public:
    ConnectString() = default;
    // A text without any = is one value under the key "data source": many reports give a bare file name.
    explicit ConnectString(std::string_view text);

    // The value of the first of the keys that is there; keys without regard to case and blanks.
    std::string Get(std::initializer_list<std::string_view> keys) const;
    bool Has(std::initializer_list<std::string_view> keys) const;
    const std::vector<std::pair<std::string, std::string>>& Pairs() const { return m_pairs; }

 private:
    std::vector<std::pair<std::string, std::string>> m_pairs;  // keys as written
};

// What the pairs of each provider mean, whatever they are called there.
struct ServerAddress {
    std::string host, database, user, password;
    int port = 0;  // 0: the provider's own
    bool integrated = false;
};
// Raises rdl::Error when the port is no number.
ServerAddress ReadServerAddress(const ConnectString& text);

}  // namespace rdl::data
