// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/server_connection.h"

#include <libpq-fe.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <random>
#include <string_view>

#include "platform/contracts/runtime.h"
#include "platform/data_provider/busy_wait.h"
#include "platform/posix/file_access.h"
#include "platform/posix/password_command.h"
#include "platform/postgresql/failure.h"

namespace {

using namespace std::chrono_literals;

using SteadyClock = std::chrono::steady_clock;

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

std::string NewMark() {
    std::random_device source;
    return std::to_string(getpid()) + "-" + std::to_string(source()) + "-" + std::to_string(source());
}

// The parameters of a connection (PostgreSQL 15, section 34.1.1.1). An empty value keeps the variable of the
// environment out, which libpq would take in place of a missing one.
class Parameters {
 public:
    void Add(std::string_view name, std::string_view value) {
        m_text += std::string(name) + "='";
        for (const char c : value) {
            m_text += c == '\'' || c == '\\' ? "\\" : "";
            m_text += c;
        }
        m_text += "' ";
    }
    void AddIfGiven(std::string_view name, std::string_view value) {
        if (!value.empty()) {
            Add(name, value);
        }
    }
    pg_conn* Start() const { return PQconnectStart(m_text.c_str()); }

 private:
    std::string m_text;
};

Parameters ParametersOf(const Link& link) {
    Parameters parameters;
    parameters.Add("host", link.host);
    parameters.Add("hostaddr", "");
    parameters.Add("port", link.port);
    parameters.Add("dbname", link.database);
    parameters.Add("user", link.user.empty() ? NameOfUser(geteuid()) : link.user);
    parameters.Add("options", "");
    parameters.Add("target_session_attrs", "any");
    parameters.AddIfGiven("password", PasswordOf(link));
    const bool isNear = IsOnThisMachine(link.host);
    const std::string mode = !link.sslMode.empty() ? link.sslMode : isNear ? "prefer" : "verify-full";
    parameters.Add("sslmode", mode);
    if (mode.starts_with("verify")) {
        parameters.AddIfGiven("sslrootcert",
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

// The server notices a client that has gone: it ends the client's statement, and within a minute the session,
// with its claims. A session that waits between two polls is not ended. jit: the statements are small.
std::string SessionSettings(const std::string& mark) {
    const auto wait = std::chrono::duration_cast<std::chrono::milliseconds>(LongestBusyWait()).count();
    return "set search_path = oxbow_courier, public; set standard_conforming_strings = on; "
           "set lock_timeout = " +
           std::to_string(wait) +
           "; set client_min_messages = error; set client_connection_check_interval = 2000; "
           "set tcp_keepalives_idle = 30; set tcp_keepalives_interval = 10; set tcp_keepalives_count = 3; "
           "set tcp_user_timeout = 60000; "
           "set idle_session_timeout = 0; set idle_in_transaction_session_timeout = 0; "
           "set statement_timeout = 0; set jit = off; set oxbow_courier.session = '" +
           mark + "'";
}

// What the server says between two statements. An error there ends the session: its process says why before
// it ends, and the end of the connection comes some time after that.
void TakeNotice(void* isEnding, const pg_result* notice) {
    const char* const severity = PQresultErrorField(notice, PG_DIAG_SEVERITY_NONLOCALIZED);
    if (severity != nullptr &&
        (std::string_view(severity) == "FATAL" || std::string_view(severity) == "PANIC")) {
        *static_cast<bool*>(isEnding) = true;
    }
}

}  // namespace

void ResultDeleter::operator()(pg_result* result) const {
    PQclear(result);
}

Server::Server(const Link& link) : m_link(link), m_mark(NewMark()) {
    try {
        Connect();
        constexpr int Oldest = 140'000;
        if (PQserverVersion(m_connection) < Oldest) {
            RaiseUnreachable(m_link.Name(), "the server is older than PostgreSQL 14");
        }
        Run(SessionSettings(m_mark));
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
    PQsetNoticeReceiver(m_connection, TakeNotice, &m_isEnding);
    const auto since = SteadyClock::now();
    PostgresPollingStatusType next = PGRES_POLLING_WRITING;
    while (next != PGRES_POLLING_OK) {
        if (next == PGRES_POLLING_FAILED || PQstatus(m_connection) == CONNECTION_BAD) {
            RaiseUnreachable(m_link.Name(), PQerrorMessage(m_connection));
        }
        if (SteadyClock::now() - since >= ConnectWait) {
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
        const Result ended(PQgetResult(m_connection));
        PQconsumeInput(m_connection);
    }
    return PQstatus(m_connection) == CONNECTION_OK && !m_isEnding;
}

bool Server::IsIdle() const {
    return PQstatus(m_connection) == CONNECTION_OK && !m_isEnding &&
           PQtransactionStatus(m_connection) == PQTRANS_IDLE;
}

bool Server::IsInTransaction() const {
    const PGTransactionStatusType status = PQtransactionStatus(m_connection);
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

std::string Server::WhyReadOnly() const {
    const auto isOn = [this](const char* name) {
        const char* const value = PQparameterStatus(m_connection, name);
        return value != nullptr && std::string_view(value) == "on";
    };
    return isOn("in_hot_standby")                  ? "the server is a standby"
           : isOn("default_transaction_read_only") ? "its transactions are set to read only"
                                                   : "";
}

void Server::RaiseLost() {
    RaiseUnreachable(m_link.Name(), PQerrorMessage(m_connection));
}

void Server::WaitFor(short events, SteadyClock::time_point since) {
    if (SteadyClock::now() - since >= AnswerWait) {
        RaiseUnreachable(m_link.Name(), "the server does not answer within 60 seconds");
    }
    pollfd socket{PQsocket(m_connection), events, 0};
    poll(&socket, 1, Turn);
    RepaintDuringWait(since);
}

void Server::Send(bool isSent) {
    const auto since = SteadyClock::now();
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
    const auto since = SteadyClock::now();
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
    texts.reserve(values.size());
    for (const std::string& value : values) {
        texts.push_back(value.c_str());
    }
    Send(PQsendQueryParams(m_connection, statement.c_str(), static_cast<int>(texts.size()), nullptr,
                           texts.data(), nullptr, nullptr, 0) == 1);
    return LastResult();
}

std::string Server::OneValue(const std::string& statement, const std::vector<std::string>& values) {
    const Result result = RunOne(statement, values);
    return PQntuples(result.get()) > 0 ? PQgetvalue(result.get(), 0, 0) : "";
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
