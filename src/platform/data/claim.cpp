// SPDX-License-Identifier: GPL-3.0-or-later
#include <utility>

#include "platform/contracts/adodb.h"
#include "platform/data/open_session.h"

namespace ADODB {

namespace {

// Reads the row of the same key again. The statement is the claim's own and is not traced.
bool IsUnchanged(DataSession& session, const std::string& table, const Recordset& row) {
    const std::unique_ptr<DataRows> rows =
        session.Query("select * from " + table + " where ReportID = " + row.Fields("ReportID").Value);
    if (rows == nullptr || !rows->Next()) {
        return false;
    }
    bool isSame = rows->ColumnCount() == row.FieldCount();
    Variant value;
    for (std::size_t column = 0; isSame && column < row.FieldCount(); ++column) {
        rows->Read(column, value);
        isSame = value == row.Fields(column).Value;
    }
    while (rows->Next()) {
    }
    return isSame;
}

}  // namespace

struct Claim::Impl {
    Impl(std::unique_ptr<DataSession> opened, std::string ofTable, std::string ofKey)
        : session(std::move(opened)), table(std::move(ofTable)), key(std::move(ofKey)) {}
    ~Impl() { session->ReleaseClaims(); }
    std::unique_ptr<DataSession> session;
    std::string table, key;
};

Claim::Claim(const std::string& connectionString, const std::string& table, const Recordset& row) {
    if (!IsShared(connectionString)) {
        return;
    }
    auto claim =
        std::make_unique<Impl>(OpenDataSession(connectionString), table, row.Fields("ReportID").Value.Text());
    m_isHeld = claim->session->TakeClaim(table, claim->key) && IsUnchanged(*claim->session, table, row);
    if (m_isHeld) {
        m_impl = std::move(claim);
    }
}

void Claim::Prove() const {
    const std::string loss =
        m_impl == nullptr ? "" : m_impl->session->LossOfClaim(m_impl->table, m_impl->key);
    if (!loss.empty()) {
        throw ClaimLost(loss);
    }
}

Claim::~Claim() = default;
Claim::Claim(Claim&&) noexcept = default;
Claim& Claim::operator=(Claim&&) noexcept = default;

std::vector<HeldClaim> HeldClaims(const std::string& connectionString) {
    return IsShared(connectionString) ? OpenDataSession(connectionString)->HeldClaims()
                                      : std::vector<HeldClaim>();
}

}  // namespace ADODB
