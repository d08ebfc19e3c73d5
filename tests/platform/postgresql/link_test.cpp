// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/link.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "platform/base/paths.h"
#include "platform/contracts/adodb.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

namespace {

class LinkFile : public testing::Test {
 protected:
    void Write(const std::string& text) const {
        std::ofstream(m_file) << text;
        namespace fs = std::filesystem;
        fs::permissions(m_file, fs::perms::owner_read | fs::perms::owner_write);
    }
    std::string Fault() const {
        try {
            ReadLink(m_file);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), err::DataUnavailable);
            return error.Description();
        }
        return "none";
    }
    std::string Named(const std::string& fault) const {
        return "The link \"" + m_file.string() + "\" is damaged; " + fault;
    }

    TemporaryFolder m_folder;
    std::filesystem::path m_file = m_folder / "live.dat";
};

}  // namespace

TEST_F(LinkFile, NamesTheStore) {
    Write(
        "Oxbow Courier store link 1\nProvider=PostgreSQL\nHost=db.example.com\nPort=5433\n\n"
        "Database=courier\r\nusername=clerk\nPassword=a=b;c\nSSLMode=VerifyFull\n");
    const std::optional<Link> link = ReadLink(m_file);
    ASSERT_TRUE(link.has_value());
    EXPECT_EQ(link->host, "db.example.com");
    EXPECT_EQ(link->port, "5433");
    EXPECT_EQ(link->database, "courier");
    EXPECT_EQ(link->user, "clerk");
    EXPECT_EQ(link->password, "a=b;c");
    EXPECT_EQ(link->sslMode, "verify-full");
    EXPECT_EQ(link->Name(), "\"courier\" on db.example.com");
    Write(TextOfLink(*link));
    EXPECT_EQ(ReadLink(m_file), link);
}

TEST_F(LinkFile, HoldsEveryValueOfAConnectString) {
    for (const std::string password : {"a\"b", "\"", "\"\"", "\"quoted\"", "\" x\"", "\"\"\"x\"\"\"", "a;b",
                                       ";", " a b ", " ", " \" ; \"", "' x", "x \"", "a''b"}) {
        std::string doubled;
        for (const char c : password) {
            doubled += c == '"' ? "\"\"" : std::string(1, c);
        }
        const Link link = LinkOfConnectString("Host=h;Password=\"" + doubled + "\" ;Database=d");
        EXPECT_EQ(link.password, password);
        EXPECT_EQ(link.database, "d");
        Write(TextOfLink(link));
        EXPECT_EQ(ReadLink(m_file), link) << password;
    }
}

TEST_F(LinkFile, ValuesStandAsTheyAre) {
    for (const std::string command :
         {"\"/opt/a b/get\" \"the store\"", "\"/opt/get key\"", "\"/opt/get\" key"}) {
        Write("Oxbow Courier store link 1\nHost=h\nDatabase=d\nPasswordCommand=" + command + "\n");
        EXPECT_EQ(ReadLink(m_file)->passwordCommand, command);
    }
}

TEST_F(LinkFile, OtherFilesAreNoLinks) {
    EXPECT_EQ(ReadLink(m_file), std::nullopt);
    EXPECT_EQ(ReadLink(m_folder.Path()), std::nullopt);
    for (const char* text :
         {"", "SQLite format 3", "Oxbow Courier", "oxbow courier store link 1\nHost=h\n"}) {
        Write(text);
        EXPECT_EQ(ReadLink(m_file), std::nullopt) << text;
    }
}

