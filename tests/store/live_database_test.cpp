// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/LiveDatabase.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>

#include "platform/base/paths.h"
#include "platform/contracts/adodb.h"
#include "shared/Global.h"
#include "support/database.h"
#include "support/fakes.h"

namespace {

class LiveDatabase : public testing::Test {
 protected:
    void Write(const char* name, const std::string& text) const {
        std::ofstream(database.Folder() / name) << text;
    }
    std::string Read(const char* name) const {
        std::ifstream file(database.Folder() / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void RemoveLive() const {
        for (const char* end : {"", "-wal", "-shm"}) {
            std::filesystem::remove(database.Folder() / (std::string("PressroomLive.dat") + end));
        }
    }
    fakes::TestDatabase database;
    fakes::FakePrompts prompts;
};

}  // namespace

TEST_F(LiveDatabase, IsCopiedFromTheBlankOneWhenMissing) {
    RemoveLive();
    Write("Pressroom.dat", "blank");
    Global::EnsureLiveDatabase();
    EXPECT_EQ(Read("PressroomLive.dat"), "blank");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(LiveDatabase, FolderOfItsNameIsAnErrorThatIsShown) {
    RemoveLive();
    Write("Pressroom.dat", "blank");
    std::filesystem::create_directory(database.Folder() / "PressroomLive.dat");
    Global::EnsureLiveDatabase();
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_EQ(prompts.boxes[0].text, "Oxbow Courier encountred an error. File already exists: \"" +
                                         (database.Folder() / "PressroomLive.dat").string() + "\" [58]");
    EXPECT_TRUE(std::filesystem::is_directory(database.Folder() / "PressroomLive.dat"));
}

// Each process makes the file if it is missing and inserts a row. The log of a former database is beside it.
TEST_F(LiveDatabase, ProcessesThatStartAtOnceLoseNoRow) {
    constexpr int Processes = 6;
    std::filesystem::copy_file(database.Folder() / "PressroomLive.dat", database.Folder() / "Pressroom.dat");
    for (int round = 0; round < 8; ++round) {
        RemoveLive();
        Write("PressroomLive.dat-wal", "a former log");
        std::array<pid_t, Processes> children{};
        for (pid_t& child : children) {
            child = fork();
            if (child == 0) {
                Global::EnsureLiveDatabase();
                ADODB::Connection connection;
                connection.Open(Global::ConnectionString);
                connection.Execute("insert into Folders(FolderName, Parent) values('one', 0)");
                std::_Exit(0);
            }
        }
        for (const pid_t child : children) {
            int status = 0;
            waitpid(child, &status, 0);
            EXPECT_EQ(status, 0);
        }
        EXPECT_EQ(database.Rows("select count(*) from Folders"),
                  std::vector<std::string>{std::to_string(Processes)});
    }
}

TEST_F(LiveDatabase, IsNeverReplaced) {
    Write("PressroomLive.dat", "mine");
    Write("Pressroom.dat", "blank");
    Global::EnsureLiveDatabase();
    EXPECT_EQ(Read("PressroomLive.dat"), "mine");
}

TEST_F(LiveDatabase, MissingBlankIsShownAndTheCallerGoesOn) {
    RemoveLive();
    Global::EnsureLiveDatabase();
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_EQ(prompts.boxes[0].text.rfind("Oxbow Courier encountred an error. ", 0), 0U)
        << prompts.boxes[0].text;
    EXPECT_NE(prompts.boxes[0].text.find("[53]"), std::string::npos) << prompts.boxes[0].text;
    EXPECT_EQ(prompts.boxes[0].flags, 48);
    EXPECT_EQ(prompts.boxes[0].title, "Oxbow Courier");
}

TEST_F(LiveDatabase, ApplicationFolderMayBeNamedAsItLikes) {
    for (const char* name : {"a;b", "a;b=c", "a;Mode=x", "a; Data Source", "50% off", "it's", "say \"hi\"",
                             "a=b", " blanks ", "\xC3\xBCmlaut", "-x"}) {
        const std::filesystem::path folder = database.Folder() / name;
        std::filesystem::create_directory(folder);
        std::filesystem::copy_file(database.Folder() / "PressroomLive.dat", folder / "Pressroom.dat");
        SetAppPath(paths::FromMachine(folder));
        Global::EnsureLiveDatabase();
        ADODB::Connection connection;
        connection.Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + AppPath() +
                        "\\PressroomLive.dat;Persist Security Info=False");
        connection.Execute("insert into Folders(FolderName, Parent) values('here', 0)");
        EXPECT_TRUE(std::filesystem::exists(folder / "PressroomLive.dat")) << name;
        EXPECT_TRUE(prompts.boxes.empty()) << name;
    }
}

TEST_F(LiveDatabase, CopyDoesNotMeetTheLogOfTheOneBefore) {
    database.Run("insert into Folders(FolderName, Parent) values('old', 0)");
    std::filesystem::copy_file(database.Folder() / "PressroomLive.dat", database.Folder() / "Pressroom.dat");
    std::filesystem::remove(database.Folder() / "PressroomLive.dat");
    Write("PressroomLive.dat-wal", std::string(4096, 'x'));
    Global::EnsureLiveDatabase();
    ADODB::Recordset rows;
    rows.Open("select FolderName from Folders", Global::ConnectionString);
    EXPECT_EQ(rows.Fields(0).Value.Text(), "old");
}
