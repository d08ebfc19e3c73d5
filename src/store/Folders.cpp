// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Folders.h"

#include "platform/contracts/adodb.h"
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

}  // namespace Global
