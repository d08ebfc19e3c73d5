// What a poll has delivered, until the database has taken it: a run whose mail is out is recorded again when
// that failed, never mailed again.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/contracts/adodb.h"

namespace Global {

enum class RunKind { Schedule, Package };

// One run of an item: when its date or its time is changed, it is another one.
struct DueRun {
    RunKind kind = RunKind::Schedule;
    std::string reportID;
    std::string date, time;  // as the item's row holds them
    bool operator==(const DueRun&) const = default;
};

struct Delivery {
    DueRun run;
    std::string next;    // the date text that the item moves on to
    std::string moment;  // of the history row, as it is stored
};

// One object for both polls. It remembers in memory and in a small file beside the database, as a process
// that ends between a delivery and its record must not cost the recipients a second mail. The file is written
// without waiting for the disk: it is for a killed process. What it holds of an item that has moved on means
// nothing.
class Deliveries {
 public:
    static Deliveries& Instance();

    // Stores the item's next date and its history row, both or neither, on an open connection. A database
    // that is busy is waited for, for minutes. When it fails, the delivery is kept for Find and the error
    // raised. A history row that cannot be written does not hold back the date: then only its error is
    // raised.
    void Record(ADODB::Connection& connection, const Delivery& delivery);

    bool IsEmpty() const { return m_kept.empty(); }
    // A delivery of this very run that is not recorded yet; nullptr when there is no such delivery.
    const Delivery* Find(const DueRun& run) const;
    // A poll has seen every item of a kind: what is still kept of that kind belongs to no item.
    void Clear(RunKind kind);

 private:
    void Load();  // when the application's folder is another one than before
    void Save() const;
    template <typename Condition>
    void RemoveIf(Condition condition);

    std::string m_folder;  // whose deliveries these are
    std::filesystem::path m_file;
    std::vector<Delivery> m_kept;
};

// Writes the row of a failed poll by `write`. A busy database is waited for, for minutes. When the row cannot
// be written at all, the poll's own error is a line on standard error, as the one that is raised is that of
// the write; but a poll that failed on a busy database raises that.
void WriteFailureRow(const std::string& routine, const RuntimeError& error,
                     const std::function<void()>& write);

// Runs `body` again and again while the database is busy, for some minutes in all; events run in between.
// Raises what it fails with at last, and any other error at once.
void WhileBusy(const std::function<void()>& body);

}  // namespace Global
