#include <functional>
#include <utility>

#include "platform/adodb.h"
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
    std::unique_ptr<Database> database;  // nullptr while the connection is closed
};

Connection::Connection() : m_impl(std::make_unique<Impl>()) {}
Connection::~Connection() = default;

// User and password are part of the interface; the data file knows neither.
void Connection::Open(const std::string& connectionString, const std::string& /*user*/,
                      const std::string& /*password*/) {
    if (m_impl->database != nullptr) {
        throw RuntimeError(err::DataOpen);
    }
    m_impl->database = std::make_unique<Database>(connectionString);
}

void Connection::Execute(const std::string& statement) {
    if (m_impl->database == nullptr) {
        throw RuntimeError(err::DataClosed);
    }
    TraceStatement(statement);
    Statement running(*m_impl->database, statement);
    while (running.Step()) {
    }
}

void Connection::Close() {
    if (m_impl->database == nullptr) {
        throw RuntimeError(err::DataClosed);
    }
    m_impl->database.reset();
}

void SetStatementTrace(std::function<void(const std::string&)> trace) {
    Trace() = std::move(trace);
}

}  // namespace ADODB
