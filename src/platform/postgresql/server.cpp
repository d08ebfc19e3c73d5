// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/server.h"

#include <libpq-fe.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>

#include "platform/contracts/runtime.h"
#include "platform/data_provider/busy_wait.h"
#include "platform/posix/password_command.h"
#include "platform/postgresql/failure.h"

namespace {

using namespace std::chrono_literals;

using Clock = std::chrono::steady_clock;

constexpr auto ConnectWait = 10s;
// A statement that waits for a lock gives up earlier.
constexpr auto AnswerWait = 60s;
constexpr int Turn = 50;  // milliseconds between two repaints

bool IsOnThisMachine(const std::string& host) {
    return host == "localhost" || host == "::1" || host.starts_with("127.") || host.starts_with("/");
}

std::string PasswordOf(const Link& link) {
    if (!link.password.empty() || link.passwordCommand.empty()) {
        return link.password;
    }
    CommandPassword result = RunPasswordCommand(link.passwordCommand);
    if (!result.failure.empty()) {
        RaiseUnreachable(link.Name(), result.failure);
    }
    return std::move(result.password);
}

// Returns the file of the certificates that the machine trusts, or an empty text.
std::string TrustedCertificates() {
    constexpr const char* File = "/etc/ssl/certs/ca-certificates.crt";
    std::error_code ignored;
    return std::filesystem::exists(File, ignored) ? File : "";
}

// Returns "courier" with the machine and the process, as `oxc-schedule status` shows who holds a claim.
std::string OwnName() {
    std::array<char, 48> host{};
    gethostname(host.data(), host.size() - 1);
    return std::string("courier ") + host.data() + " " + std::to_string(getpid());
}

class Parameters {
 public:
    void Add(const char* name, std::string value) {
        if (!value.empty()) {
            m_names.push_back(name);
            m_values.push_back(std::move(value));
        }
    }
    pg_conn* Start() const {
        std::vector<const char*> names = m_names;
        std::vector<const char*> values;
        for (const std::string& value : m_values) {
            values.push_back(value.c_str());
        }
        names.push_back(nullptr);
        values.push_back(nullptr);
        return PQconnectStartParams(names.data(), values.data(), 0);
    }

 private:
    std::vector<const char*> m_names;
    std::vector<std::string> m_values;
};

Parameters ParametersOf(const Link& link) {
    Parameters parameters;
    parameters.Add("host", link.host);
    parameters.Add("port", link.port);
    parameters.Add("dbname", link.database);
    parameters.Add("user", link.user);
    parameters.Add("password", PasswordOf(link));
    const bool isNear = IsOnThisMachine(link.host);
    const std::string mode = !link.sslMode.empty() ? link.sslMode : isNear ? "prefer" : "verify-full";
    parameters.Add("sslmode", mode);
    if (mode.starts_with("verify")) {
        parameters.Add("sslrootcert",
                       link.rootCertificate.empty() ? TrustedCertificates() : link.rootCertificate);
    }
    parameters.Add("application_name", OwnName());
    parameters.Add("client_encoding", "UTF8");
    // A machine that disappears without a word is noticed within half a minute.
    parameters.Add("keepalives_idle", "10");
    parameters.Add("keepalives_interval", "5");
    parameters.Add("keepalives_count", "3");
    parameters.Add("tcp_user_timeout", "25000");
    return parameters;
}

}  // namespace

void ResultDeleter::operator()(pg_result* result) const {
    PQclear(result);
}

Server::Server(const Link& link) : m_link(link) {
    try {
        Connect();
        const auto wait = std::chrono::duration_cast<std::chrono::milliseconds>(LongestBusyWait()).count();
        // The server ends the statement of a client that has gone.
        Run("set search_path = oxbow_courier, public; set standard_conforming_strings = on; "
            "set lock_timeout = " +
            std::to_string(wait) +
            "; set client_min_messages = error; set client_connection_check_interval = 2000; "
            "set idle_in_transaction_session_timeout = 0; set statement_timeout = 0; set jit = off");
    } catch (...) {
        PQfinish(m_connection);
        throw;
    }
}

Server::~Server() {
    PQfinish(m_connection);
}

