// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that read, run by a user who may read the application folder and may not write there.
#include <sys/stat.h>
#include <unistd.h>

#include <map>
#include <memory>

#include "schedule_program.h"

namespace {

namespace fs = std::filesystem;

using Handle = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

class Readers : public ScheduleProgram {
 protected:
    void SetUp() override {
        ScheduleProgram::SetUp();
        Output("folder add Finance");
        Output(AddPlain);
        Output(std::string(AddSales) + " --folder Finance");
        Output("package add Monday --report plain.rpt --no-mail --at 08:00 --start 2990-01-01");
        Sql("insert into ReportHistory(ReportID, LastRun, Status) values(1, '2025-06-15 07:30:00', "
            "'Success')");
        fs::create_directory(m_folder / "reader");
        ShutTheFolder();
    }
    void TearDown() override {
        Allow(m_folder / "app", 0755);
        ScheduleProgram::TearDown();
    }

    static void Allow(const fs::path& path, mode_t mode) { ASSERT_EQ(chmod(path.c_str(), mode), 0); }
    void ShutTheFolder() const {
        Allow(m_folder.Path(), 0755);
        for (const auto& entry : fs::recursive_directory_iterator(m_folder / "app")) {
            Allow(entry.path(), entry.is_directory() ? 0555 : 0444);
        }
        Allow(m_folder / "app", 0555);
    }
    fs::path Live(const std::string& ending = "") const {
        return m_folder / ("app/PressroomLive.dat" + ending);
    }
    // The program as the reading user. Root may write everywhere, so it becomes nobody.
    ScheduleOutcome RunAsReader(const std::string& arguments) const {
        const std::string home = (m_folder / "reader").string();
        return Run(arguments, {},
                   "env XDG_CONFIG_HOME='" + home + "' XDG_DATA_HOME='" + home + "' HOME='" + home + "' " +
                       (geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups " : ""));
    }
    void ExpectTheSame(const std::string& arguments) const {
        const ScheduleOutcome owner = Run(arguments);
        const std::map<std::string, std::string> before = FolderNow();
        const ScheduleOutcome reader = RunAsReader(arguments);
        EXPECT_EQ(reader.complaint, "") << arguments;
        EXPECT_EQ(reader.code, owner.code) << arguments;
        EXPECT_EQ(reader.output, owner.output) << arguments;
        EXPECT_EQ(FolderNow(), before) << arguments;
    }
    // Every file of the application folder, with its bytes and the time of its last change.
    std::map<std::string, std::string> FolderNow() const {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(m_folder / "app")) {
            struct stat status {};
            stat(entry.path().c_str(), &status);
            // The locks of a database that is read with others are in its -shm.
            const bool isIndex = entry.path().extension() == ".dat-shm";
            files[entry.path().string()] = std::to_string(status.st_mtim.tv_sec) + "." +
                                           std::to_string(status.st_mtim.tv_nsec) +
                                           (entry.is_regular_file() && !isIndex ? ReadBytes(entry) : "");
        }
        return files;
    }
    std::string ReadersRefusal(const std::string& arguments) const {
        const ScheduleOutcome outcome = RunAsReader(arguments);
        EXPECT_EQ(outcome.code, 1) << outcome.output;
        EXPECT_EQ(outcome.output, "");
        return outcome.complaint;
    }
    Handle Open() const {
        sqlite3* handle = nullptr;
        EXPECT_EQ(sqlite3_open(Live().c_str(), &handle), SQLITE_OK);
        return {handle, &sqlite3_close};
    }
    static void Execute(const Handle& handle, const std::string& statements) {
        EXPECT_EQ(sqlite3_exec(handle.get(), statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle.get());
    }
    // Leaves the files of these endings as they are after `statements`, as if the program had been killed
    // then.
    void LeaveAfter(const std::string& statements, const Texts& endings) const {
        Allow(m_folder / "app", 0755);
        Allow(Live(), 0644);
        {
            const Handle writing = Open();
            Execute(writing, statements);
            for (const std::string& ending : endings) {
                fs::copy_file(Live(ending), m_folder / ("kept" + ending));
            }
        }
        for (const std::string& ending : endings) {
            fs::copy_file(m_folder / ("kept" + ending), Live(ending), fs::copy_options::overwrite_existing);
        }
        ShutTheFolder();
    }
    static constexpr const char* Rename =
        "update ReportScheduler set ReportTitle = 'Renamed' where ReportTitle = 'Plain';";
};

TEST_F(Readers, SeeWhatTheOwnerSees) {
    for (const char* command :
         {"list", "list --json", "list --folder Finance", "show Plain", "show --id 2 --json", "history",
          "history Plain", "next --days 3", "package list", "package show Monday", "package history",
          "folder list", "export", "status", "status --json --since 48"}) {
        ExpectTheSame(command);
    }
    EXPECT_THAT(RunAsReader("list").output, testing::HasSubstr("Sales"));
    EXPECT_EQ(RunAsReader("options show").output,
              "Polling interval:  15 seconds\nOn error alert:    nobody\n");
    EXPECT_TRUE(fs::is_empty(m_folder / "reader"));
}

TEST_F(Readers, SeeTheRowsOfAProgramThatWrites) {
    Allow(m_folder / "app", 0755);
    Allow(Live(), 0644);
    const Handle writing = Open();
    Execute(writing, Rename);
    ShutTheFolder();
    ASSERT_GT(fs::file_size(Live("-wal")), 0U);
    ExpectTheSame("list");
    EXPECT_THAT(RunAsReader("list").output, testing::HasSubstr("Renamed"));
}

TEST_F(Readers, SeeTheRowsThatAKilledProgramHasLeftInItsLog) {
    LeaveAfter(Rename, {"", "-wal", "-shm"});
    const std::map<std::string, std::string> before = FolderNow();
    EXPECT_THAT(RunAsReader("list").output, testing::HasSubstr("Renamed"));
    EXPECT_EQ(FolderNow(), before);
}

TEST_F(Readers, AreToldOfALogThatOnlyAWriterCanUse) {
    LeaveAfter(Rename, {"", "-wal"});
    const std::string file = Live().string();
    EXPECT_EQ(
        ReadersRefusal("list"),
        "oxc-schedule: The data file \"" + file +
            "\" is write-protected and cannot be read now; a program ended before it had written all of \"" +
            file + "-wal\" to it: a user who may write there must open it first\n");
}

TEST_F(Readers, AreToldOfAnInterruptedTransaction) {
    const std::string file = Live().string();
    LeaveAfter(
        "pragma journal_mode=delete; pragma cache_size=2; begin immediate; create table T(B);"
        "insert into T values(zeroblob(262144));",
        {"", "-journal"});
    EXPECT_EQ(
        ReadersRefusal("list"),
        "oxc-schedule: The data file \"" + file +
            "\" is write-protected and cannot be read now; a program ended before it had written all of \"" +
            file + "-journal\" to it: a user who may write there must open it first\n");
}

TEST_F(Readers, AreToldOfALogThatIsNotForThem) {
    LeaveAfter(Rename, {"", "-wal", "-shm"});
    Allow(Live("-wal"), 0600);
    const std::string file = Live().string();
    EXPECT_EQ(ReadersRefusal("list"), "oxc-schedule: The data file \"" + file +
                                          "\" is write-protected and cannot be read now; its log \"" + file +
                                          "-wal\" cannot be read by this user\n");
}

TEST_F(Readers, AreToldOfAFolderThatIsNotForThem) {
    const std::string folder = (m_folder / "app").string();
    Allow(folder, 0700);
    EXPECT_EQ(ReadersRefusal("list"), "oxc-schedule: The database in \"" + folder +
                                          "\" cannot be read: " + TextOfTheMachine(EACCES) + "\n");
    Allow(folder, 0555);
    Allow(Live(), 0600);
    EXPECT_EQ(ReadersRefusal("list"), "oxc-schedule: The data file \"" + Live().string() +
                                          "\" cannot be opened; unable to open database file\n");
}

TEST_F(Readers, CannotChangeAnything) {
    const std::map<std::string, std::string> before = FolderNow();
    EXPECT_THAT(RunAsReader("remove Plain").complaint, testing::HasSubstr("write-protected"));
    EXPECT_THAT(RunAsReader("folder add More").complaint, testing::HasSubstr("write-protected"));
    EXPECT_EQ(FolderNow(), before);
}

TEST_F(Readers, ReadAFolderOnAReadOnlyFileSystem) {
    const std::string folder = (m_folder / "app").string();
    const std::string mounted =
        "unshare -m sh -c 'mount --bind \"$0\" \"$0\" && mount -o remount,bind,ro \"$0\" && "
        "exec \"$@\"' '" +
        folder + "' ";
    if (Run("--version", {}, mounted).code != 0) {
        GTEST_SKIP() << "this user may not mount";
    }
    const ScheduleOutcome owner = Run("list");
    const std::map<std::string, std::string> before = FolderNow();
    const ScheduleOutcome reader = Run("list", {}, mounted);
    EXPECT_EQ(reader.complaint, "");
    EXPECT_EQ(reader.output, owner.output);
    EXPECT_EQ(FolderNow(), before);
}

}  // namespace
