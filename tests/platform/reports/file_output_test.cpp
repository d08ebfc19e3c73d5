// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/file_output.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "platform/reports/report_folder.h"

namespace reports {
namespace {

class OutputFile : public test::ReportFolder {
 protected:
    static unsigned ModeOf(const std::string& path) {
        struct stat found {};
        EXPECT_EQ(stat(path.c_str(), &found), 0);
        return found.st_mode & 0777;
    }
};

TEST_F(OutputFile, HasTheModeOfTheUsersMask) {
    const mode_t before = umask(027);
    FileOutput output(Path("out.pdf"));
    output.Write("x");
    output.Commit();
    umask(before);
    EXPECT_EQ(ModeOf(Path("out.pdf")), 0640u);
    EXPECT_EQ(Read("out.pdf"), "x");
}

TEST_F(OutputFile, KeepsTheModeOfTheFileThatItReplaces) {
    for (const mode_t mode : {0600U, 0664U, 0640U}) {
        Write("out.pdf", "former");
        ASSERT_EQ(chmod(Path("out.pdf").c_str(), mode), 0);
        FileOutput output(Path("out.pdf"));
        output.Write("x");
        output.Commit();
        EXPECT_EQ(ModeOf(Path("out.pdf")), mode);
        EXPECT_EQ(Read("out.pdf"), "x");
    }
}

TEST_F(OutputFile, IsNeverReadableByOthersWhereTheFormerFileWasNot) {
    Write("out.pdf", "former");
    ASSERT_EQ(chmod(Path("out.pdf").c_str(), 0600), 0);
    FileOutput output(Path("out.pdf"));
    output.Write("x");
    for (const auto& entry : std::filesystem::directory_iterator(Path(""))) {
        EXPECT_EQ(ModeOf(entry.path().string()), 0600U) << entry.path();
    }
    output.Commit();
}

TEST_F(OutputFile, KeepsOwnerAndGroupOfTheFileThatItReplaces) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give a file to others";
    }
    Write("out.pdf", "former");
    ASSERT_EQ(chown(Path("out.pdf").c_str(), 1234, 2345), 0);
    ASSERT_EQ(chmod(Path("out.pdf").c_str(), 0640), 0);
    FileOutput output(Path("out.pdf"));
    output.Write("x");
    output.Commit();
    struct stat found {};
    ASSERT_EQ(stat(Path("out.pdf").c_str(), &found), 0);
    EXPECT_EQ(found.st_uid, 1234U);
    EXPECT_EQ(found.st_gid, 2345U);
    EXPECT_EQ(found.st_mode & 0777, 0640U);
}

TEST_F(OutputFile, GroupThatCannotBeKeptIsNotReplacedByAnother) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can be somebody else";
    }
    Write("out.pdf", "former");
    ASSERT_EQ(chmod(Path("").c_str(), 0777), 0);
    ASSERT_EQ(chown(Path("out.pdf").c_str(), 1234, 2345), 0);
    ASSERT_EQ(chmod(Path("out.pdf").c_str(), 0664), 0);
    const auto writeAsAnother = [this] {
        if (setgroups(0, nullptr) != 0 || setgid(3456) != 0 || setuid(1235) != 0) {
            std::_Exit(2);
        }
        FileOutput output(Path("out.pdf"));
        output.Write("x");
        output.Commit();
        std::_Exit(0);
    };
    EXPECT_EXIT(writeAsAnother(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(Read("out.pdf"), "x");
    EXPECT_EQ(ModeOf(Path("out.pdf")), 0644U);
}

// An access list in the form of the file system: two users, one of whom may write.
TEST_F(OutputFile, KeepsTheAccessListOfTheFileThatItReplaces) {
    constexpr unsigned char List[] = {
        2,    0, 0, 0,                          // version
        0x01, 0, 6, 0, 0xFF, 0xFF, 0xFF, 0xFF,  // owner rw
        0x02, 0, 6, 0, 0xD2, 0x04, 0x00, 0x00,  // user 1234 rw
        0x04, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF,  // group nothing
        0x10, 0, 6, 0, 0xFF, 0xFF, 0xFF, 0xFF,  // mask rw
        0x20, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF,  // others nothing
    };
    constexpr const char* Attribute = "system.posix_acl_access";
    Write("out.pdf", "former");
    if (setxattr(Path("out.pdf").c_str(), Attribute, List, sizeof List, 0) != 0) {
        GTEST_SKIP() << "the file system has no access lists";
    }
    FileOutput output(Path("out.pdf"));
    output.Write("x");
    output.Commit();
    unsigned char found[sizeof List + 8] = {};
    ASSERT_EQ(getxattr(Path("out.pdf").c_str(), Attribute, found, sizeof found),
              static_cast<ssize_t>(sizeof List));
    EXPECT_EQ(std::memcmp(found, List, sizeof List), 0);
    EXPECT_EQ(Read("out.pdf"), "x");
}

TEST_F(OutputFile, MaskOfTheProcessIsNotTouched) {
    std::atomic<bool> isDone = false;
    std::atomic<bool> wasAnother = false;
    const mode_t before = umask(027);
    std::thread maker([&] {
        for (int n = 0; !isDone; ++n) {
            const int file = open(Path("other").c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            struct stat status {};
            wasAnother = wasAnother || fstat(file, &status) != 0 || (status.st_mode & 0777) != 0640;
            close(file);
            unlink(Path("other").c_str());
        }
    });
    for (int n = 0; n < 60; ++n) {
        FileOutput output(Path("out.pdf"));
        output.Write("x");
        output.Commit();
    }
    isDone = true;
    maker.join();
    umask(before);
    EXPECT_FALSE(wasAnother);
}

TEST_F(OutputFile, PipeThatAnExportGoesToKeepsItsMode) {
    const std::string path = Path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    FileOutput output(path);
    output.Write("x");
    output.Commit();
    close(reader);
    EXPECT_EQ(ModeOf(path), 0600u);
}

}  // namespace
}  // namespace reports
