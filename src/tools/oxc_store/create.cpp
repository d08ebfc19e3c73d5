// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_store/create.h"

#include <libpq-fe.h>

#include "platform/base/convert.h"
#include "platform/postgresql/server_connection.h"
#include "platform/postgresql/store_version.h"
#include "tools/oxc_store/store_place.h"
#include "tools/oxc_store/team_schema.h"

namespace tools {
namespace {

std::string QuotedName(const std::string& role) {
    return "\"" + Replace(role, "\"", "\"\"") + "\"";
}

// What the role may do in the store: nothing but what follows these statements.
std::string WithoutRights(const std::string& role) {
    return "revoke all on all tables in schema oxbow_courier from " + role +
           "; revoke all on all sequences in schema oxbow_courier from " + role +
           "; revoke all on schema oxbow_courier from " + role + "; grant usage on schema oxbow_courier to " +
           role + "; grant select on all tables in schema oxbow_courier to " + role + ";";
}

// An editor defines everything.
std::string EditorRights(const std::string& role) {
    return WithoutRights(role) + "grant insert, update, delete on all tables in schema oxbow_courier to " +
           role + "; grant usage, select on all sequences in schema oxbow_courier to " + role +
           "; revoke insert, update, delete on oxbow_courier.store_version from " + role + ";";
}

// A scheduler moves dates on and writes history.
std::string SchedulerRights(const std::string& role) {
    return WithoutRights(role) + "grant update(NextRun) on oxbow_courier.ReportScheduler to " + role +
           "; grant update(NextRunDate) on oxbow_courier.ReportBatch to " + role +
           "; grant insert(ReportID, LastRun, Status, ErrMsg) on oxbow_courier.ReportHistory to " + role +
           "; grant insert(ReportID, LastRun, Success, ErrMsg) on oxbow_courier.ReportBatchHstry to " + role +
           ";";
}

void CheckDatabase(Server& server, const std::string& name) {
    if (server.OneValue("select pg_encoding_to_char(encoding) from pg_database where datname = "
                        "current_database()") != "UTF8") {
        RefuseStore("The database " + name + " does not have the encoding UTF8");
    }
    if (server.OneValue("select lower('\u00c4\u03a9\u0416I') = '\u00e4\u03c9\u0436i'") != "t") {
        RefuseStore("The database " + name +
                    " compares only A to Z without regard to case, or in the Turkish way; make it with the "
                    "locale C.UTF-8 or en_US.UTF-8");
    }
    CheckStoreCanBeMade(server);
}

// The owner of the database lets the roles connect, should the public not be allowed to.
std::string ConnectRights(Server& server, const std::vector<std::string>& roles) {
    std::string statements;
    if (server.OneValue(
            "select pg_has_role(datdba, 'usage') from pg_database where datname = current_database()") ==
        "t") {
        const std::string database = QuotedName(server.Linked().database);
        for (const std::string& role : roles) {
            statements += "grant connect on database " + database + " to " + QuotedName(role) + ";";
        }
    }
    return statements;
}

}  // namespace

void CreateStore(const Link& link, const std::vector<std::string>& editors,
                 const std::vector<std::string>& schedulers) {
    Server server(link);
    CheckDatabase(server, link.Name());
    std::vector<std::string> roles = editors;
    roles.insert(roles.end(), schedulers.begin(), schedulers.end());
    // The one of two that comes second waits here, and finds everything made.
    std::string statements = "begin; select pg_advisory_xact_lock(1870160639, 0); " +
                             ConnectRights(server, roles) + std::string(TeamSchema) + ";";
    for (const std::string& role : editors) {
        statements += EditorRights(QuotedName(role));
    }
    for (const std::string& role : schedulers) {
        statements += SchedulerRights(QuotedName(role));
    }
    server.Run(statements + "commit");
}

}  // namespace tools
