// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Folders.h"

#include "shared/Global.h"

namespace Global {

std::vector<StoredFolder> FoldersBelow(const std::string& parentID) {
    ADODB::Recordset rows;
    rows.Open("select foldername, folderid from folders where parent = " + parentID, ConnectionString);
    std::vector<StoredFolder> folders;
    for (; !rows.EOF_(); rows.MoveNext()) {
        folders.push_back({rows.Fields("folderid").Value.Text(), rows.Fields("foldername").Value.Text()});
    }
    rows.Close();
    return folders;
}

void InsertFolder(const std::string& name, const std::string& parentID) {
    ADODB::Connection connection;
    connection.Open(ConnectionString);
    InsertFolder(connection, name, parentID);
    connection.Close();
}

void InsertFolder(ADODB::Connection& connection, const std::string& name, const std::string& parentID) {
    connection.Execute("insert into Folders(FolderName, Parent) values('" + name + "'," + parentID + ")");
}

void RenameFolder(const std::string& oldName, const std::string& newName) {
    ADODB::Connection connection;
    connection.Open(ConnectionString);
    RenameFolder(connection, oldName, newName);
    connection.Close();
}

void RenameFolder(ADODB::Connection& connection, const std::string& oldName, const std::string& newName) {
    connection.Execute("update folders set foldername = '" + newName + "' where FolderName = '" + oldName +
                       "'");
    connection.Execute("update reportscheduler set parent = '" + newName + "' where parent = '" + oldName +
                       "'");
}

void DeleteFolder(const std::string& id) {
    ADODB::Connection connection;
    connection.Open(ConnectionString);
    DeleteFolder(connection, id);
    connection.Close();
}

void DeleteFolder(ADODB::Connection& connection, const std::string& id) {
    connection.Execute("delete from folders where folderid =" + id);
    connection.Execute(
        "delete from reportscheduler where parent =(select foldername from folders where folderid =" + id +
        ")");
    connection.Execute("delete from folders where parent = " + id);
}

}  // namespace Global
