// SPDX-License-Identifier: GPL-3.0-or-later
#include <functional>
#include <utility>

#include "platform/contracts/adodb.h"
#include "platform/sqlite/database.h"

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
    std::unique_ptr<Database> database;  // null while the connection is closed
};

Connection::Connection() : m_impl(std::make_unique<Impl>()) {}
Connection::~Connection() = default;

// User and password are part of the interface; the data file has neither.
void Connection::Open(const std::string& connectionString, const std::string& /*user*/,
                      const std::string& /*password*/) {
    if (m_impl->database != nullptr) {
        throw RuntimeError(err::DataOpen);
    }
    m_impl->database = std::make_unique<Database>(connectionString);
}

Connection::Impl& Connection::Opened() const {
    if (m_impl->database == nullptr) {
        throw RuntimeError(err::DataClosed);
    }
    return *m_impl;
}

void Connection::Execute(const std::string& statement) {
    Database& database = *Opened().database;
    TraceStatement(statement);
    Statement running(database, statement);
    while (running.Step()) {
    }
}

void Connection::ProveWritable() {
    Opened().database->ProveWritable();
}

void Connection::BeginTrans() {
    Opened().database->Begin();
}

void Connection::CommitTrans() {
    Opened().database->Commit();
}

void Connection::RollbackTrans() {
    Opened().database->Rollback();
}

void Connection::Close() {
    Opened().database.reset();
}

void SetStatementTrace(std::function<void(const std::string&)> trace) {
    Trace() = std::move(trace);
}

}  // namespace ADODB
