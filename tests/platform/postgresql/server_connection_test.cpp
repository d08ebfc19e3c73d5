// SPDX-License-Identifier: GPL-3.0-or-later
// Data access to a real server.
#include <gtest/gtest.h>
#include <libpq-fe.h>

#include <cstdlib>
#include <fstream>
#include <map>

#include "platform/contracts/adodb.h"
#include "platform/contracts/regional.h"
#include "platform/contracts/shared_store.h"
#include "platform/postgresql/server_pool.h"
#include "shared/Global.h"
#include "support/database.h"
#include "support/raises.h"
#include "support/socket_relay.h"
#include "support/temporary_folder.h"

namespace {

using Rows = std::vector<std::string>;

class ServerData : public testing::Test {
 protected:
    static void Execute(const std::string& statement) {
        ADODB::Connection connection;
        connection.Open(Global::ConnectionString);
        connection.Execute(statement);
        connection.Close();
    }
    static Rows Column(const std::string& statement) {
        Rows values;
        ADODB::Recordset rows;
        for (rows.Open(statement, Global::ConnectionString); !rows.EOF_(); rows.MoveNext()) {
            values.push_back(rows.Fields(0).Value.Text());
        }
        return values;
    }
    static RuntimeError ErrorOf(const std::string& statement) {
        try {
            Execute(statement);
        } catch (const RuntimeError& error) {
            return error;
        }
        return {0, ""};
    }
    // Ends all connections and waits until they are gone.
    void EndConnections() const {
        const std::string others =
            "from pg_stat_activity where datname = current_database() and pid <> pg_backend_pid()";
        database.Run("select pg_terminate_backend(pid) " + others);
        while (database.Rows("select count(*) " + others) != Rows{"0"}) {
        }
    }

    fakes::TestDatabase database;
};

}  // namespace

TEST_F(ServerData, RowsComeInTheOrderInWhichTheyWerePutIn) {
    for (const char* name : {"c", "a", "b"}) {
        Execute(std::string("insert into ReportParameter(ReportID, ParName) values(1, '") + name + "')");
    }
    Execute("update ReportParameter set ParValue = 'x' where ParName = 'c'");
    database.Run("vacuum full ReportParameter");
    EXPECT_EQ(Column("select ParName from ReportParameter"), (Rows{"c", "a", "b"}));
    Execute("insert into ReportParameter(ReportID, ParName) values(2, 'A')");
    EXPECT_EQ(Column("select distinct ParName from ReportParameter"), (Rows{"c", "a", "b"}));
    EXPECT_EQ(Column("select ParName from ReportParameter order by ParValue desc"),
              (Rows{"c", "a", "b", "A"}));
    EXPECT_EQ(Column("select ParName from ReportParameter order by ParValue"), (Rows{"a", "b", "A", "c"}));
}

TEST_F(ServerData, TheColumnOfTheOrderIsNotSeen) {
    Execute("insert into ReportParameter(ReportID, ParName) values(1, 'a')");
    ADODB::Recordset rows;
    rows.Open("select * from ReportParameter", Global::ConnectionString);
    ASSERT_EQ(rows.FieldCount(), 3U);
    EXPECT_EQ(rows.Fields("ReportID").Value, Variant(1));
    EXPECT_EQ(rows.Fields("PARNAME").Value, Variant("a"));
    EXPECT_TRUE(rows.Fields(2).Value.IsNull());
    EXPECT_EQ(NumberRaisedBy([&] { rows.Fields("rowid"); }), err::ItemNotFound);
}

TEST_F(ServerData, TextsCompareWithoutRegardToCaseInEveryScript) {
    Execute("insert into Folders(FolderName, Parent) values('\u00c4rger \u0416', 0)");
    const auto count = [](const std::string& condition) {
        return Column("select count(*) from Folders where " + condition);
    };
    EXPECT_EQ(count("FolderName = '\u00e4RGER \u0436'"), Rows{"1"});
    EXPECT_EQ(count("FolderName like '%\u0436'"), Rows{"1"});
    EXPECT_EQ(count("FolderName not like '\u00e4%'"), Rows{"0"});
    EXPECT_EQ(count("left(FolderName, 2) = '\u00e4R'"), Rows{"1"});
    EXPECT_EQ(count("FolderID = '1'"), Rows{"1"});
}

