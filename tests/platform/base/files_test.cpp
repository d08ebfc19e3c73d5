// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <iterator>
#include <string>

#include "platform/base/paths.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/program.h"
#include "support/raises.h"
#include "support/sanitizer.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

class Files : public testing::Test {
 protected:
    std::string Name(const std::string& name) const { return paths::FromMachine(m_folder / name); }
    void Copy(const std::string& from, const std::string& to) const {
        Scripting::FileSystemObject().GetFile(Name(from)).Copy(Name(to));
    }
    unsigned Mode(const std::string& name) const {
        struct stat status {};
        EXPECT_EQ(stat((m_folder / name).c_str(), &status), 0);
        return status.st_mode & 0777;
    }
    std::size_t Entries() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(m_folder.Path()), {}));
    }

    TemporaryFolder m_folder;
    Scripting::FileSystemObject m_files;
};

TEST_F(Files, FolderIsNoFile) {
    WriteBytes(m_folder / "a.rpt", "x");
    EXPECT_TRUE(m_files.FileExists(Name("a.rpt")));
    EXPECT_TRUE(m_files.FileExists(Name("A.RPT")));
    EXPECT_FALSE(m_files.FileExists(Name("b.rpt")));
    EXPECT_FALSE(m_files.FileExists(paths::FromMachine(m_folder.Path())));
    EXPECT_FALSE(m_files.FileExists("C:\\a.rpt"));
    EXPECT_FALSE(m_files.FileExists(""));
}

TEST_F(Files, MissingFileIsNotFoundAndNamed) {
    EXPECT_EQ(NumberRaisedBy([this] { m_files.GetFile(Name("o'neill.rpt")); }), 53);
    EXPECT_NE(DescriptionRaisedBy([this] { m_files.GetFile(Name("gone.rpt")); }).find("gone.rpt"),
              std::string::npos);
}

