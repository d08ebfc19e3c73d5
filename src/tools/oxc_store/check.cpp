// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_store/check.h"

#include <libpq-fe.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdlib>

#include "platform/contracts/clock.h"
#include "platform/postgresql/server_connection.h"
#include "platform/postgresql/store_version.h"
#include "tools/oxc_store/store_tables.h"

namespace tools {
namespace {

// Returns the middle of five times, in tenths of a millisecond.
std::int64_t AnswerTime(Server& server) {
    std::array<std::int64_t, 5> times{};
    for (std::int64_t& time : times) {
        const auto start = std::chrono::steady_clock::now();
        server.RunOne("select 1");
        time = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start)
                   .count() /
               100;
    }
    std::sort(times.begin(), times.end());
    return times[2];
}

// Returns by how many seconds the server's clock is ahead of this machine's.
std::int64_t ClockDifference(Server& server) {
    const std::string text = server.OneValue("select floor(extract(epoch from clock_timestamp()))::bigint");
    std::int64_t seconds = 0;
    std::from_chars(text.data(), text.data() + text.size(), seconds);
    return seconds - std::chrono::duration_cast<std::chrono::seconds>(
                         std::chrono::system_clock::now().time_since_epoch())
                         .count();
}

std::string RightsOf(Server& server) {
    const auto may = [&server](const std::string& right, const std::string& table) {
        return server.OneValue("select has_table_privilege('" + table + "', '" + right + "')") == "t";
    };
    if (may("insert", "ReportScheduler") && may("delete", "ReportScheduler") && may("insert", "Folders") &&
        may("insert", "StoredReport")) {
        return "an editor";
    }
    const bool movesDates = server.OneValue(
                                "select has_column_privilege('ReportScheduler', 'nextrun', 'update') and "
                                "has_column_privilege('ReportBatch', 'nextrundate', 'update')") == "t";
    const bool addsRows = server.OneValue(
                              "select has_any_column_privilege('ReportHistory', 'insert') and "
                              "has_any_column_privilege('ReportBatchHstry', 'insert')") == "t";
    return movesDates && addsRows ? "a scheduler" : "a reader";
}

// Returns the difference of local time to universal time: "+01:00".
std::string OwnZone() {
    constexpr int Minute = 60, Hour = 60;
    const int offset = TheClock().Moment().offset / Minute;
    const auto twoDigits = [](int number) { return (number < 10 ? "0" : "") + std::to_string(number); };
    return (offset < 0 ? "-" : "+") + twoDigits(std::abs(offset) / Hour) + ":" +
           twoDigits(std::abs(offset) % Hour);
}

// Raises an error if a lock does not stay with the connection that took it. A pooler that is not in session
// mode gives the server's session with the lock to the second connection, and another one to the next
// statement of the first.
void CheckSession(const Link& link, Server& server) {
    constexpr const char* Class = "1870160639";  // no table's claims have it
    const std::string taken =
        server.OneValue(std::string("select pg_backend_pid() from pg_try_advisory_lock(") + Class +
                        ", pg_backend_pid()) as taken where taken");
    Server other(link);
    other.Run("begin; select 1");
    const Result held = server.RunOne(
        "select 1 from pg_locks where locktype = 'advisory' and pid = pg_backend_pid() and granted and "
        "classid::bigint = $1::bigint and objid::bigint = $2::bigint",
        {Class, taken});
    if (taken.empty() || PQntuples(held.get()) == 0) {
        RefuseStore("Claims do not hold in the store " + link.Name() +
                    ": its statements reach several sessions of the server, as they do through a connection "
                    "pooler that is not in session mode");
    }
}

std::string CheckServer(const Link& link) {
    constexpr std::int64_t LargestDifference = 60;
    Server server(link);
    CheckStoreVersion(server);
    CheckSession(link, server);
    const std::int64_t time = AnswerTime(server);
    const std::int64_t difference = ClockDifference(server);
    std::string text =
        "Server: PostgreSQL " + server.OneValue("show server_version") + ", database " + link.Name() + "\n";
    text += "Connection: " + std::string(server.OneValue("select coalesce((select ssl from pg_stat_ssl where "
                                                         "pid = pg_backend_pid()), false)") == "t"
                                             ? "encrypted"
                                             : "not encrypted");
    text += ", an answer takes " + std::to_string(time / 10) + "." + std::to_string(time % 10) + " ms\n";
    text += "Store: version " + server.OneValue("select max(version) from store_version") + "\n";
    text += "Rights: " + RightsOf(server) + "\n";
    text += "Claims: hold\n";
    text += "Clock: " + std::to_string(difference) + " seconds ahead of this machine\n";
    text += "Time zone: " + OwnZone() + " on this machine; the other schedulers need the same\n";
    if (std::abs(difference) > LargestDifference) {
        RefuseStore("The clocks of this machine and of the server of " + link.Name() + " differ by " +
                    std::to_string(std::abs(difference)) + " seconds");
    }
    return text;
}

}  // namespace

std::string CheckStore(const StorePlace& place) {
    std::string text = place.link ? CheckServer(*place.link) : "File: " + place.file.string() + "\n";
    const std::unique_ptr<DataSession> session = OpenPlace(place);
    for (const StoreTable& table : StoreTables) {
        const std::unique_ptr<DataRows> rows =
            session->Query("select count(*) from " + std::string(table.name));
        rows->Next();
        Variant count;
        rows->Read(0, count);
        text += std::string(table.name) + ": " + count.Text() + " rows\n";
    }
    return text;
}

}  // namespace tools