TEST_F(ServerData, KeyOfTheOwnRowIsReadAfterAnotherProgramHasInserted) {
    Execute("insert into Folders(FolderName, Parent) values('own', 0)");
    database.Run("insert into Folders(FolderName, Parent) values('other', 0)");
    EXPECT_EQ(Column("select max(ReportID) from ReportBatch"), Rows{""});
    Execute("delete from Folders");
    Execute("insert into Folders(FolderName, Parent) values('own', 0)");
    database.Run("insert into Folders(FolderName, Parent) values('other', 0)");
    EXPECT_EQ(Column("select max(folderid) as MaxID from Folders"), Rows{"3"});
    EXPECT_EQ(Column("select max(folderid) as MaxID from Folders"), Rows{"4"});
    Execute("delete from Folders");
    Execute("insert into Folders(FolderName, Parent) values('new', 0)");
    EXPECT_EQ(Column("select folderid from Folders"), Rows{"5"});
}

TEST_F(ServerData, OpenRowsSeeTheirOwnMoment) {
    database.Run("insert into ReportParameter(ReportID) select i from generate_series(1, 5000) i");
    ADODB::Recordset rows;
    rows.Open("select ReportID from ReportParameter", Global::ConnectionString);
    Execute("delete from ReportParameter");
    int count = 0;
    for (; !rows.EOF_(); rows.MoveNext()) {
        ++count;
    }
    EXPECT_EQ(count, 5000);
    EXPECT_EQ(NumberRaisedBy([&] { rows.MoveNext(); }), err::NoCurrentRecord);
    EXPECT_EQ(Column("select count(*) from ReportParameter"), Rows{"0"});
}

TEST_F(ServerData, MomentsSortAndCountInEveryForm) {
    SetRegional({DateOrder::DayMonthYear, '/'});
    for (const char* moment : {"07/03/2002 9:05 PM", "nonsense", "2002-03-07 14:05:09", "8 March 2002"}) {
        Execute(std::string("insert into ReportHistory(ReportID, LastRun) values(1, '") + moment + "')");
    }
    EXPECT_EQ(Column("select LastRun from ReportHistory order by LastRun desc"),
              (Rows{"8 March 2002", "07/03/2002 9:05 PM", "2002-03-07 14:05:09", "nonsense"}));
    const RuntimeError error = ErrorOf("delete from ReportHistory where datediff('d',lastrun,Now()) > 30");
    EXPECT_EQ(error.Number(), err::DataTypeMismatch);
    EXPECT_EQ(error.Description(),
              "Data type mismatch in the statement; the value \"nonsense\" is not a date");
    SetRegional({});
}

TEST_F(ServerData, ErrorsHaveTheNumbersOfTheEmbeddedDatabase) {
    EXPECT_EQ(ErrorOf("select * from Nowhere").Number(), err::DataTableMissing);
    EXPECT_EQ(ErrorOf("update Folders set Nothing = 1").Number(), err::DataColumnMissing);
    EXPECT_EQ(ErrorOf("delete from").Number(), err::DataSyntax);
    EXPECT_EQ(ErrorOf("delete from Folders; delete from clients").Number(), err::DataSyntax);
    EXPECT_EQ(ErrorOf("update Folders set FolderName = 'it's'").Number(), err::DataSyntax);
    EXPECT_EQ(ErrorOf("insert into Folders(FolderID) values(1)").Number(), 0);
    const RuntimeError twice = ErrorOf("insert into Folders(FolderID) values(1)");
    EXPECT_EQ(twice.Number(), err::DataConstraint);
    EXPECT_EQ(twice.Description().find('\''), std::string::npos);
}

