// SPDX-License-Identifier: GPL-3.0-or-later
#include <functional>
#include <utility>

#include "platform/contracts/adodb.h"
#include "platform/data/open_session.h"

namespace {

std::function<void(const std::string&)>& Trace() {
    static std::function<void(const std::string&)> trace;
    return trace;
}

}  // namespace

void TraceStatement(const std::string& statement) {
    if (Trace()) {
        Trace()(statement);
    }
}

namespace ADODB {

struct Connection::Impl {
    std::unique_ptr<DataSession> session;  // null while the connection is closed
};

Connection::Connection() : m_impl(std::make_unique<Impl>()) {}
Connection::~Connection() = default;

// User and password are part of the interface; the data file has neither, and a link names its own.
void Connection::Open(const std::string& connectionString, const std::string& /*user*/,
                      const std::string& /*password*/) {
    if (m_impl->session != nullptr) {
        throw RuntimeError(err::DataOpen);
    }
    m_impl->session = OpenDataSession(connectionString);
}

Connection::Impl& Connection::Opened() const {
    if (m_impl->session == nullptr) {
        throw RuntimeError(err::DataClosed);
    }
    return *m_impl;
}

void Connection::Execute(const std::string& statement) {
    DataSession& session = *Opened().session;
    TraceStatement(statement);
    session.Execute(statement);
}

void Connection::ProveWritable() {
    Opened().session->ProveWritable();
}

void Connection::BeginTrans() {
    Opened().session->Begin();
}

void Connection::CommitTrans() {
    Opened().session->Commit();
}

void Connection::RollbackTrans() {
    Opened().session->Rollback();
}

void Connection::Close() {
    Opened().session.reset();
}

void SetStatementTrace(std::function<void(const std::string&)> trace) {
    Trace() = std::move(trace);
}

}  // namespace ADODB
