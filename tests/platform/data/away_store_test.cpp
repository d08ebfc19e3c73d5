// SPDX-License-Identifier: GPL-3.0-or-later
// A shared store that cannot be reached: what is asked, and how often.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "platform/base/paths.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/shared_store.h"
#include "support/temporary_folder.h"

namespace {

class AwayStore : public testing::Test {
 protected:
    // No server has port 1.
    AwayStore() { WriteLink("Host=127.0.0.1\nPort=1\nDatabase=courier\n"); }
    ~AwayStore() override { AskWhenStoreIsAway(nullptr); }

    void WriteLink(const std::string& lines) const {
        WriteBytes(m_folder / "live.dat", "Oxbow Courier store link 1\nProvider=PostgreSQL\n" + lines);
    }
    std::string Connection() const { return "Data Source=" + paths::FromMachine(m_folder / "live.dat"); }
    void Open() const {
        ADODB::Connection connection;
        connection.Open(Connection());
    }
    // Answers true `again` times, then false.
    void AnswerAgain(int again) {
        AskWhenStoreIsAway([this, again](const RuntimeError& error) {
            m_asked.push_back(error.Description());
            return m_asked.size() <= static_cast<std::size_t>(again);
        });
    }

    TemporaryFolder m_folder;
    std::vector<std::string> m_asked;
};

TEST_F(AwayStore, IsAnErrorAtOnceWithoutAQuestion) {
    try {
        Open();
        FAIL() << "connected";
    } catch (const StoreGivenUp&) {
        FAIL() << "nobody was asked";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), err::DataUnavailable);
        EXPECT_TRUE(error.Description().starts_with(
            "The store cannot be reached: \"courier\" on 127.0.0.1; connection to server at \"127.0.0.1\", "
            "port 1 failed: Connection refused"))
            << error.Description();
    }
}

TEST_F(AwayStore, IsAskedAboutUntilTheUserGivesUp) {
    AnswerAgain(2);
    EXPECT_THROW(Open(), StoreGivenUp);
    ASSERT_EQ(m_asked.size(), 3U);
    EXPECT_TRUE(m_asked.front().starts_with("The store cannot be reached: \"courier\" on 127.0.0.1; "));
}

TEST_F(AwayStore, IsNotAskedAboutTwiceInOneCommand) {
    AnswerAgain(0);
    EXPECT_THROW(Open(), StoreGivenUp);
    EXPECT_THROW(Open(), StoreGivenUp);
    EXPECT_EQ(m_asked.size(), 1U);
    std::this_thread::sleep_for(std::chrono::milliseconds(2100));
    EXPECT_THROW(Open(), StoreGivenUp);
    EXPECT_EQ(m_asked.size(), 2U);
}

TEST_F(AwayStore, IsNotAskedAboutWhileTheQuestionIsOnTheScreen) {
    int asked = 0;
    AskWhenStoreIsAway([&](const RuntimeError&) {
        ++asked;
        EXPECT_THROW(Open(), StoreGivenUp);
        return false;
    });
    EXPECT_THROW(Open(), StoreGivenUp);
    EXPECT_EQ(asked, 1);
}

TEST_F(AwayStore, MayBeMendedWhileTheQuestionIsOnTheScreen) {
    WriteLink("Database=courier\n");
    std::string asked;
    AskWhenStoreIsAway([&](const RuntimeError& error) {
        asked = error.Description();
        std::filesystem::remove(m_folder / "live.dat");
        return true;
    });
    try {
        Open();
        FAIL() << "connected";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Description(),
                  "Could not find the data file \"" + (m_folder / "live.dat").string() + "\"");
    }
    EXPECT_EQ(asked, "The link \"" + (m_folder / "live.dat").string() + "\" is damaged; it names no Host");
}

TEST_F(AwayStore, IsTestedWithoutAQuestion) {
    AnswerAgain(0);
    EXPECT_EQ(SharedStoreFailure(Connection())->Number(), err::DataUnavailable);
    EXPECT_TRUE(m_asked.empty());
}

TEST_F(AwayStore, EmbeddedDatabaseIsNotAskedAbout) {
    WriteBytes(m_folder / "live.dat", "no database at all");
    AnswerAgain(0);
    EXPECT_FALSE(IsSharedStore(Connection()));
    EXPECT_THROW(ADODB::Recordset().Open("select 1 from t", Connection()), RuntimeError);
    EXPECT_TRUE(m_asked.empty());
}

}  // namespace
