// SPDX-License-Identifier: GPL-3.0-or-later
// The command that writes all folders, schedules and packages as one text.
#include <algorithm>

#include "platform/base/text.h"
#include "platform/posix/atomic_file.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/commands.h"
#include "tools/oxc_schedule/package_rows.h"
#include "tools/oxc_schedule/records.h"
#include "tools/oxc_schedule/schedule_rows.h"

namespace tools {
namespace {

// Returns the folders that schedules name and that no window shows: deleted ones, and those of which the
// folder above is missing. In the export they lie in the root, so that an import makes them reachable.
std::vector<std::string> LostFolders() {
    std::vector<std::string> known = {RootFolder}, lost;
    for (const StoredFolder& folder : ReadFolders()) {
        known.push_back(folder.name);
    }
    for (const StoredSchedule& schedule : ReadSchedules()) {
        const std::string& name = schedule.row.parent;
        if (std::none_of(known.begin(), known.end(),
                         [&name](const std::string& one) { return SameText(one, name); })) {
            known.push_back(name);
            lost.push_back(name);
        }
    }
    return lost;
}

QJsonArray Folders() {
    QJsonArray array;
    for (const StoredFolder& folder : ReadFolders()) {
        array.append(QJsonObject{{"name", Json(folder.name)}, {"in", Json(folder.parent)}});
    }
    for (const std::string& name : LostFolders()) {
        array.append(QJsonObject{{"name", Json(name)}, {"in", RootFolder}});
    }
    return array;
}

QJsonArray Schedules(bool withPasswords) {
    QJsonArray array;
    for (const StoredSchedule& schedule : ReadSchedules()) {
        QJsonObject object = ScheduleFields(schedule);
        if (withPasswords && schedule.row.loginReq == "T") {
            object.insert("password", Json(schedule.row.password));
        }
        array.append(object);
    }
    return array;
}

QJsonArray Packages() {
    QJsonArray array;
    for (const StoredPackage& package : ReadPackages()) {
        QJsonObject object = PackageFields(package.row);
        object.insert("reports", ReportFields(package));
        array.append(object);
    }
    return array;
}

}  // namespace

// The next runs are left out: they would change the text every day. Import computes them.
void ExportAll(const CommandLine& line) {
    const QJsonObject all{{"oxbow-courier", 1},
                          {"folders", Folders()},
                          {"schedules", Schedules(line.Has("with-passwords"))},
                          {"packages", Packages()}};
    if (line.names.empty() || line.names.front() == "-") {
        return Print(all);
    }
    AtomicFile file(line.names.front(), AtomicFile::IfThere::Replace,
                    line.Has("with-passwords") ? AtomicFile::Readers::Owner : AtomicFile::Readers::Mask);
    file.Write(QJsonDocument(all).toJson().toStdString());
    file.Commit();
    PrintChange(line, "", {{"file", Json(line.names.front())}});
}

}  // namespace tools
