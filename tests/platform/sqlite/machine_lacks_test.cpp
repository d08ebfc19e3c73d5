// SPDX-License-Identifier: GPL-3.0-or-later
// A lack of the machine is reported as such, and not as a fault of the data file.
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "data_fixture.h"
#include "support/sanitizer.h"

namespace {

constexpr const char* NoMount = "0 no mount";

class MachineLacks : public DataFixture {
 protected:
    // Runs `body` in a process of its own. Returns "<number> <description>" of its error.
    template <typename Body>
    std::string RaisedInOtherProcess(Body body) const {
        const std::filesystem::path told = m_folder / "told";
        const int file = open(told.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0600);
        const pid_t child = fork();
        if (child == 0) {
            std::string text = "nothing";
            try {
                body();
            } catch (const RuntimeError& error) {
                text = std::to_string(error.Number()) + " " + error.Description();
            }
            _exit(write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()) ? 0 : 1);
        }
        close(file);
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        return ReadBytes(told);
    }
    // Only for this process.
    void MountReadOnly() const {
        const char* folder = m_folder.Path().c_str();
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0 ||
            mount(folder, folder, nullptr, MS_BIND, nullptr) != 0 ||
            mount(nullptr, folder, nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr) != 0) {
            throw RuntimeError(0, "no mount");
        }
    }
    std::string Quoted() const { return "\"" + (m_folder / "live.dat").string() + "\""; }
};

TEST_F(MachineLacks, DescriptorsAreToldAsTooManyOpenFiles) {
    if (ChecksNeedDescriptors) {
        GTEST_SKIP() << "the sanitizers need file descriptors of their own";
    }
    for (int left = 0; left < 3; ++left) {
        EXPECT_EQ(RaisedInOtherProcess([&] {
                      const int lowest = dup(0);
                      close(lowest);
                      const rlimit limit{static_cast<rlim_t>(lowest + left), 4096};
                      setrlimit(RLIMIT_NOFILE, &limit);
                      Execute("insert into History(ReportID) values(1)");
                  }),
                  "67 Too many open files: the data file " + Quoted() + " cannot be opened")
            << left;
    }
    EXPECT_EQ(Single("select count(*) from History"), "0");
}

TEST_F(MachineLacks, MemoryIsToldAsOutOfMemory) {
    for (const int kilobytes : {40, 100, 300}) {
        EXPECT_EQ(RaisedInOtherProcess([&] {
                      ADODB::Connection connection;
                      if (kilobytes > 40) {
                          connection.Open(m_data);
                      }
                      sqlite3_hard_heap_limit64(kilobytes * 1024);
                      if (kilobytes == 40) {
                          connection.Open(m_data);
                      }
                      connection.Execute("insert into History(Status) values(hex(zeroblob(9000000)))");
                  }),
                  "7 Out of memory")
            << kilobytes;
    }
}

TEST_F(MachineLacks, ReadOnlyFileSystemIsToldAsWriteProtection) {
    for (const bool writes : {true, false}) {
        const std::string raised = RaisedInOtherProcess([&] {
            MountReadOnly();
            writes ? Execute("insert into History(ReportID) values(1)")
                   : (void)Column("select * from History");
        });
        if (raised == NoMount) {
            GTEST_SKIP() << "needs a mount of its own, which is not allowed here";
        }
        const std::string start = "-2147217911 The data file " + Quoted() + " is write-protected; ";
        EXPECT_EQ(raised.substr(0, start.size()), start);
        Execute("pragma journal_mode=wal");  // a file that needs a log beside it cannot even be read there
    }
}

}  // namespace
