#include "store/LiveDatabase.h"

#include <gtest/gtest.h>

#include <fstream>

#include "app/Global.h"
#include "platform/adodb.h"
#include "platform/paths.h"
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
