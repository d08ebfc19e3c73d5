// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps the runs that are mailed but not yet recorded. If recording a run fails, a later poll records it
// again; the run is never mailed again.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/contracts/adodb.h"
#include "scheduler/RunNotes.h"

namespace Global {

struct Delivery {
    DueRun run;
    std::string next;    // the item's next date, as FormatDateText writes it
    std::string moment;  // the history row's time, as it is stored
};

// The one object for both polls. It keeps deliveries in memory and in the small file PressroomLive.delivered
// beside the database, because a process that ends between a delivery and its record must not send a second
// mail. The file is written without waiting for the disk: it protects against a killed process, not against a
// power failure. An entry whose item has moved on has no effect.
class Deliveries {
 public:
    static Deliveries& Instance();

    // Stores the item's next date and its history row in one transaction on an open connection. Waits for a
    // busy database, five minutes in all. If storing fails, the delivery stays for Find and the error is
    // raised. If only the history row cannot be written, the date is stored and the row's error is raised.
    void Record(ADODB::Connection& connection, const Delivery& delivery);
    // The same for a run that began under a claim. A run that could not be recorded stays claimed, so that no
    // other scheduler mails it again.
    void Record(ADODB::Connection& connection, const Delivery& delivery, ADODB::Claim claim);

    // If exactly this run was delivered before and its record failed, records it now over `connection`, which
    // is closed before and afterwards, and returns the item's next date: the run is not to be run again.
    // Returns nullopt if there is no such delivery. Raises what Record raises.
    std::optional<std::string> RecordAgain(ADODB::Connection& connection, const DueRun& run);

    // Gives back the claim of an earlier run of this item that could not be recorded, because the item is due
    // for another run.
    void GiveBackClaim(RunKind kind, const std::string& reportID);

    bool IsEmpty() const { return m_kept.empty(); }
    // Returns the delivery of exactly this run that is not recorded yet, or null. The object owns it; the
    // next change of the list ends its life.
    const Delivery* Find(const DueRun& run) const;
    // Removes all deliveries of a kind. A poll calls it after it has seen every item: what is left belongs to
    // no item.
    void Clear(RunKind kind);

 private:
    void Load();  // reads the file if the application's folder has changed
    void Save() const;
    template <typename Condition>
    void RemoveIf(Condition condition);

    std::string m_folder;  // whose deliveries these are
    std::filesystem::path m_file;
    std::vector<Delivery> m_kept;
    std::vector<std::pair<DueRun, ADODB::Claim>> m_claims;  // of some that are kept
};

// Writes the history row of a failed poll through `write` and waits for a busy database, five minutes in all.
// If the row cannot be written, the poll's own error becomes a line on standard error and the error of the
// write is raised. The poll's own error is raised instead if it says that the database is busy, read-only,
// out of disk space or out of files. Nothing is raised for a shared store that is write-protected or full, or
// lacks a right: its scheduler polls again.
void WriteFailureRow(const std::string& routine, const RuntimeError& error,
                     const std::function<void()>& write);

// Returns false if the store that several machines share cannot be reached now or takes no changes from
// anybody; a poll then does nothing. The first poll that finds it so, and the first that does not any more,
// write a line to standard error.
bool StoreIsReached();

// Runs `body` until the database is not busy, at most 30 times (each attempt waits up to ten seconds). Events
// run between attempts. A shared store that cannot be reached counts as busy. Raises the last error, and any
// other error at once.
void WhileBusy(const std::function<void()>& body);

}  // namespace Global
