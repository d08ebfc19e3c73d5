// SPDX-License-Identifier: GPL-3.0-or-later
// The outbox folder holds only whole messages.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "mail_fixture.h"
#include "platform/posix/program.h"

namespace {

class OutboxFolder : public MailTest {
 public:
    void SetUp() override { WriteOutboxProfile(); }
    static int Mode(const std::filesystem::path& path) {
        struct stat status {};
        return stat(path.c_str(), &status) == 0 ? static_cast<int>(status.st_mode & 0777) : -1;
    }
};

// Returns the result of `body` in a process that cannot write files larger than some kilobytes.
template <typename Body>
int InSmallProcess(Body body) {
    const pid_t child = fork();
    if (child == 0) {
        PrepareProgram();
        const rlimit limit{16384, 16384};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(body());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

TEST_F(OutboxFolder, IsMadeForItsOwnerOnlyAndSoAreItsFiles) {
    WriteProfile("Transport=outbox\nFrom=a@example.com\nOutboxFolder=" + (Outbox() / "deep").string() + "\n");
    umask(0);
    MakeMessage({"ann@example.com"})->Send();
    umask(022);
    const auto files = FilesIn(Outbox() / "deep");
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(Mode(Outbox()), 0700);
    EXPECT_EQ(Mode(Outbox() / "deep"), 0700);
    EXPECT_EQ(Mode(files[0]), 0600);
    EXPECT_EQ(files[0].extension(), ".eml");
}

TEST_F(OutboxFolder, NamesSortAsMessagesWereSent) {
    for (int number = 0; number < 30; ++number) {
        const auto message = MakeMessage({"ann@example.com"});
        message->Subject = "Number " + std::to_string(number) + ".";
        message->Send();
    }
    const auto files = FilesIn(Outbox());
    ASSERT_EQ(files.size(), 30u);
    for (int number = 0; number < 30; ++number) {
        EXPECT_NE(
            ReadBytes(files[static_cast<std::size_t>(number)]).find("Number " + std::to_string(number) + "."),
            std::string::npos);
    }
}

TEST_F(OutboxFolder, WhatADeadProcessLeftIsRemovedAndWhatALiveOneWritesIsNot) {
    std::filesystem::create_directory(Outbox());
    WriteBytes(Outbox() / ".oxc-dead.part", "half");
    WriteBytes(Outbox() / ".oxc-live.part", "half");
    WriteBytes(Outbox() / ".other", "not ours");
    const int live = open((Outbox() / ".oxc-live.part").c_str(), O_RDONLY);
    flock(live, LOCK_EX);
    MakeMessage({"ann@example.com"})->Send();
    EXPECT_FALSE(std::filesystem::exists(Outbox() / ".oxc-dead.part"));
    EXPECT_TRUE(std::filesystem::exists(Outbox() / ".oxc-live.part"));
    EXPECT_TRUE(std::filesystem::exists(Outbox() / ".other"));
    close(live);
}

TEST_F(OutboxFolder, WithoutRoomItIsTheFullMailboxAndNothingIsLeft) {
    const std::string source = WriteFile("big.pdf", std::string(100000, 'x'));
    const int answer = InSmallProcess([&] {
        const auto message = MakeMessage({"ann@example.com"});
        message->Attachments().Add().Source = source;
        return NumberRaisedBy([&] { message->Send(); }) == err::MailboxFull ? 42 : 1;
    });
    EXPECT_EQ(answer, 42);
    EXPECT_TRUE(FilesIn(Outbox()).empty());
}

TEST_F(OutboxFolder, FolderThatCannotBeMadeIsNamed) {
    WriteBytes(Outbox(), "a file in the way");
    const auto message = MakeMessage({"ann@example.com"});
    EXPECT_EQ(NumberRaisedBy([&] { message->Send(); }), err::PathFileAccess);
    EXPECT_NE(DescriptionRaisedBy([&] { message->Send(); }).find(Outbox().string()), std::string::npos);
}

// A folder with thousands of messages is not read for each new one.
TEST_F(OutboxFolder, IsSearchedForWhatWasLeftOnceAndNotForEachMessage) {
    MakeMessage({"ann@example.com"})->Send();
    WriteBytes(Outbox() / ".oxc-dead.part", "half");
    MakeMessage({"ann@example.com"})->Send();
    EXPECT_TRUE(std::filesystem::exists(Outbox() / ".oxc-dead.part"));
}