TEST_F(Files, CopyReplacesAndIsForItsOwnerOnly) {
    std::string bytes(300'000, 'x');
    bytes += '\0';
    WriteBytes(m_folder / "a", bytes);
    WriteBytes(m_folder / "b", "old");
    Copy("a", "b");
    EXPECT_EQ(ReadBytes(m_folder / "b"), bytes);
    EXPECT_EQ(Mode("b"), 0600U);
    EXPECT_EQ(Entries(), 2U);
}

TEST_F(Files, CopyKeepsWhatTheFormerFileGaveItsGroup) {
    WriteBytes(m_folder / "a", "new");
    WriteBytes(m_folder / "b", "old");
    ASSERT_EQ(chmod((m_folder / "b").c_str(), 0640), 0);
    Copy("a", "b");
    EXPECT_EQ(ReadBytes(m_folder / "b"), "new");
    EXPECT_EQ(Mode("b"), 0640U);
}

TEST_F(Files, CopyIntoAMissingFolderIsPathNotFound) {
    WriteBytes(m_folder / "a", "x");
    EXPECT_EQ(NumberRaisedBy([this] { Copy("a", "none\\b"); }), 76);
    EXPECT_EQ(NumberRaisedBy([this] { Scripting::File(Name("a")).Copy("C:\\b"); }), 76);
}

TEST_F(Files, CopyThatFailsLeavesNothing) {
    WriteBytes(m_folder / "a", "x");
    fs::create_directory(m_folder / "folder");
    EXPECT_EQ(NumberRaisedBy([this] { Copy("a", "folder"); }), 75);
    EXPECT_EQ(Entries(), 2U);
}

TEST_F(Files, TooManyOpenFilesAreNotAMissingFile) {
    if (ChecksNeedDescriptors) {
        GTEST_SKIP() << "the sanitizers need file descriptors of their own";
    }
    WriteBytes(m_folder / "a", "x");
    const auto copyWithoutFreeHandles = [this] {
        const rlimit few{3, 3};
        setrlimit(RLIMIT_NOFILE, &few);
        const std::string said = DescriptionRaisedBy([this] { Copy("a", "b"); });
        const std::string start = "Too many files: \"" + (m_folder / "a").string() + "\"";
        std::_Exit(said.rfind(start, 0) == 0 ? NumberRaisedBy([this] { Copy("a", "b"); }) : 1);
    };
    EXPECT_EXIT(copyWithoutFreeHandles(), testing::ExitedWithCode(67), "");
}

TEST_F(Files, CopyThatFillsTheDiskKeepsTheFormerFile) {
    WriteBytes(m_folder / "a", std::string(200'000, 'x'));
    WriteBytes(m_folder / "b", "former");
    const auto copyWithLittleRoom = [this] {
        PrepareProgram();
        const rlimit room{100'000, 100'000};
        setrlimit(RLIMIT_FSIZE, &room);
        std::_Exit(NumberRaisedBy([this] { Copy("a", "b"); }));
    };
    EXPECT_EXIT(copyWithLittleRoom(), testing::ExitedWithCode(61), "");
    EXPECT_EQ(ReadBytes(m_folder / "b"), "former");
    EXPECT_EQ(Entries(), 2U);
}

TEST_F(Files, CopyOntoItselfLosesNothing) {
    WriteBytes(m_folder / "a", "kept");
    EXPECT_EQ(NumberRaisedBy([this] { Copy("a", "a"); }), 75);
    EXPECT_EQ(ReadBytes(m_folder / "a"), "kept");
}

TEST_F(Files, CopyOfADatabaseDoesNotMeetTheLogOfTheOneBefore) {
    WriteBytes(m_folder / "blank", std::string("SQLite format 3\0", 16) + "rows");
    WriteBytes(m_folder / "live-wal", "old rows");
    WriteBytes(m_folder / "live-shm", "old index");
    Copy("blank", "live");
    EXPECT_FALSE(fs::exists(m_folder / "live-wal"));
    EXPECT_FALSE(fs::exists(m_folder / "live-shm"));
}

TEST_F(Files, CopyThatMustNotOverwriteLeavesWhatIsThere) {
    WriteBytes(m_folder / "a", "blank");
    WriteBytes(m_folder / "b", "rows");
    const Scripting::FileSystemObject files;
    EXPECT_EQ(NumberRaisedBy([&] {
                  files.GetFile(paths::FromMachine(m_folder / "a"))
                      .Copy(paths::FromMachine(m_folder / "b"), Scripting::File::Existing::Keep);
              }),
              58);
    EXPECT_EQ(ReadBytes(m_folder / "b"), "rows");
    EXPECT_EQ(Entries(), 2U);
}

TEST_F(Files, CopyThatMustNotOverwriteLeavesTheLogOfWhatIsThere) {
    WriteBytes(m_folder / "blank", std::string("SQLite format 3\0", 16) + "blank");
    WriteBytes(m_folder / "live", std::string("SQLite format 3\0", 16) + "rows");
    WriteBytes(m_folder / "live-wal", "more rows");
    WriteBytes(m_folder / "live-shm", "their index");
    EXPECT_EQ(NumberRaisedBy([this] {
                  m_files.GetFile(Name("blank")).Copy(Name("live"), Scripting::File::Existing::Keep);
              }),
              58);
    EXPECT_EQ(ReadBytes(m_folder / "live-wal"), "more rows");
    EXPECT_EQ(ReadBytes(m_folder / "live-shm"), "their index");
    EXPECT_EQ(Entries(), 4U);
}

TEST_F(Files, CopyThatMustNotOverwriteWaitsForNoReaderOfAPipe) {
    WriteBytes(m_folder / "a", "x");
    ASSERT_EQ(mkfifo((m_folder / "pipe").c_str(), 0600), 0);
    alarm(10);
    EXPECT_EQ(NumberRaisedBy(
                  [this] { m_files.GetFile(Name("a")).Copy(Name("pipe"), Scripting::File::Existing::Keep); }),
              58);
    alarm(0);
}

TEST_F(Files, LinkIsFollowedAndStays) {
    WriteBytes(m_folder / "a", "new");
    WriteBytes(m_folder / "real", "old");
    fs::create_symlink(m_folder / "real", m_folder / "link");
    Copy("a", "link");
    EXPECT_TRUE(fs::is_symlink(m_folder / "link"));
    EXPECT_EQ(ReadBytes(m_folder / "real"), "new");
}

TEST_F(Files, PipeIsWrittenAndStays) {
    WriteBytes(m_folder / "a", "through");
    const std::string pipe = (m_folder / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    Copy("a", "pipe");
    char bytes[16] = {};
    EXPECT_EQ(read(reader, bytes, sizeof bytes), 7);
    EXPECT_STREQ(bytes, "through");
    close(reader);
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(Files, LongestNameThatTheFileSystemTakesCanBeMade) {
    WriteBytes(m_folder / "a", "x");
    const std::string name(255, 'n');
    Copy("a", name.c_str());
    EXPECT_TRUE(fs::exists(m_folder / name));
}

TEST_F(Files, PartThatNobodyWritesGoesWithTheNextFile) {
    WriteBytes(m_folder / "a", "x");
    // For this machine the process of the first file is alive.
    const std::string ofALiveNumber = ".oxc-part-" + std::to_string(getpid()) + "-abcdef";
    WriteBytes(m_folder / ofALiveNumber, "half");
    WriteBytes(m_folder / ".oxc-part-0123456789abcdef", "half");
    Copy("a", "b");
    EXPECT_FALSE(fs::exists(m_folder / ofALiveNumber));
    EXPECT_FALSE(fs::exists(m_folder / ".oxc-part-0123456789abcdef"));
}

TEST_F(Files, PartThatAnotherMachinesProcessWritesStays) {
    WriteBytes(m_folder / "a", "x");
    // No process of this machine has this number.
    const fs::path part = m_folder / ".oxc-part-999999999-abcdef";
    WriteBytes(part, "under way");
    const int writer = open(part.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(writer, LOCK_EX), 0);
    Copy("a", "b");
    EXPECT_EQ(ReadBytes(part), "under way");
    close(writer);
}

TEST_F(Files, PartIsLockedWhileItIsWritten) {
    AtomicFile file(m_folder / "target");
    file.Write("half");
    ASSERT_EQ(Entries(), 1U);
    const fs::path part = fs::directory_iterator(m_folder.Path())->path();
    EXPECT_EQ(part.filename().string().rfind(".oxc-part-", 0), 0U) << part;
    const int other = open(part.c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_NE(flock(other, LOCK_EX | LOCK_NB), 0);
    file.Commit();
    EXPECT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
    close(other);
    EXPECT_EQ(ReadBytes(m_folder / "target"), "half");
}

TEST_F(Files, LinkAndPipeWithAPartsNameStay) {
    WriteBytes(m_folder / "a", "x");
    WriteBytes(m_folder / "mine", "kept");
    fs::create_symlink(m_folder / "mine", m_folder / ".oxc-part-link");
    ASSERT_EQ(mkfifo((m_folder / ".oxc-part-pipe").c_str(), 0600), 0);
    Copy("a", "b");
    EXPECT_EQ(ReadBytes(m_folder / "mine"), "kept");
    EXPECT_TRUE(fs::is_symlink(m_folder / ".oxc-part-link"));
    EXPECT_TRUE(fs::is_fifo(m_folder / ".oxc-part-pipe"));
}

TEST_F(Files, CopyOfAnotherFileTouchesNoNeighbour) {
    WriteBytes(m_folder / "a", "report");
    WriteBytes(m_folder / "b-wal", "mine");
    Copy("a", "b");
    EXPECT_EQ(ReadBytes(m_folder / "b-wal"), "mine");
}

}  // namespace