TEST_F(ServerData, TransactionIsStoredTogetherOrNotAtAll) {
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    connection.BeginTrans();
    connection.Execute("insert into clients(Name) values('a')");
    connection.RollbackTrans();
    connection.BeginTrans();
    connection.Execute("insert into clients(Name) values('b')");
    EXPECT_THROW(connection.Execute("insert into Nowhere values(1)"), RuntimeError);
    EXPECT_EQ(NumberRaisedBy([&] { connection.CommitTrans(); }), err::DataSyntax);
    connection.RollbackTrans();
    connection.BeginTrans();
    connection.Execute("insert into clients(Name) values('c')");
    connection.CommitTrans();
    connection.BeginTrans();
    connection.Execute("insert into clients(Name) values('d')");
    connection.Close();
    EXPECT_EQ(database.Rows("select Name from clients"), Rows{"c"});
}

TEST_F(ServerData, NobodyElseInsertsDuringATransaction) {
    ADODB::SetBusyWait(0.05);
    CloseIdleServers();
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    connection.BeginTrans();
    const RuntimeError error = ErrorOf("insert into Folders(FolderName) values('other')");
    EXPECT_EQ(error.Number(), err::DataTimeout);
    EXPECT_EQ(error.Description(),
              "The store is still in use by another program; canceling statement due to lock timeout");
    EXPECT_EQ(Column("select count(*) from Folders"), Rows{"0"});
    EXPECT_EQ(ErrorOf("insert into ReportHistory(ReportID) values(1)").Number(), 0);
    connection.CommitTrans();
    EXPECT_EQ(ErrorOf("insert into Folders(FolderName) values('other')").Number(), 0);
    ADODB::SetBusyWait(0);
}

TEST_F(ServerData, LostConnectionIsOpenedAgainByTheNextOperation) {
    Execute("insert into clients(Name) values('a')");
    EndConnections();
    Execute("insert into clients(Name) values('b')");
    EndConnections();
    EXPECT_EQ(Column("select Name from clients"), (Rows{"a", "b"}));
}

// A server says that it closes a connection before it does.
TEST_F(ServerData, ConnectionWhoseEndIsAnnouncedIsNotUsedAgain) {
    const TemporaryFolder folder;
    Link link = *ReadLink(database.Folder() / "PressroomLive.dat");
    const SocketRelay relay(folder.Path(), static_cast<std::uint16_t>(std::stoi(link.port)));
    link.host = folder.Path();
    link.port = "5432";
    Server server(link);
    EXPECT_TRUE(server.IsAlive());
    EndConnections();
    while (!relay.HasEnded()) {
    }
    EXPECT_FALSE(server.IsAlive());
}

TEST_F(ServerData, ConnectionThatIsLostInATransactionIsAnUnreachableDatabase) {
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    connection.BeginTrans();
    connection.Execute("insert into clients(Name) values('a')");
    EndConnections();
    EXPECT_EQ(NumberRaisedBy([&] { connection.Execute("insert into clients(Name) values('b')"); }),
              err::DataUnavailable);
    connection.Close();
    EXPECT_EQ(Column("select Name from clients"), Rows{});
}

TEST_F(ServerData, StoreOfAnotherVersionIsRefusedWithWhatMendsIt) {
    const Link link = *ReadLink(database.Folder() / "PressroomLive.dat");
    const auto refusal = [&](const std::string& change) {
        database.Run(change);
        CloseIdleServers();
        try {
            LeaseServer(link);
            return std::string("none");
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), err::DataUnavailable);
            return error.Description();
        }
    };
    const std::string store = "The store " + link.Name(), program = ", and this program, " OXC_VERSION;
    const std::string older =
        ", works with version 1; the owner of the store brings it up to date: oxc-store create";
    EXPECT_EQ(refusal("update store_version set version = 1"), "none");
    EXPECT_EQ(refusal("update store_version set version = 2"),
              store + " has the version 2" + program +
                  ", works with version 1; this machine needs the newer program");
    EXPECT_EQ(refusal("update store_version set version = 0"),
              store + " has the version 0" + program + older);
    EXPECT_EQ(refusal("delete from store_version"), store + " has the version 0" + program + older);
    EXPECT_EQ(refusal("alter table store_version alter version type text; insert into store_version "
                      "values('x1')"),
              store + " has the unreadable version \"x1\"; it is to be restored from a backup");
    EXPECT_EQ(refusal("drop table store_version"),
              "The database " + link.Name() + " holds no store; its owner makes one: oxc-store create");
}

