// SPDX-License-Identifier: GPL-3.0-or-later
// Two programs that use one data file.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "data_fixture.h"

namespace {

using Moment = std::chrono::steady_clock::time_point;

class Sharing : public DataFixture {
 protected:
    // Runs `body` in a process of its own.
    template <typename Body>
    static pid_t InOtherProcess(Body body) {
        const pid_t child = fork();
        if (child == 0) {
            int result = 1;
            try {
                result = body();
            } catch (const RuntimeError& error) {
                fprintf(stderr, "%d %s\n", error.Number(), error.what());
            }
            _exit(result);
        }
        return child;
    }

    static int ResultOf(pid_t child) {
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    // Writes one row with each connection, as the system does. Returns their number.
    int WriteUntil(Moment end, const std::string& who) const {
        int written = 0;
        while (std::chrono::steady_clock::now() < end) {
            Execute("insert into History(ReportID, Status) values(" + std::to_string(written) + ", '" + who +
                    "')");
            if (Single("select count(*) from History where Status = '" + who + "'") !=
                std::to_string(++written)) {
                throw RuntimeError(1, "a row of " + who + " is lost after " + std::to_string(written));
            }
        }
        return written;
    }
};

// A process that closes a descriptor of the file loses its locks on it, and another program, which takes
// itself for the last one, then deletes the log of the open database.
TEST_F(Sharing, LooksAtTheFileLeaveTheLocksOfAnOpenConnection) {
    const auto isLocked = [this] {
        return ResultOf(InOtherProcess([this] {
            struct flock lock {};
            lock.l_type = F_WRLCK;  // of the whole file
            const int file = open((m_folder / "live.dat").c_str(), O_RDWR | O_CLOEXEC);
            return fcntl(file, F_GETLK, &lock) != 0 ? 2 : lock.l_type == F_UNLCK ? 0 : 1;
        }));
    };
    ADODB::Connection held;
    held.Open(m_data);
    held.Execute("insert into History(ReportID) values(1)");
    ASSERT_EQ(isLocked(), 1);
    EXPECT_EQ(Single("select count(*) from History"), "1");
    EXPECT_EQ(ADODB::StoreIdentity(m_data), m_data);
    EXPECT_EQ(isLocked(), 1);
    held.Close();
    EXPECT_EQ(isLocked(), 0);
}

TEST_F(Sharing, TwoProcessesWriteWithoutErrorOrLostRow) {
    const bool isLong = std::getenv("OXC_LONG_TESTS") != nullptr;
    const Moment end = std::chrono::steady_clock::now() + std::chrono::seconds(isLong ? 60 : 2);
    const auto writer = [this, end](const std::string& who) {
        return InOtherProcess([this, end, who] {
            const int written = WriteUntil(end, who);
            Execute("insert into Schedule(ReportTitle, Folder) values('" + who + "', " +
                    std::to_string(written) + ")");
            return 0;
        });
    };
    const pid_t one = writer("editor");
    const pid_t other = writer("scheduler");
    EXPECT_EQ(ResultOf(one), 0);
    EXPECT_EQ(ResultOf(other), 0);
    for (const std::string who : {"editor", "scheduler"}) {
        const std::string told = Single("select Folder from Schedule where ReportTitle = '" + who + "'");
        EXPECT_GT(std::stoi(told), 0);
        EXPECT_EQ(Single("select count(distinct ReportID) from History where Status = '" + who + "'"), told);
    }
    EXPECT_EQ(Single("pragma integrity_check"), "ok");
}

TEST_F(Sharing, OpenReaderSeesItsSnapshot) {
    Execute(
        "with recursive n(i) as (select 0 union all select i + 1 from n where i < 99) "
        "insert into History(ReportID, Status) select i, 'before' from n");
    ADODB::Recordset rows;
    rows.Open("select ReportID, Status from History", m_data);
    Execute("update History set Status = 'after'");
    Execute("delete from History where ReportID > 50");
    Execute("insert into History(ReportID, Status) values(1000, 'after')");
    int count = 0;
    for (; !rows.EOF_(); rows.MoveNext(), ++count) {
        ASSERT_EQ(rows.Fields("Status").Value.Text(), "before");
    }
    EXPECT_EQ(count, 100);
    rows.Close();
    EXPECT_EQ(Single("select count(*) from History where Status = 'after'"), "52");
}

TEST_F(Sharing, BusyFileIsWaitedFor) {
    sqlite3* holder = nullptr;
    ASSERT_EQ(sqlite3_open((m_folder / "live.dat").c_str(), &holder), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(holder, "pragma journal_mode=wal; begin immediate", nullptr, nullptr, nullptr),
              SQLITE_OK);
    std::thread release([holder] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        sqlite3_exec(holder, "commit", nullptr, nullptr, nullptr);
    });
    Execute("insert into History(ReportID) values(1)");
    release.join();
    sqlite3_close(holder);
    EXPECT_EQ(Single("select count(*) from History"), "1");
}

TEST_F(Sharing, LockedFileIsCalledBusyInWhateverWayItIsLocked) {
    ADODB::SetBusyWait(0.05);
    for (const char* lock :
         {"pragma journal_mode=delete; begin immediate", "pragma journal_mode=delete; begin exclusive",
          "pragma journal_mode=wal; begin immediate; insert into History(ReportID) values(1)",
          "pragma journal_mode=wal; pragma locking_mode=exclusive; begin exclusive; insert into "
          "History(ReportID) "
          "values(1)"}) {
        sqlite3* holder = nullptr;
        ASSERT_EQ(sqlite3_open((m_folder / "live.dat").c_str(), &holder), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(holder, lock, nullptr, nullptr, nullptr), SQLITE_OK) << lock;
        EXPECT_EQ(NumberRaisedBy([this] { Execute("insert into History(ReportID) values(2)"); }),
                  err::DataTimeout)
            << lock;
        const int read = NumberRaisedBy([this] { Column("select * from History"); });
        EXPECT_TRUE(read == 0 || read == err::DataTimeout) << lock << ": " << read;
        sqlite3_close(holder);
    }
    ADODB::SetBusyWait(0);
}

TEST_F(Sharing, FileThatStaysBusyIsGivenUpAfterTenSeconds) {
    if (std::getenv("OXC_LONG_TESTS") == nullptr) {
        GTEST_SKIP() << "takes ten seconds; OXC_LONG_TESTS=1 runs it";
    }
    sqlite3* holder = nullptr;
    ASSERT_EQ(sqlite3_open((m_folder / "live.dat").c_str(), &holder), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(holder, "pragma journal_mode=wal; begin immediate", nullptr, nullptr, nullptr),
              SQLITE_OK);
    const Moment start = std::chrono::steady_clock::now();
    EXPECT_EQ(NumberRaisedBy([this] { Execute("insert into History(ReportID) values(1)"); }),
              err::DataTimeout);
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GT(waited, std::chrono::seconds(9));
    EXPECT_LT(waited, std::chrono::seconds(12));
    sqlite3_close(holder);
}

TEST_F(Sharing, KilledWriterLeavesEveryFinishedRow) {
    const pid_t child = InOtherProcess([this] {
        WriteUntil(std::chrono::steady_clock::now() + std::chrono::seconds(30), "victim");
        return 0;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    const int before = std::stoi(Single("select count(*) from History"));
    kill(child, SIGKILL);
    ResultOf(child);
    EXPECT_GE(std::stoi(Single("select count(*) from History")), before);
    EXPECT_EQ(Single("pragma integrity_check"), "ok");
    Execute("insert into History(ReportID) values(1)");
}

}  // namespace