void Server::Connect() {
    m_connection = ParametersOf(m_link).Start();
    if (m_connection == nullptr) {
        throw RuntimeError(err::OutOfMemory);
    }
    PQsetNoticeProcessor(
        m_connection, [](void*, const char*) {}, nullptr);
    const auto since = Clock::now();
    PostgresPollingStatusType next = PGRES_POLLING_WRITING;
    while (next != PGRES_POLLING_OK) {
        if (next == PGRES_POLLING_FAILED || PQstatus(m_connection) == CONNECTION_BAD) {
            RaiseUnreachable(m_link.Name(), PQerrorMessage(m_connection));
        }
        if (Clock::now() - since >= ConnectWait) {
            RaiseUnreachable(m_link.Name(), "the server does not answer within 10 seconds");
        }
        pollfd socket{PQsocket(m_connection),
                      static_cast<short>(next == PGRES_POLLING_READING ? POLLIN : POLLOUT), 0};
        if (poll(&socket, 1, Turn) != 0) {
            next = PQconnectPoll(m_connection);
        }
        RepaintDuringWait(since);
    }
    PQsetnonblocking(m_connection, 1);
}

bool Server::IsAlive() {
    pollfd socket{PQsocket(m_connection), POLLIN, 0};
    if (PQstatus(m_connection) == CONNECTION_OK && poll(&socket, 1, 0) > 0) {
        PQconsumeInput(m_connection);
        // A server that shuts down says so before it closes the connection.
        Result(PQgetResult(m_connection));
        PQconsumeInput(m_connection);
    }
    return PQstatus(m_connection) == CONNECTION_OK;
}

bool Server::IsIdle() const {
    return PQstatus(m_connection) == CONNECTION_OK && PQtransactionStatus(m_connection) == PQTRANS_IDLE;
}

bool Server::IsInTransaction() const {
    const PGTransactionStatusType status = PQtransactionStatus(m_connection);
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

void Server::RaiseLost() {
    RaiseUnreachable(m_link.Name(), PQerrorMessage(m_connection));
}

void Server::WaitFor(short events, Clock::time_point since) {
    if (Clock::now() - since >= AnswerWait) {
        RaiseUnreachable(m_link.Name(), "the server does not answer within 60 seconds");
    }
    pollfd socket{PQsocket(m_connection), events, 0};
    poll(&socket, 1, Turn);
    RepaintDuringWait(since);
}

void Server::Send(bool isSent) {
    const auto since = Clock::now();
    int left = isSent ? PQflush(m_connection) : -1;
    while (left == 1) {
        WaitFor(POLLIN | POLLOUT, since);
        left = PQconsumeInput(m_connection) == 1 ? PQflush(m_connection) : -1;
    }
    if (left != 0) {
        RaiseLost();
    }
}

Result Server::TakeResult() {
    const auto since = Clock::now();
    while (PQisBusy(m_connection) != 0) {
        WaitFor(POLLIN, since);
        if (PQconsumeInput(m_connection) == 0) {
            RaiseLost();
        }
    }
    return Result(PQgetResult(m_connection));
}

void Server::Check(const Result& result) {
    const ExecStatusType status = PQresultStatus(result.get());
    if (status != PGRES_FATAL_ERROR && status != PGRES_BAD_RESPONSE) {
        return;
    }
    if (PQstatus(m_connection) != CONNECTION_OK) {
        RaiseLost();
    }
    const char* state = PQresultErrorField(result.get(), PG_DIAG_SQLSTATE);
    const char* message = PQresultErrorField(result.get(), PG_DIAG_MESSAGE_PRIMARY);
    RaiseServerError(state != nullptr ? state : "",
                     message != nullptr ? message : PQresultErrorMessage(result.get()), m_link.Name());
}

// Keeps the first error, or the last result if there is none.
Result Server::LastResult() {
    Result last;
    while (Result next = TakeResult()) {
        if (last == nullptr || PQresultStatus(last.get()) != PGRES_FATAL_ERROR) {
            last = std::move(next);
        }
    }
    Check(last);
    return last;
}

Result Server::Run(const std::string& statements) {
    Send(PQsendQuery(m_connection, statements.c_str()) == 1);
    return LastResult();
}

Result Server::RunOne(const std::string& statement, const std::vector<std::string>& values) {
    std::vector<const char*> texts;
    for (const std::string& value : values) {
        texts.push_back(value.c_str());
    }
    Send(PQsendQueryParams(m_connection, statement.c_str(), static_cast<int>(texts.size()), nullptr,
                           texts.data(), nullptr, nullptr, 0) == 1);
    return LastResult();
}

void Server::Start(const std::string& statement) {
    Send(PQsendQueryParams(m_connection, statement.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0) == 1 &&
         PQsetSingleRowMode(m_connection) == 1);
}

Result Server::NextRow() {
    Result row = TakeResult();
    if (row != nullptr && PQresultStatus(row.get()) != PGRES_SINGLE_TUPLE) {
        while (TakeResult() != nullptr) {
        }
        Check(row);
    }
    return row;
}