TEST_F(ServerData, SessionOutlivesItsPausesAndNotItsMachine) {
    const LeasedServer server = LeaseServer(*ReadLink(database.Folder() / "PressroomLive.dat"));
    for (const auto& [name, value] :
         std::map<std::string, std::string>{{"idle_session_timeout", "0"},
                                            {"idle_in_transaction_session_timeout", "0"},
                                            {"statement_timeout", "0"},
                                            {"tcp_keepalives_idle", "30"},
                                            {"tcp_keepalives_interval", "10"},
                                            {"tcp_keepalives_count", "3"},
                                            {"tcp_user_timeout", "60000"},
                                            {"client_connection_check_interval", "2s"},
                                            {"oxbow_courier.session", server->Mark()}}) {
        EXPECT_STREQ(PQgetvalue(server->Run("show " + name).get(), 0, 0), value.c_str()) << name;
    }
}

TEST_F(ServerData, EnvironmentDoesNotNameAnotherServer) {
    const Link link = *ReadLink(database.Folder() / "PressroomLive.dat");
    const std::map<std::string, std::string> variables{
        {"PGHOST", "nowhere.invalid"},
        {"PGHOSTADDR", "127.0.0.9"},
        {"PGPORT", "1"},
        {"PGDATABASE", "postgres"},
        {"PGOPTIONS", "-c geqo=off"},
        {"PGUSER", "nobody"},
        {"PGTARGETSESSIONATTRS", "standby"},
        {"PGSERVICE", "other"},
        {"PGSERVICEFILE", (database.Folder() / "services").string()}};
    const std::string services = (database.Folder() / "services").string();
    std::ofstream(services) << "[other]\nhostaddr=127.0.0.9\noptions=-c geqo=off\nuser=nobody\n";
    for (const auto& [name, value] : variables) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    CloseIdleServers();
    const LeasedServer server = LeaseServer(link);
    EXPECT_STREQ(PQgetvalue(server->Run("select current_database()").get(), 0, 0), link.database.c_str());
    EXPECT_STREQ(PQgetvalue(server->Run("select current_user").get(), 0, 0), link.user.c_str());
    EXPECT_STREQ(PQgetvalue(server->Run("show geqo").get(), 0, 0), "on");
    for (const auto& [name, value] : variables) {
        unsetenv(name.c_str());
    }
}

TEST_F(ServerData, StoreThatTakesNoChangesSaysSo) {
    EXPECT_EQ(SharedStoreFailure(Global::ConnectionString), std::nullopt);
    const auto setReadOnly = [this](const std::string& value) {
        database.Run(
            "set transaction_read_only = off; do $$ begin execute format('alter database %I set "
            "default_transaction_read_only = " +
            value + "', current_database()); end $$");
    };
    setReadOnly("on");
    EXPECT_EQ(SharedStoreFailure(Global::ConnectionString), std::nullopt);  // its connection may still write
    CloseIdleServers();
    const std::optional<RuntimeError> failure = SharedStoreFailure(Global::ConnectionString);
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->Number(), err::DataReadOnly);
    EXPECT_EQ(failure->Description(),
              "The store is write-protected: " + ReadLink(database.Folder() / "PressroomLive.dat")->Name() +
                  "; its transactions are set to read only");
    setReadOnly("off");
    EXPECT_EQ(SharedStoreFailure(Global::ConnectionString), std::nullopt);
}

TEST_F(ServerData, WriteIsProvedWithoutAChange) {
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    connection.ProveWritable();
    connection.Close();
    database.Run(
        "do $$ begin execute format('alter database %I set default_transaction_read_only = on', "
        "current_database()); end $$");
    CloseIdleServers();
    connection.Open(Global::ConnectionString);
    EXPECT_EQ(NumberRaisedBy([&] { connection.ProveWritable(); }), err::DataReadOnly);
}
