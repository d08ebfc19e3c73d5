// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/team_store.h"

#include <libpq-fe.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <regex>
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
            const std::string message = PQerrorMessage(m_connection) + statements;
            if (PQtransactionStatus(m_connection) == PQTRANS_INERROR) {
                Result(PQexec(m_connection, "rollback"));
            }
            throw std::runtime_error(message);
        }
        return result;
    }

 private:
    PGconn* m_connection = nullptr;
};

std::string ForServer(std::string statements) {
    static const std::regex trigger(
        R"(create trigger (\w+) before (\w+) on (\w+) (?:when (.*?) )?begin\s+select\s+raise\(abort,\s*'(\w[^']*)'\); end)");
    static const std::regex noTrigger(R"(drop trigger (\w+))");
    static const std::regex noTable(R"((drop table \w+))");
    for (std::smatch found; std::regex_search(statements, found, trigger);) {
        const std::string condition = found[4].matched ? " when (" + found[4].str() + ")" : "";
        statements = found.prefix().str() + "create function stop_" + found[1].str() +
                     "() returns trigger language plpgsql as $$ begin raise exception using errcode = "
                     "'23000', message = '" +
                     found[5].str() + "'; end $$; create trigger stop_" + found[1].str() + " before " +
                     found[2].str() + " on " + found[3].str() + " for each row" + condition +
                     " execute function stop_" + found[1].str() + "()" + found.suffix().str();
    }
    statements = std::regex_replace(statements, noTrigger, "drop function stop_$1() cascade");
    return std::regex_replace(statements, noTable, "$1 cascade");
}

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

namespace {

// The database of this process. Most tests change rows only and leave it to the next one, with its
// connection: to open one takes the server longer than most tests.
struct Reused {
    std::string name;
    bool isChanged = false;  // in its tables
    std::unique_ptr<Bare> connection;
};

Reused& Present() {
    static Reused reused;
    return reused;
}

bool Empty(const Bare& connection) {
    try {
        std::string statements = "begin; set local lock_timeout = 1000;";
        for (const char* table :
             {"ReportScheduler", "ReportParameter", "ReportHistory", "ReportBatch", "ReportBatchDtls",
              "ReportBatchPar", "ReportBatchHstry", "Folders", "tmpPar", "clients", "StoredReport"}) {
            statements += std::string("delete from ") + table + ";";
        }
        for (const char* keys : {"reportscheduler_reportid", "reportbatch_reportid",
                                 "reportbatchdtls_detailid", "reportbatchpar_parid", "folders_folderid"}) {
            statements += std::string("select setval('") + keys + "_seq', 1, false);";
        }
        connection.Run(statements + "commit");
        return true;
    } catch (const std::runtime_error&) {
        return false;  // a test left a reader open
    }
}

}  // namespace

TeamStore::TeamStore() {
    static int number = 0;
    Reused& present = Present();
    if (number == 0) {
        MakeTemplate();
    } else if (present.isChanged || !Empty(*present.connection)) {
        Bare("postgres").Run("drop database if exists " + present.name + " with (force)");
        present = {};
    }
    if (present.name.empty()) {
        present.name = "oxc_test_" + std::to_string(getpid()) + "_" + std::to_string(++number);
        Bare("postgres").Run("create database " + present.name + " template " + Template);
        present.connection = std::make_unique<Bare>(present.name);
    }
    m_name = present.name;
}

TeamStore::~TeamStore() {
    CloseIdleServers();
}

std::string TeamStore::LinkText() const {
    return TextOfLink(LinkTo(m_name));
}

void TeamStore::Run(const std::string& statements) const {
    static const std::regex tableChange(R"(\b(create|drop|alter)\b)", std::regex::icase);
    Present().isChanged = Present().isChanged || std::regex_search(statements, tableChange);
    Present().connection->Run(ForServer(statements));
}

std::shared_ptr<void> TeamStore::Hold() const {
    auto holder = std::make_shared<Bare>(m_name);
    holder->Run(
        "begin; lock table ReportScheduler, ReportBatch, Folders, ReportHistory, ReportBatchHstry in "
        "exclusive mode");
    return holder;
}

std::vector<std::string> TeamStore::Rows(const std::string& select) const {
    const Result result = Present().connection->Run(TranslateForServer(select));
    std::vector<std::string> rows;
    for (int row = 0; row < PQntuples(result.get()); ++row) {
        std::string text;
        for (int column = 0; column < PQnfields(result.get()); ++column) {
            if (std::string(PQfname(result.get(), column)) == "rowid" && !MentionsRowOrder(select)) {
                continue;
            }
            const bool isNull = PQgetisnull(result.get(), row, column) != 0;
            std::string value = isNull ? "null" : PQgetvalue(result.get(), row, column);
            if (constexpr Oid Bool = 16; !isNull && PQftype(result.get(), column) == Bool) {
                value = value == "t" ? "1" : "0";
            }
            text += (column == 0 ? "" : "|") + value;
        }
        rows.push_back(text);
    }
    return rows;
}

}  // namespace fakes