TEST_F(LinkFile, FaultsAreNamed) {
    const std::string start = "Oxbow Courier store link 1\n";
    Write(start);
    EXPECT_EQ(Fault(), Named("it names no Host"));
    Write(start + "Host=h\n");
    EXPECT_EQ(Fault(), Named("it names no Database"));
    Write(start + "Host=h\nDatabase=d\nPort=x\n");
    EXPECT_EQ(Fault(), Named("\"x\" is not a Port"));
    Write(start + "Host=h\nDatabase=d\nSSLMode=maybe\n");
    EXPECT_EQ(Fault(), Named("\"maybe\" is not an SSLMode"));
    Write(start + "Provider=Other\n");
    EXPECT_EQ(Fault(), Named("line 2: there is no provider \"Other\", only PostgreSQL"));
    Write(start + "Host=h\n\nHots=h\n");
    EXPECT_EQ(Fault(), Named("line 4: the key \"Hots\" is not known"));
    Write(start + "Host\n");
    EXPECT_EQ(Fault(), Named("line 2: it has no ="));
    Write(start + "Host=a\tb\n");
    EXPECT_EQ(Fault(), Named("line 2: the value of Host holds a control character"));
    Write(start + "Host=h\nDatabase=d\nHOST=other\n");
    EXPECT_EQ(Fault(), Named("line 4: the key HOST is given twice"));
    Write(start + "Provider=PostgreSQL\nProvider=PostgreSQL\n");
    EXPECT_EQ(Fault(), Named("line 3: the key Provider is given twice"));
    Write(start + "Host=h\nDatabase=d\nPassword=p\nPasswordCommand=pass\n");
    EXPECT_EQ(Fault(), Named("it has both a Password and a PasswordCommand"));
    Write(start + std::string(70'000, '\n'));
    EXPECT_EQ(Fault(), Named("it is too long"));
    Write("Oxbow Courier store link 2\nHost=h\nDatabase=d\n");
    EXPECT_EQ(Fault(), "The link \"" + m_file.string() + "\" is of a later version of the program");
}

TEST_F(LinkFile, MayComeFromAnyEditor) {
    Write("\xEF\xBB\xBFOxbow Courier store link 1 \t\r\nHost = h \r\nDatabase\t=d\t\r\n \r\n");
    ASSERT_TRUE(IsLink(m_file));
    const std::optional<Link> link = ReadLink(m_file);
    ASSERT_TRUE(link.has_value());
    EXPECT_EQ(link->host, "h");
    EXPECT_EQ(link->database, "d");
    Write("Oxbow Courier store link 1\nnonsense\n");
    EXPECT_TRUE(IsLink(m_file));
    Write("SQLite format 3");
    EXPECT_FALSE(IsLink(m_file));
}

TEST_F(LinkFile, SecretThatOthersReachIsRefused) {
    const std::string text = "Oxbow Courier store link 1\nHost=h\nDatabase=d\n";
    namespace fs = std::filesystem;
    Write(text);
    fs::permissions(m_file, fs::perms::group_read, fs::perm_options::add);
    EXPECT_EQ(Fault(), "none");
    for (const std::string key : {"Password", "PasswordCommand"}) {
        Write(text + key + "=secret\n");
        EXPECT_EQ(Fault(), "none");
        fs::permissions(m_file, fs::perms::group_read | fs::perms::others_write, fs::perm_options::add);
        EXPECT_EQ(Fault(), "The link \"" + m_file.string() + "\" has a " + key +
                               " and the mode 0642; only its owner may read and write it: chmod 600 \"" +
                               m_file.string() + "\"");
    }
}

TEST_F(LinkFile, SecretOfAnotherUserIsRefused) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root gives files away";
    }
    constexpr uid_t Daemon = 1;
    const std::string text = "Oxbow Courier store link 1\nHost=h\nDatabase=d\n";
    for (const std::string key : {"Password", "PasswordCommand"}) {
        Write(text + key + "=secret\n");
        ASSERT_EQ(chown(m_file.c_str(), Daemon, Daemon), 0);
        EXPECT_EQ(Fault(),
                  "The link \"" + m_file.string() + "\" has a " + key +
                      " and belongs to daemon; only the user who opens it, or root, may own it: chown "
                      "root \"" +
                      m_file.string() + "\"");
    }
    Write(text);
    EXPECT_EQ(Fault(), "none");
}

TEST_F(LinkFile, DamagedLinkAndLostServerAreAnUnreadableDatabase) {
    const std::string data = "Provider=P;Data Source=" + paths::FromMachine(m_file);
    Write("Oxbow Courier store link 1\n");
    ADODB::Connection connection;
    EXPECT_EQ(NumberRaisedBy([&] { connection.Open(data); }), err::DataUnavailable);
    Write("Oxbow Courier store link 1\nHost=127.0.0.1\nPort=1\nDatabase=d\n");
    EXPECT_EQ(NumberRaisedBy([&] { connection.Open(data); }), err::DataUnavailable);
    Write("Oxbow Courier store link 1\nHost=127.0.0.1\nDatabase=d\nPasswordCommand=exit 3\n");
    try {
        connection.Open(data);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), err::DataUnavailable);
        EXPECT_EQ(error.Description(),
                  "The store cannot be reached: \"d\" on 127.0.0.1; PasswordCommand failed with exit code 3");
    }
    Write(
        "Oxbow Courier store link 1\nHost=127.0.0.1\nDatabase=d\n"
        "PasswordCommand=printf 'no key\\nfor %0300d' 1 >&2; exit 3\n");
    try {
        connection.Open(data);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Description(),
                  "The store cannot be reached: \"d\" on 127.0.0.1; PasswordCommand failed with exit code 3: "
                  "no key for " +
                      std::string(189, '0'));
    }
}

TEST(ConnectString, HasTheKeysOfALink) {
    const Link link = LinkOfConnectString(
        "Host=db;Port=5433;Database='a;b';Username=clerk ; Password=\"p'w\";SSL Mode=Require;");
    EXPECT_EQ(link.host, "db");
    EXPECT_EQ(link.port, "5433");
    EXPECT_EQ(link.database, "a;b");
    EXPECT_EQ(link.user, "clerk");
    EXPECT_EQ(link.password, "p'w");
    EXPECT_EQ(link.sslMode, "require");
    EXPECT_THROW(LinkOfConnectString("Host=db"), RuntimeError);
    EXPECT_EQ(
        DescriptionRaisedBy([] { LinkOfConnectString("Host=db;Database=d;Password=my;secret"); }),
        "The connect string is damaged; a part of it has no =; a value that holds a semicolon stands in "
        "quotation marks");
    EXPECT_EQ(
        DescriptionRaisedBy([] { LinkOfConnectString("Host=db;Password=\"a\"b;Database=d"); }),
        "The connect string is damaged; the value of Password goes on after its quotation mark; inside the "
        "value the mark is doubled");
    EXPECT_EQ(DescriptionRaisedBy([] { LinkOfConnectString("Host=db;Database=d;Password='a;b"); }),
              "The connect string is damaged; the value of Password has no closing quotation mark");
    EXPECT_THROW(LinkOfConnectString(""), RuntimeError);
    EXPECT_THROW(LinkOfConnectString("Host=db;Database=d;Host=e"), RuntimeError);
    EXPECT_THROW(LinkOfConnectString("Host=db;Database=d;Password=p;PasswordCommand=c"), RuntimeError);
}
