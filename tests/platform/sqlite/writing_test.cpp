// SPDX-License-Identifier: GPL-3.0-or-later
// ProveWritable, transactions, and what is on the disk when a call returns.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "data_fixture.h"
#include "support/watched_log.h"

namespace {

namespace fs = std::filesystem;

class Writing : public DataFixture {
 protected:
    Writing() { Execute("insert into History(ReportID, Status) values(1, 'before')"); }
    ~Writing() override { ADODB::SetBusyWait(0); }

    std::vector<std::string> Statuses() const { return Column("select Status from History order by rowid"); }

    // Another program that writes, until the object is destroyed.
    class Holder {
     public:
        explicit Holder(const fs::path& file) {
            EXPECT_EQ(sqlite3_open(file.c_str(), &m_handle), SQLITE_OK);
            EXPECT_EQ(sqlite3_exec(m_handle, "begin immediate", nullptr, nullptr, nullptr), SQLITE_OK);
        }
        ~Holder() { sqlite3_close(m_handle); }
        Holder(const Holder&) = delete;
        Holder& operator=(const Holder&) = delete;

     private:
        sqlite3* m_handle = nullptr;
    };

    // Runs `body` as a user without root's rights. Returns the number that it raises.
    template <typename Body>
    static int AsNobody(Body body) {
        const pid_t child = fork();
        if (child == 0) {
            constexpr uid_t Nobody = 65534;
            if (geteuid() == 0 && (setgid(Nobody) != 0 || setuid(Nobody) != 0)) {
                _exit(99);
            }
            const int number = NumberRaisedBy(body);
            _exit(number == err::DataReadOnly ? 1 : number == err::DataUnavailable ? 2 : number == 0 ? 0 : 3);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

TEST_F(Writing, EveryChangeIsOnTheDiskBeforeItsCallReturns) {
    WatchedLog log;
    ADODB::Connection connection;
    connection.Open(m_data);
    connection.Execute("insert into History(Status) values('opens the log')");
    for (int row = 1; row <= 3; ++row) {
        log.syncs = 0;
        connection.Execute("insert into History(Status) values('x')");
        EXPECT_GE(log.syncs, 1) << row;
    }
}

TEST_F(Writing, ProofChangesNothingAndDoesNotWaitForTheDisk) {
    const std::string tables = Single("select group_concat(name) from sqlite_master");
    WatchedLog log;
    ADODB::Connection connection;
    connection.Open(m_data);
    connection.Execute("insert into History(Status) values('opens the log')");
    log.syncs = 0;
    connection.ProveWritable();
    EXPECT_EQ(log.syncs, 0);
    EXPECT_EQ(Single("select group_concat(name) from sqlite_master"), tables);
    EXPECT_EQ(Statuses(), (std::vector<std::string>{"before", "opens the log"}));
    Execute("insert into History(Status) values('another writer')");  // no lock is held
    connection.Execute("insert into History(Status) values('after')");
    EXPECT_EQ(Single("pragma integrity_check"), "ok");
}

TEST_F(Writing, ProofNeedsAnOpenConnection) {
    ADODB::Connection connection;
    EXPECT_EQ(NumberRaisedBy([&] { connection.ProveWritable(); }), err::DataClosed);
    EXPECT_EQ(NumberRaisedBy([&] { connection.BeginTrans(); }), err::DataClosed);
}

TEST_F(Writing, ProofFailsOnADiskWithHardlyAnyRoom) {
    for (const int code : {SQLITE_FULL, SQLITE_IOERR_WRITE}) {
        WatchedLog log;
        log.fullAt = 36 * 1024;
        log.fullCode = code;
        ADODB::Connection connection;
        connection.Open(m_data);
        EXPECT_EQ(NumberRaisedBy([&] { connection.ProveWritable(); }),
                  code == SQLITE_FULL ? err::DiskFull : err::DeviceIo);
        connection.Execute("insert into History(Status) values('small')");
    }
    EXPECT_EQ(Statuses(), (std::vector<std::string>{"before", "small", "small"}));
}

TEST_F(Writing, RoomThatWasProvedIsThereForTheWriteThatFollows) {
    WatchedLog log;
    ADODB::Connection connection;
    connection.Open(m_data);
    connection.ProveWritable();
    log.fullAt = log.length;  // another program fills the disk
    connection.BeginTrans();
    connection.Execute("update History set Status = hex(zeroblob(40000))");
    connection.Execute("insert into History(Status) values('row')");
    connection.CommitTrans();
    EXPECT_EQ(Single("select count(*) from History"), "2");
    EXPECT_EQ(Single("select length(Status) from History where ReportID = 1"), "80000");
}

TEST_F(Writing, ProofFailsOnBusyDataAfterItsTime) {
    ADODB::SetBusyWait(0.25);
    ADODB::Connection connection;
    connection.Open(m_data);
    const Holder holder(m_folder / "live.dat");
    const std::string description = DescriptionRaisedBy([&] { connection.ProveWritable(); });
    EXPECT_EQ(description, "The data file \"" + (m_folder / "live.dat").string() +
                               "\" is still in use by another program after 0.25 seconds");
    EXPECT_EQ(NumberRaisedBy([&] { connection.ProveWritable(); }), err::DataTimeout);
}

TEST_F(Writing, ProofFailsOnWriteProtectedData) {
    fs::permissions(m_folder.Path(), fs::perms(0755));
    fs::permissions(m_folder / "live.dat", fs::perms(0444));
    const auto prove = [this] {
        ADODB::Connection connection;
        connection.Open(m_data);
        connection.ProveWritable();
    };
    EXPECT_EQ(AsNobody(prove), 1);
    fs::permissions(m_folder / "live.dat", fs::perms(0666));
    fs::permissions(m_folder.Path(), fs::perms(0777));
    EXPECT_EQ(AsNobody(prove), 0);
    fs::permissions(m_folder.Path(), fs::perms(0555));
    EXPECT_NE(AsNobody(prove), 0);
    fs::permissions(m_folder.Path(), fs::perms(0755));
}

TEST_F(Writing, TransactionIsSeenWholeByOthers) {
    ADODB::Connection connection;
    connection.Open(m_data);
    connection.BeginTrans();
    connection.Execute("update History set Status = 'one'");
    connection.Execute("insert into History(Status) values('two')");
    EXPECT_EQ(Statuses(), std::vector<std::string>{"before"});
    connection.CommitTrans();
    EXPECT_EQ(Statuses(), (std::vector<std::string>{"one", "two"}));
}

TEST_F(Writing, TransactionThatIsTakenBackOrClosedChangesNothing) {
    for (const bool closes : {false, true}) {
        ADODB::Connection connection;
        connection.Open(m_data);
        connection.BeginTrans();
        connection.Execute("update History set Status = 'gone'");
        closes ? connection.Close() : connection.RollbackTrans();
        EXPECT_EQ(Statuses(), std::vector<std::string>{"before"});
    }
}

TEST_F(Writing, StatementThatFailsLeavesTheTransactionToItsCaller) {
    ADODB::Connection connection;
    connection.Open(m_data);
    connection.BeginTrans();
    connection.Execute("update History set Status = 'one'");
    EXPECT_EQ(NumberRaisedBy([&] { connection.Execute("insert into Nowhere values(1)"); }),
              err::DataTableMissing);
    connection.RollbackTrans();
    connection.RollbackTrans();  // no transaction is open any more
    EXPECT_EQ(Statuses(), std::vector<std::string>{"before"});
    connection.Execute("insert into History(Status) values('by itself')");
    EXPECT_EQ(Single("select count(*) from History"), "2");
}

}  // namespace
