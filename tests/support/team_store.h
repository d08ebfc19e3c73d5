// SPDX-License-Identifier: GPL-3.0-or-later
// A team's store for one test, on the server that the variable OXC_TEST_SERVER names by a connect string. Its
// user makes databases.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace fakes {

// Returns true if the tests run over a server instead of the embedded database.
bool TestsUseServer();

class TeamStore {
 public:
    TeamStore();
    ~TeamStore();
    TeamStore(const TeamStore&) = delete;
    TeamStore& operator=(const TeamStore&) = delete;

    // Returns the text of a link to the store.
    std::string LinkText() const;
    // Runs statements of PostgreSQL's own, as another program would.
    void Run(const std::string& statements) const;
    // Returns the rows of a statement in the system's dialect, as TestDatabase::Rows does.
    std::vector<std::string> Rows(const std::string& select) const;

 private:
    std::string m_name;
};

}  // namespace fakes
