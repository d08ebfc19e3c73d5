// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/team_store.h"

#include <libpq-fe.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "platform/postgresql/dialect.h"
#include "platform/postgresql/link.h"
#include "platform/postgresql/server_pool.h"
#include "support/source_dir.h"

namespace fakes {

namespace {

const char* ServerText() {
    return std::getenv("OXC_TEST_SERVER");
}

Link LinkTo(const std::string& database) {
    Link link = LinkOfConnectString(ServerText());
    link.database = database;
    return link;
}

// A connection of the test's own, without the system's code.
class Bare {
 public:
    explicit Bare(const std::string& database) {
        const Link link = LinkTo(database);
        const char* const names[] = {"host", "port", "user", "dbname", nullptr};
        const char* const values[] = {link.host.c_str(), link.port.c_str(), link.user.c_str(),
                                      link.database.c_str(), nullptr};
        m_connection = PQconnectdbParams(names, values, 0);
        Run("set search_path = oxbow_courier, public; set client_min_messages = error");
    }
    ~Bare() { PQfinish(m_connection); }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;

    Result Run(const std::string& statements) const {
        Result result(PQexec(m_connection, statements.c_str()));
        if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR || PQstatus(m_connection) != CONNECTION_OK) {
            throw std::runtime_error(PQerrorMessage(m_connection) + statements);
        }
        return result;
    }

 private:
    PGconn* m_connection = nullptr;
};

constexpr const char* Template = "oxc_test_template";

// Makes the database that all others are copies of, once for each server.
void MakeTemplate() {
    const Bare server("postgres");
    server.Run("select pg_advisory_lock(4711)");
    const Result found =
        server.Run(std::string("select 1 from pg_database where datname = '") + Template + "'");
    if (PQntuples(found.get()) == 0) {
        server.Run(std::string("create database ") + Template);
        std::ifstream file(SourceDir() + "/src/store/team_schema.sql");
        std::stringstream schema;
        schema << "begin;" << file.rdbuf() << ";commit";
        Bare(Template).Run(schema.str());
    }
}

}  // namespace

bool TestsUseServer() {
    return ServerText() != nullptr;
}

TeamStore::TeamStore() {
    static const bool made = (MakeTemplate(), true);
    static int number = 0;
    m_name = "oxc_test_" + std::to_string(getpid()) + "_" + std::to_string(number += made ? 1 : 0);
    Bare("postgres").Run("create database " + m_name + " template " + Template);
}

TeamStore::~TeamStore() {
    CloseIdleServers();
    try {
        Bare("postgres").Run("drop database " + m_name + " with (force)");
    } catch (const std::runtime_error&) {
        return;  // a test may have stopped the server
    }
}

std::string TeamStore::LinkText() const {
    return TextOfLink(LinkTo(m_name));
}

void TeamStore::Run(const std::string& statements) const {
    Bare(m_name).Run(statements);
}

std::vector<std::string> TeamStore::Rows(const std::string& select) const {
    const Result result = Bare(m_name).Run(TranslateForServer(select));
    std::vector<std::string> rows;
    for (int row = 0; row < PQntuples(result.get()); ++row) {
        std::string text;
        for (int column = 0; column < PQnfields(result.get()); ++column) {
            if (std::string(PQfname(result.get(), column)) == "rowid" && !MentionsRowOrder(select)) {
                continue;
            }
            const bool isNull = PQgetisnull(result.get(), row, column) != 0;
            text += (text.empty() && column == 0 ? "" : "|") +
                    std::string(isNull ? "null" : PQgetvalue(result.get(), row, column));
        }
        rows.push_back(text);
    }
    return rows;
}

}  // namespace fakes
