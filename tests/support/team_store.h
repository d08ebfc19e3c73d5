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
    // Runs statements that both databases understand, as another program would. `drop table`, and a trigger
    // that stops a change by raise(abort, ...), are written as for the embedded database.
    void Run(const std::string& statements) const;
    // Returns the rows of a statement in the system's dialect, as TestDatabase::Rows does.
    std::vector<std::string> Rows(const std::string& select) const;
    // Keeps the tables of schedules, packages, histories and folders busy while the object lives.
    std::shared_ptr<void> Hold() const;

 private:
    std::string m_name;
};

}  // namespace fakes
