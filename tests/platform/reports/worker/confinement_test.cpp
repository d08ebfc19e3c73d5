// SPDX-License-Identifier: GPL-3.0-or-later
// What a report process cannot do. Each test asks in a child of its own.
#include "platform/reports/worker/confinement.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <linux/landlock.h>
#include <sqlite3.h>
#include <sys/ioctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>

#include <csignal>
#include <fstream>
#include <functional>
#include <thread>

#include "platform/contracts/export_formats.h"
#include "platform/posix/atomic_file.h"
#include "platform/reports/worker/worker_fixture.h"

namespace reports::worker::test {
namespace {

using testing::HasSubstr;

bool HasLandlock() {
    return syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) >= 1;
}

// Returns whether the work is true in a confined process.
bool IsTrueInside(const std::function<bool()>& work, const Confinement& confinement = {6144, {}}) {
    const pid_t child = fork();
    if (child == 0) {
        const std::string lacking = Confine(confinement);
        if (lacking.find("seccomp") != std::string::npos) {
            _exit(2);
        }
        _exit(work() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status)) << status;
    EXPECT_NE(WEXITSTATUS(status), 2) << "the kernel has no seccomp filters";
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

class ReportConfinement : public WorkerTest {
 protected:
    static bool Fails(long result, int code) { return result < 0 && errno == code; }
};

TEST_F(ReportConfinement, LimitsCannotBeRaised) {
    EXPECT_TRUE(IsTrueInside([] {
        rlimit limit{};
        for (const auto& [resource, most] : {std::pair{RLIMIT_CORE, rlim_t{0}},
                                             {RLIMIT_NOFILE, rlim_t{1024}},
                                             {RLIMIT_FSIZE, rlim_t{8} << 30}}) {
            if (getrlimit(resource, &limit) != 0 || limit.rlim_cur > most || limit.rlim_max > most) {
                return false;
            }
        }
        return true;
    }));
}

TEST_F(ReportConfinement, MemoryEndsAtTheLimit) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the address sanitizer needs more address space than any limit";
#endif
    EXPECT_TRUE(IsTrueInside(
        [] {
            try {
                std::string(std::size_t{900} << 20, 'x');
            } catch (const std::bad_alloc&) {
                return true;
            }
            return false;
        },
        {768, {}}));
}

TEST_F(ReportConfinement, StartsNoProgramAndNoProcess) {
    EXPECT_TRUE(IsTrueInside([] { return Fails(execl("/bin/true", "true", nullptr), EPERM); }));
    EXPECT_TRUE(IsTrueInside([] {
        const pid_t child = fork();
        if (child == 0) {
            _exit(0);
        }
        return Fails(child, EPERM);
    }));
    EXPECT_TRUE(IsTrueInside([] { return std::system("true") != 0; }));
}

TEST_F(ReportConfinement, StartsThreads) {
    EXPECT_TRUE(IsTrueInside([] {
        bool ran = false;
        std::thread([&ran] { ran = true; }).join();
        return ran;
    }));
}

TEST_F(ReportConfinement, AThreadIsConfinedToo) {
    EXPECT_TRUE(IsTrueInside([] {
        bool refused = false;
        std::thread([&refused] { refused = Fails(execl("/bin/true", "true", nullptr), EPERM); }).join();
        return refused;
    }));
}

TEST_F(ReportConfinement, LeavesOtherProcessesAlone) {
    EXPECT_TRUE(IsTrueInside([] { return Fails(ptrace(PTRACE_ATTACH, getppid(), 0, 0), EPERM); }));
    EXPECT_TRUE(IsTrueInside([] { return Fails(kill(getppid(), 0), EPERM); }));
    EXPECT_TRUE(IsTrueInside([] { return Fails(syscall(SYS_tgkill, getppid(), getppid(), 0), EPERM); }));
    EXPECT_TRUE(IsTrueInside([] {
        rlimit limit{};
        return Fails(prlimit(getppid(), RLIMIT_NOFILE, nullptr, &limit), EPERM);
    }));
}

// The kernel's Landlock does not hold these, or did not at first.
TEST_F(ReportConfinement, LeavesFilesThatItMayReadAsTheyAre) {
    const std::string file = (m_folder / "mail.ini").string();
    std::ofstream(file) << "Password=x";
    ASSERT_EQ(chmod(file.c_str(), 0600), 0);
    const std::function<bool()> attempts[] = {
        [&] { return Fails(chmod(file.c_str(), 0644), EPERM); },
        [&] { return Fails(fchmod(open(file.c_str(), O_RDONLY), 0644), EPERM); },
        [&] { return Fails(fchmodat(AT_FDCWD, file.c_str(), 0644, 0), EPERM); },
        [&] { return Fails(chown(file.c_str(), getuid(), getgid()), EPERM); },
        [&] { return Fails(lchown(file.c_str(), getuid(), getgid()), EPERM); },
        [&] { return Fails(fchownat(AT_FDCWD, file.c_str(), getuid(), getgid(), 0), EPERM); },
        [&] { return Fails(setxattr(file.c_str(), "user.a", "b", 1, 0), EPERM); },
        [&] { return Fails(utimensat(AT_FDCWD, file.c_str(), nullptr, 0), EPERM); },
        [&] { return Fails(truncate(file.c_str(), 0), EPERM); },
        [&] { return Fails(open(file.c_str(), O_RDONLY | O_TRUNC), EPERM); },
        [&] { return Fails(syscall(SYS_openat2, AT_FDCWD, file.c_str(), nullptr, 0), ENOSYS); },
    };
    for (const auto& attempt : attempts) {
        EXPECT_TRUE(IsTrueInside(attempt)) << &attempt - attempts;
    }
    struct stat status {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    EXPECT_EQ(status.st_size, 10);
    EXPECT_TRUE(IsTrueInside([] { return Fails(setpriority(PRIO_PROCESS, 0, 19), EPERM); }));
}

TEST_F(ReportConfinement, TypesNothingIntoATerminal) {
    EXPECT_TRUE(IsTrueInside([] { return Fails(ioctl(STDERR_FILENO, TIOCSTI, "x"), EPERM); }));
    EXPECT_TRUE(IsTrueInside([] { return Fails(syscall(SYS_ioctl, 2, 0x100000000 + TIOCSTI, "x"), EPERM); }));
}

TEST_F(ReportConfinement, LeavesTheKernelAlone) {
    for (const long call :
         {SYS_mount, SYS_bpf, SYS_keyctl, SYS_init_module, SYS_perf_event_open, SYS_userfaultfd, SYS_unshare,
          SYS_setns, SYS_io_uring_setup, SYS_reboot, SYS_chroot}) {
        EXPECT_TRUE(IsTrueInside([call] { return Fails(syscall(call, 0, 0, 0, 0, 0, 0), EPERM); })) << call;
    }
    EXPECT_TRUE(IsTrueInside([] { return Fails(socket(AF_PACKET, SOCK_RAW, 0), EPERM); }));
    EXPECT_TRUE(IsTrueInside([] { return Fails(socket(AF_ALG, SOCK_SEQPACKET, 0), EPERM); }));
}

TEST_F(ReportConfinement, ReachesDatabases) {
    for (const int family : {AF_INET, AF_INET6, AF_UNIX}) {
        EXPECT_TRUE(IsTrueInside([family] {
            const int end = socket(family, SOCK_STREAM, 0);
            return end >= 0 || errno == EAFNOSUPPORT;
        })) << family;
    }
}

TEST_F(ReportConfinement, CrashIsStillACrash) {
    const pid_t child = fork();
    if (child == 0) {
        Confine({6144, {}});
        std::abort();
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT && !WCOREDUMP(status)) << status;
}

TEST_F(ReportConfinement, WritesTemporaryFilesOnly) {
    if (!HasLandlock()) {
        GTEST_SKIP() << "the kernel has no Landlock";
    }
    Write("mine", "text");
    std::filesystem::create_directory(m_folder / "tmp");
    setenv("TMPDIR", Path("tmp").c_str(), 1);
    const auto opens = [this](const char* name, int flags) {
        return open(Path(name).c_str(), flags | O_CLOEXEC, 0600) >= 0;
    };
    EXPECT_TRUE(IsTrueInside([&] { return opens("mine", O_RDONLY); }));
    EXPECT_FALSE(IsTrueInside([&] { return opens("mine", O_WRONLY); }));
    EXPECT_FALSE(IsTrueInside([&] { return opens("new", O_WRONLY | O_CREAT); }));
    EXPECT_FALSE(IsTrueInside([&] { return unlink(Path("mine").c_str()) == 0; }));
    EXPECT_FALSE(IsTrueInside([&] { return mkdir(Path("folder").c_str(), 0700) == 0; }));
    EXPECT_FALSE(IsTrueInside([&] { return symlink("/etc", Path("link").c_str()) == 0; }));
    EXPECT_FALSE(IsTrueInside([&] { return truncate(Path("mine").c_str(), 0) == 0; }));
    EXPECT_TRUE(IsTrueInside([&] { return OpenTemporaryFile() >= 0; }));
    EXPECT_TRUE(IsTrueInside([&] { return opens("tmp/new", O_WRONLY | O_CREAT); }));
    EXPECT_TRUE(IsTrueInside([&] { return open("/dev/null", O_WRONLY) >= 0; }));
    unsetenv("TMPDIR");
    EXPECT_EQ(Read("mine"), "text");
}

TEST_F(ReportConfinement, FileThatIsOpenCanBeWritten) {
    const int file = open(Path("out").c_str(), O_WRONLY | O_CREAT, 0600);
    EXPECT_TRUE(IsTrueInside([file] { return write(file, "text", 4) == 4; }));
    close(file);
    EXPECT_EQ(Read("out"), "text");
}

TEST_F(ReportConfinement, ReadsOnlyTheFoldersThatAreGiven) {
    if (!HasLandlock()) {
        GTEST_SKIP() << "the kernel has no Landlock";
    }
    std::filesystem::create_directory(m_folder / "data");
    std::filesystem::create_directory(m_folder / "app");
    std::filesystem::create_directory(m_folder / "tmp");
    setenv("TMPDIR", Path("tmp").c_str(), 1);
    Write("data/sales.csv", "a");
    Write("app/sample.csv", "a");
    Write("private.csv", "a");
    const auto reads = [this](const std::string& name) {
        return IsTrueInside([&] { return open(Path(name).c_str(), O_RDONLY) >= 0; },
                            {6144, {m_folder / "data"}});
    };
    EXPECT_TRUE(reads("data/sales.csv"));
    EXPECT_TRUE(reads("app/sample.csv"));
    EXPECT_FALSE(reads("private.csv"));
    EXPECT_TRUE(IsTrueInside([&] { return open(Path("private.csv").c_str(), O_RDONLY) >= 0; }));
    // Of the machine only what names, zones, fonts and drivers need.
    const auto readsOfMachine = [this](const char* path) {
        return IsTrueInside([path] { return open(path, O_RDONLY) >= 0; }, {6144, {m_folder / "data"}});
    };
    for (const char* needed :
         {"/etc/passwd", "/etc/fonts/fonts.conf", "/etc/localtime", "/etc/nsswitch.conf"}) {
        EXPECT_TRUE(readsOfMachine(needed)) << needed;
    }
    for (const char* kept : {"/etc/shadow", "/etc/fstab", "/etc/sysctl.conf", "/proc/1/environ"}) {
        EXPECT_FALSE(readsOfMachine(kept)) << kept;
    }
    unsetenv("TMPDIR");
}

TEST_F(ReportConfinement, ReadsNothingThatOpensTheStore) {
    if (!HasLandlock()) {
        GTEST_SKIP() << "the kernel has no Landlock";
    }
    for (const char* folder : {"data", "app", "app/Cache", "tmp", "home", "home/.postgresql"}) {
        std::filesystem::create_directory(m_folder / folder);
    }
    const std::string home = std::getenv("HOME");
    setenv("TMPDIR", Path("tmp").c_str(), 1);
    setenv("HOME", Path("home").c_str(), 1);
    const std::vector<std::string> secret{"app/PressroomLive.dat", "app/PressroomLive.dat.embedded",
                                          "app/Pressroom.dat", "home/.pgpass",
                                          "home/.postgresql/postgresql.key"},
        open{"app/sample.csv", "app/Cache/a.rpt", "home/.postgresql/root.crt"};
    const auto reads = [this](const std::string& name) {
        return IsTrueInside([&] { return ::open(Path(name).c_str(), O_RDONLY) >= 0; },
                            {6144, {m_folder / "data"}});
    };
    for (const std::string& name : secret) {
        Write(name, "a");
        EXPECT_FALSE(reads(name)) << name;
    }
    for (const std::string& name : open) {
        Write(name, "a");
        EXPECT_TRUE(reads(name)) << name;
    }
    EXPECT_TRUE(IsTrueInside([&] { return ::open(Path("app").c_str(), O_RDONLY | O_DIRECTORY) >= 0; },
                             {6144, {m_folder / "data"}}));
    setenv("HOME", home.c_str(), 1);
    unsetenv("TMPDIR");
}

TEST_F(ReportConfinement, UsesNoPasswordOfItsUser) {
    const std::vector<const char*> secrets{"PGPASSWORD",    "PGSERVICE", "PGPASSFILE",
                                           "PGSERVICEFILE", "PGSSLCERT", "PGSSLKEY"};
    for (const char* name : secrets) {
        setenv(name, Path("mine").c_str(), 1);
    }
    Write("mine", "*:*:*:*:secret");
    for (const char* name : secrets) {
        EXPECT_TRUE(IsTrueInside([name] {
            const char* const value = std::getenv(name);
            struct stat status {};
            return value == nullptr || Fails(stat(value, &status), ENOTDIR);
        })) << name;
        unsetenv(name);
    }
}

// A database whose log this process cannot make.
class ReportOverDatabase : public ReportConfinement {
 protected:
    void SetUp() override {
        ReportConfinement::SetUp();
        std::filesystem::create_directory(m_folder / "tmp");
        setenv("TMPDIR", Path("tmp").c_str(), 1);
        Write("db.rpt", DatabaseReport("a%b#c?.db", "select name as Name, 1 as Number from people"));
        ASSERT_EQ(sqlite3_open(Path("a%b#c?.db").c_str(), &m_database), SQLITE_OK);
        Execute("pragma journal_mode = wal");
        Execute("create table people(name)");
        Execute("insert into people values('Ann')");
    }
    void TearDown() override {
        sqlite3_close(m_database);
        unsetenv("TMPDIR");
        ReportConfinement::TearDown();
    }
    void Execute(const char* statement) {
        EXPECT_EQ(sqlite3_exec(m_database, statement, nullptr, nullptr, nullptr), SQLITE_OK) << statement;
    }
    std::string Rows() const {
        const auto report = CreateWorkerEngine(Usual())->OpenReport(Path("db.rpt"));
        report->SetExportFormat(report::CodeOf(report::DocumentFormat::Csv));
        report->SetDiskFileName(Path("out.csv"));
        report->Export(false);
        return Read("out.csv");
    }
    sqlite3* m_database = nullptr;
};

TEST_F(ReportOverDatabase, ReadsWhatItsWriterHasInTheLog) {
    EXPECT_THAT(Rows(), HasSubstr("Ann"));
    Execute("insert into people values('Bob')");
    EXPECT_THAT(Rows(), HasSubstr("Bob"));
}

TEST_F(ReportOverDatabase, ReadsItWithoutAWriterAndALog) {
    sqlite3_close(m_database);
    m_database = nullptr;
    ASSERT_FALSE(std::filesystem::exists(Path("a%b#c?.db-wal")));
    EXPECT_THAT(Rows(), HasSubstr("Ann"));
}

TEST_F(ReportOverDatabase, SortsMoreThanSqliteKeepsInMemory) {
    Execute(
        "with recursive n(i) as (select 1 union all select i + 1 from n where i < 3000) "
        "insert into people select hex(randomblob(2000)) || i from n");
    Write("db.rpt", DatabaseReport("a%b#c?.db",
                                   "select substr(name, 1, 3) as Name, 1 as Number from people "
                                   "order by people.name"));
    EXPECT_THAT(Rows(), HasSubstr("Ann"));
}

TEST_F(ReportOverDatabase, NeverReadsPastALogThatIsThere) {
    if (!HasLandlock()) {
        GTEST_SKIP() << "the kernel has no Landlock";
    }
    for (const char* end : {"", "-wal"}) {  // as a copy of both files has it
        std::filesystem::copy(Path("a%b#c?.db") + end, Path("copy") + end);
    }
    sqlite3_close(m_database);
    m_database = nullptr;
    for (const char* end : {"", "-wal"}) {
        std::filesystem::rename(Path("copy") + end, Path("a%b#c?.db") + end);
    }
    EXPECT_THAT(reports::test::ErrorOf([&] { Rows(); }).Description(),
                HasSubstr("a%b#c?.db\" cannot be opened: "));
}

}  // namespace
}  // namespace reports::worker::test
