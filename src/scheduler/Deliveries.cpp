// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/Deliveries.h"

#include <algorithm>
#include <optional>

#include "platform/base/journal.h"
#include "platform/base/paths.h"
#include "platform/contracts/loop.h"
#include "platform/contracts/shared_store.h"
#include "platform/contracts/system_error.h"
#include "scheduler/RunHistory.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

namespace Global {

namespace {

constexpr int BusyAttempts = 30;
constexpr double SecondsOfAttempt = 10;  // at most

std::string DateStatement(const Delivery& delivery) {
    return delivery.run.kind == RunKind::Schedule ? "update ReportScheduler set NextRun = '" + delivery.next +
                                                        "' Where ReportID = " + delivery.run.reportID
                                                  : "update ReportBatch Set NextRundate = '" + delivery.next +
                                                        "' Where ReportID = " + delivery.run.reportID;
}

std::string HistoryStatement(const Delivery& delivery) {
    return delivery.run.kind == RunKind::Schedule
               ? RunHistoryStatement(delivery.run.reportID, delivery.moment, "Success", "None")
               : PackageRunStatement(delivery.run.reportID, delivery.moment);
}

// Runs the statements in one transaction.
void ExecuteTogether(ADODB::Connection& connection, const std::vector<std::string>& statements) {
    connection.BeginTrans();
    try {
        for (const std::string& statement : statements) {
            connection.Execute(statement);
        }
        connection.CommitTrans();
    } catch (...) {
        connection.RollbackTrans();
        throw;
    }
}

// Returns the error of the history row, or nullopt. The date is stored in both cases; its error is raised.
std::optional<RuntimeError> Store(ADODB::Connection& connection, const Delivery& delivery) {
    const std::string date = DateStatement(delivery);
    try {
        ExecuteTogether(connection, {date, HistoryStatement(delivery)});
        return std::nullopt;
    } catch (...) {
        const RuntimeError error = CurrentError();
        if (error.Number() == err::DataTimeout || error.Number() == err::DataUnavailable) {
            throw error;
        }
        ExecuteTogether(connection, {date});
        return error;
    }
}

}  // namespace

void WhileBusy(const std::function<void()>& body) {
    for (int attempt = 1;; ++attempt) {
        bool isLost = false;
        try {
            body();
            return;
        } catch (const StoreGivenUp&) {
            throw;
        } catch (...) {
            const RuntimeError error = CurrentError();
            isLost =
                error.Number() == err::DataUnavailable && SharedStoreFailure(ConnectionString).has_value();
            if ((error.Number() != err::DataTimeout && !isLost) || attempt == BusyAttempts) {
                throw error;
            }
            if (attempt == 1) {
                Journal("The scheduler waits for its database. " + error.Description());
            }
        }
        // An attempt on a busy database has waited already.
        isLost ? cmFunc::PauseSeconds(SecondsOfAttempt) : DoEvents();
    }
}

bool StoreIsReached() {
    static bool wasReached = true;
    const std::optional<RuntimeError> failure = SharedStoreFailure(ConnectionString);
    if (failure && wasReached) {
        journal::Write({journal::Level::Error,
                        "store-away",
                        {journal::Number("number", failure->Number())},
                        "The scheduler waits for its store. " + failure->Description() +
                            ". The next poll tries again."});
    } else if (!failure && !wasReached) {
        journal::Write({journal::Level::Notice, "store-back", {}, "The scheduler has its store again."});
    }
    wasReached = !failure.has_value();
    return wasReached;
}

namespace {

// Returns true for the error of a team's store that is write-protected or full, or lacks a right. That is
// mended on the server; the scheduler then polls again.
bool TakesNoChange(const RuntimeError& error) {
    return (error.Number() == err::DataReadOnly || error.Number() == err::DiskFull) &&
           IsSharedStore(ConnectionString);
}

}  // namespace

void WriteFailureRow(const std::string& routine, const RuntimeError& error,
                     const std::function<void()>& write) {
    try {
        WhileBusy(write);
    } catch (...) {
        // "occured": sic
        journal::Write(
            {journal::Level::Error,
             "history-lost",
             {journal::Number("number", error.Number())},
             ErrorText("An error occured in " + routine + ", and its history row cannot be written. ",
                       error)});
        if (TakesNoChange(error) || TakesNoChange(CurrentError())) {
            return;
        }
        // If the database failed at the poll's first statement, the insert has no key and cannot succeed. The
        // error of that statement names the cause.
        if (error.Number() == err::DataTimeout || error.Number() == err::DataReadOnly ||
            error.Number() == err::DiskFull || error.Number() == err::TooManyFiles) {
            throw error;
        }
        throw;
    }
}

Deliveries& Deliveries::Instance() {
    static Deliveries deliveries;
    deliveries.Load();
    return deliveries;
}

void Deliveries::Record(ADODB::Connection& connection, const Delivery& delivery) {
    if (Find(delivery.run) == nullptr) {
        m_kept.push_back(delivery);
        Save();
    }
    std::optional<RuntimeError> rowFailure;
    WhileBusy([&] { rowFailure = Store(connection, delivery); });
    RemoveIf([run = delivery.run](const Delivery& kept) { return kept.run == run; });
    if (rowFailure) {
        throw *rowFailure;
    }
}

void Deliveries::Record(ADODB::Connection& connection, const Delivery& delivery, ADODB::Claim claim) {
    m_claims.emplace_back(delivery.run, std::move(claim));
    Record(connection, delivery);
}

std::optional<std::string> Deliveries::RecordAgain(ADODB::Connection& connection, const DueRun& run) {
    const Delivery* delivery = Find(run);
    if (delivery == nullptr) {
        return std::nullopt;
    }
    std::string next = delivery->next;
    connection.Open(ConnectionString);
    Record(connection, *delivery);
    connection.Close();
    return next;
}

void Deliveries::GiveBackClaim(RunKind kind, const std::string& reportID) {
    std::erase_if(m_claims, [&](const auto& claim) {
        return claim.first.kind == kind && claim.first.reportID == reportID;
    });
}

const Delivery* Deliveries::Find(const DueRun& run) const {
    const auto found = std::find_if(m_kept.begin(), m_kept.end(),
                                    [&run](const Delivery& delivery) { return delivery.run == run; });
    return found == m_kept.end() ? nullptr : &*found;
}

void Deliveries::Clear(RunKind kind) {
    RemoveIf([kind](const Delivery& delivery) { return delivery.run.kind == kind; });
}

template <typename Condition>
void Deliveries::RemoveIf(Condition condition) {
    if (std::erase_if(m_kept, condition) > 0) {
        Save();
        std::erase_if(m_claims, [this](const auto& claim) { return Find(claim.first) == nullptr; });
    }
}

void Deliveries::Load() {
    if (m_folder == AppPath()) {
        return;
    }
    m_folder = AppPath();
    // Computed here and not in Save, to keep the time between a delivery and its line short.
    m_file = RunNotesFile("PressroomLive.delivered");
    m_kept.clear();
    m_claims.clear();
    for (const RunNote& note : ReadRunNotes(m_file, 2)) {
        m_kept.push_back({note.run, note.values[0], note.values[1]});
    }
}

// A failure is not reported: the database has to take the record, and its failures are reported.
void Deliveries::Save() const {
    std::vector<RunNote> notes;
    for (const Delivery& delivery : m_kept) {
        notes.push_back({delivery.run, {delivery.next, delivery.moment}});
    }
    WriteRunNotes(m_file, notes);
}

}  // namespace Global
