// SPDX-License-Identifier: GPL-3.0-or-later
// The commands on folders.
#include "platform/base/marks.h"
#include "platform/base/text.h"
#include "store/Folders.h"
#include "store/Upkeep.h"
#include "tools/oxc_schedule/checks.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/commands.h"
#include "tools/oxc_schedule/records.h"

namespace tools {
namespace {

// A folder that is renamed may keep its name in other upper and lower case.
std::string CheckedNewName(const std::string& text, const std::string& former = {}) {
    std::string name = WithoutMark(text);
    if (name.empty()) {
        Refuse("The name of the folder is empty");
    }
    RefuseControls("The name", name);
    if (!SameText(name, former) && !Global::FolderNameFree(name)) {
        Refuse("The name " + Quoted(name) + Global::NameIsTaken);
    }
    return name;
}

// The root has no row and cannot be changed.
StoredFolder FindChangeable(const std::string& name) {
    const std::string stored = FindFolder(name);
    if (stored == RootFolder) {
        Refuse("The folder " + Quoted(stored) + " is the root and cannot be changed");
    }
    for (const StoredFolder& folder : ReadFolders()) {
        if (folder.name == stored) {
            return folder;
        }
    }
    Refuse("There is no folder " + Quoted(name));
}

// A folder that is not empty stays: its schedules would continue to run in no folder.
void RefuseFilled(const StoredFolder& folder) {
    const std::size_t schedules = ReadSchedules("Parent = " + SqlText(folder.name)).size();
    const std::size_t folders = Global::FoldersBelow(folder.id).size();
    if (schedules + folders > 0) {
        Refuse("The folder " + Quoted(folder.name) + " is not empty: schedules " + std::to_string(schedules) +
               ", folders " + std::to_string(folders));
    }
}

}  // namespace

void ListFolders(const CommandLine& line) {
    const std::vector<StoredFolder> folders = ReadFolders();
    if (line.Has("json")) {
        QJsonArray array;
        for (const StoredFolder& folder : folders) {
            array.append(QJsonObject{{"name", Json(folder.name)}, {"in", Json(folder.parent)}});
        }
        return Print(array);
    }
    std::vector<std::vector<std::string>> rows = {{"FOLDER", "IN"}};
    for (const StoredFolder& folder : folders) {
        rows.push_back({folder.name, folder.parent});
    }
    PrintTable(rows);
}

void AddFolder(const CommandLine& line) {
    std::string name, parent;
    InTransaction([&](ADODB::Connection& connection) {
        name = CheckedNewName(line.names.front());
        parent = FindFolder(line.ValueOr("in", RootFolder));
        Global::InsertFolder(connection, name, parent == RootFolder ? "0" : FindChangeable(parent).id);
    });
    PrintChange(line, "The folder " + Quoted(name) + " is added to " + Quoted(parent) + ".\n",
                {{"name", Json(name)}, {"in", Json(parent)}});
}

void RenameStoredFolder(const CommandLine& line) {
    StoredFolder folder;
    std::string name;
    InTransaction([&](ADODB::Connection& connection) {
        folder = FindChangeable(line.names[0]);
        name = CheckedNewName(line.names[1], folder.name);
        if (name != folder.name) {
            Global::RenameFolder(connection, folder.name, name);
        }
    });
    PrintChange(line, "The folder " + Quoted(folder.name) + " is now called " + Quoted(name) + ".\n",
                {{"name", Json(name)}, {"in", Json(folder.parent)}, {"former", Json(folder.name)}});
}

void RemoveFolder(const CommandLine& line) {
    StoredFolder folder;
    InTransaction([&](ADODB::Connection& connection) {
        folder = FindChangeable(line.names.front());
        RefuseFilled(folder);
        Global::DeleteFolder(connection, folder.id);
    });
    PrintChange(line, "The folder " + Quoted(folder.name) + " is removed.\n",
                {{"name", Json(folder.name)}, {"in", Json(folder.parent)}});
}

}  // namespace tools
