// SPDX-License-Identifier: GPL-3.0-or-later
// Data access to the team's store on a PostgreSQL server.
#pragma once

#include <memory>
#include <string>

#include "platform/data_provider/session.h"
#include "platform/postgresql/server_pool.h"

class PostgresqlSession : public DataSession {
 public:
    // Raises err::DataUnavailable if the server cannot be reached or its store has another version.
    explicit PostgresqlSession(Link link);

    void Execute(const std::string& statement) override;
    std::unique_ptr<DataRows> Query(const std::string& statement) override;
    void ProveWritable() override;
    std::string WhyReadOnly() override;
    void Begin() override;
    void Commit() override;
    void Rollback() override;
    void BeginReading() override;
    void SetLastKey(const std::string& table, const std::string& column, const std::string& last) override;
    void KeepReport(const std::string& name, const std::string& bytes) override;
    std::vector<std::string> ReportNames() override;
    std::string DigestOfReport(const std::string& name) override;
    std::string BytesOfReport(const std::string& name) override;
    bool TakeClaim(const std::string& table, const std::string& key) override;
    std::string LossOfClaim(const std::string& table, const std::string& key) override;
    void ReleaseClaims() noexcept override;
    std::vector<ADODB::HeldClaim> HeldClaims() override;

 private:
    Server& Leased();

    Link m_link;
    // Shared with the rows of a query. Null after the rows have given it back.
    std::shared_ptr<LeasedServer> m_server;
    bool m_hasClaims = false;
    bool m_isInTransaction = false;
};
