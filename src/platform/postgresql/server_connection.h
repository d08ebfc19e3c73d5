// SPDX-License-Identifier: GPL-3.0-or-later
// One connection to a PostgreSQL server. Every wait has a limit and lets windows repaint themselves.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/postgresql/link.h"

struct pg_conn;
struct pg_result;

struct ResultDeleter {
    void operator()(pg_result* result) const;
};
using Result = std::unique_ptr<pg_result, ResultDeleter>;

class Server {
 public:
    // Connects within ten seconds, to what the link says: the variables of libpq that name another server, a
    // service or options (PGHOSTADDR, PGSERVICE, PGOPTIONS ...) have no effect. Raises err::DataUnavailable
    // if that fails or if the server is older than PostgreSQL 14.
    explicit Server(const Link& link);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    const Link& Linked() const { return m_link; }
    // Returns false if the server has closed the connection or has said that it does. Does not wait.
    bool IsAlive();
    // Returns true if no statement runs and no transaction is open.
    bool IsIdle() const;
    bool IsInTransaction() const;
    // Returns why the server takes no changes, or an empty text. Does not ask the server: it reports a change
    // with the next answer.
    std::string WhyReadOnly() const;
    // Returns a text that no other session has. The server's session keeps it in the setting
    // oxbow_courier.session: a statement that finds another one there has reached another session.
    const std::string& Mark() const { return m_mark; }

    // Runs statements of the provider itself, several with semicolons between them, and returns the last
    // result.
    Result Run(const std::string& statements);
    // Runs exactly one statement; `values` are its parameters $1, $2 ... Raises a syntax error for a second
    // statement.
    Result RunOne(const std::string& statement, const std::vector<std::string>& values = {});
    // Returns the first value of its first row, "" without a row.
    std::string OneValue(const std::string& statement, const std::vector<std::string>& values = {});

    // Starts one statement whose rows come one at a time from NextRow.
    void Start(const std::string& statement);
    // Returns the next row; after the last one a result without rows, which has the columns; then null.
    Result NextRow();

 private:
    Result LastResult();
    Result TakeResult();
    void Connect();
    void Send(bool isSent);
    void WaitFor(short events, std::chrono::steady_clock::time_point since);
    void Check(const Result& result);
    [[noreturn]] void RaiseLost();

    Link m_link;
    std::string m_mark;
    bool m_isEnding = false;  // the server has said so
    pg_conn* m_connection = nullptr;
};
