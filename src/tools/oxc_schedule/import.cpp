// SPDX-License-Identifier: GPL-3.0-or-later
// The command that takes an export in: all of it or nothing.
#include <algorithm>
#include <cerrno>

#include "platform/base/convert.h"
#include "platform/base/text.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/system_error.h"
#include "platform/posix/small_file.h"
#include "scheduler/NextRun.h"
#include "store/Folders.h"
#include "store/TextConventions.h"
#include "store/Upkeep.h"
#include "tools/oxc_schedule/commands.h"
#include "tools/oxc_schedule/import_text.h"
#include "tools/oxc_schedule/output.h"
#include "tools/oxc_schedule/package_rows.h"
#include "tools/oxc_schedule/schedule_rows.h"

namespace tools {
namespace {

enum class Step { Add, Replace, Keep };

template <typename Item>
struct Planned {
    Item item;
    Step step = Step::Add;
};

struct Plan {
    std::vector<StoredFolder> folders;  // the new ones
    std::vector<Planned<StoredSchedule>> schedules;
    std::vector<Planned<StoredPackage>> packages;
    std::string text;  // a line for each item
};

std::string ReadFile(const std::string& name) {
    constexpr std::size_t Largest = 32 << 20;
    const std::optional<std::string> text = ReadSmallFile(name, Largest);
    if (!text) {
        throw RuntimeError(err::PathFileAccess, name + ": " + SystemErrorText(errno));
    }
    return *text;
}

// Returns the first date of the item's series that is still to come. A date of today whose time has passed is
// over: where the export comes from, that run was made.
std::string FirstToCome(const std::string& start, const std::string& runAt,
                        const std::function<DateValue(DateValue)>& next) {
    DateValue date = CDate(start);
    const DateValue first = TimePart(CDate(runAt)) <= TimeOfDay() ? AddDays(Today(), 1) : Today();
    while (date < first) {
        const DateValue after = next(date);
        if (after <= date) {
            break;
        }
        date = after;
    }
    return cmFunc::FormatDateText(date);
}

std::string NextOf(const Global::NewSchedule& row) {
    return FirstToCome(row.startDate, row.runAt, [&row](DateValue date) {
        DateValue after = date;
        Global::NextSingleRun(row.frequency, date, after);
        return after;
    });
}

std::string NextOf(const Global::NewPackage& row) {
    return FirstToCome(row.startDate, row.runTime,
                       [&row](DateValue date) { return Global::NextPackageRun(row.frequency, date); });
}

void PlanFolders(const std::vector<StoredFolder>& imported, Plan& plan) {
    std::vector<StoredFolder> known = ReadFolders();
    known.push_back({.id = "0", .name = RootFolder, .parent = {}});
    const auto find = [&known](const std::string& name) {
        return std::find_if(known.begin(), known.end(),
                            [&name](const StoredFolder& folder) { return SameText(folder.name, name); });
    };
    for (const StoredFolder& folder : imported) {
        const auto former = find(folder.name);
        if (former != known.end()) {
            if (!SameText(former->parent, folder.parent)) {
                Refuse("The folder " + Quoted(folder.name) + " lies in " + Quoted(former->parent) +
                       " and not in " + Quoted(folder.parent));
            }
            continue;
        }
        if (find(folder.parent) == known.end()) {
            Refuse("The folder " + Quoted(folder.name) + ": there is no folder " + Quoted(folder.parent));
        }
        known.push_back(folder);
        plan.folders.push_back(folder);
        plan.text += "add folder " + Quoted(folder.name) + "\n";
    }
}

// Decides what happens to an item of which `former` has the same name.
template <typename Item>
Step StepOf(const Item& item, const std::vector<Item>& former, const std::string& named, bool replaces) {
    if (former.empty()) {
        return Step::Add;
    }
    if (former.size() > 1) {
        Refuse("There are " + std::to_string(former.size()) + " items " + named +
               "; import cannot tell which one is meant");
    }
    if (IsSame(item, former.front())) {
        return Step::Keep;
    }
    if (!replaces) {
        Refuse("There is another " + named + "; --replace takes its place");
    }
    return Step::Replace;
}

std::string LineOf(Step step, const std::string& named) {
    const char* const word = step == Step::Add ? "add " : step == Step::Replace ? "replace " : "keep ";
    return word + named + "\n";
}

void RefuseRepeated(std::vector<std::string>& names, const std::string& named) {
    const std::string upper = UpperText(named);
    if (std::find(names.begin(), names.end(), upper) != names.end()) {
        Refuse("The file has twice the " + named);
    }
    names.push_back(upper);
}

void RequireFolder(const Plan& plan, Global::NewSchedule& row) {
    for (const StoredFolder& folder : plan.folders) {
        if (SameText(folder.name, row.parent)) {
            row.parent = folder.name;
            return;
        }
    }
    try {
        row.parent = FindFolder(row.parent);
    } catch (const RuntimeError& error) {
        Refuse("The schedule " + Quoted(row.title) + ": " + error.Description());
    }
}

void PlanSchedules(const std::vector<StoredSchedule>& imported, bool replaces, Plan& plan) {
    std::vector<std::string> names;
    for (StoredSchedule schedule : imported) {
        Global::NewSchedule& row = schedule.row;
        RequireFolder(plan, row);
        const std::string named = "schedule " + Named(row);
        RefuseRepeated(names, named);
        const auto former =
            ReadSchedules("ReportTitle = " + SqlText(row.title) + " and Parent = " + SqlText(row.parent));
        const bool hasFormer = former.size() == 1;
        if (hasFormer && row.password.empty() && former.front().row.userName == row.userName) {
            row.password = former.front().row.password;  // an export without passwords
        }
        const Step step = StepOf(schedule, former, named, replaces);
        const bool sameSeries = hasFormer && former.front().row.startDate == row.startDate &&
                                former.front().row.frequency == row.frequency;
        row.nextRun = sameSeries ? former.front().row.nextRun : NextOf(row);
        schedule.id = hasFormer ? former.front().id : "";
        plan.text += LineOf(step, named);
        if (step != Step::Keep && row.loginReq == "T" && row.password.empty()) {
            plan.text += "  it has no password: set it with oxc-schedule set --user\n";
        }
        plan.schedules.push_back({std::move(schedule), step});
    }
}

void PlanPackages(const std::vector<StoredPackage>& imported, bool replaces, Plan& plan) {
    std::vector<std::string> names;
    for (StoredPackage package : imported) {
        Global::NewPackage& row = package.row;
        const std::string named = "package " + Quoted(row.name);
        RefuseRepeated(names, named);
        const auto former = ReadPackages("BatchName = " + SqlText(row.name));
        const Step step = StepOf(package, former, named, replaces);
        const bool sameSeries = former.size() == 1 && former.front().row.startDate == row.startDate &&
                                former.front().row.frequency == row.frequency;
        row.nextRunDate = sameSeries ? former.front().row.nextRunDate : NextOf(row);
        package.id = former.size() == 1 ? former.front().id : "";
        plan.text += LineOf(step, named);
        plan.packages.push_back({std::move(package), step});
    }
}

Plan PlanOf(const ImportedItems& items, bool replaces) {
    Plan plan;
    PlanFolders(items.folders, plan);
    PlanSchedules(items.schedules, replaces, plan);
    PlanPackages(items.packages, replaces, plan);
    return plan;
}

void InsertFolders(ADODB::Connection& connection, const Plan& plan) {
    std::vector<StoredFolder> known = ReadFolders();
    known.push_back({.id = "0", .name = RootFolder, .parent = {}});
    std::int64_t key = NextKey("Folders");
    for (StoredFolder folder : plan.folders) {
        const auto parent = std::find_if(known.begin(), known.end(), [&folder](const StoredFolder& one) {
            return SameText(one.name, folder.parent);
        });
        Global::InsertFolder(connection, folder.name, parent->id);
        folder.id = std::to_string(key++);
        known.push_back(folder);
    }
}

// An item that is replaced gets a new key; a schedule loses its history.
void Write(ADODB::Connection& connection, CacheChange& cache, Plan& plan) {
    InsertFolders(connection, plan);
    std::int64_t key = NextKey("ReportScheduler");
    for (auto& [schedule, step] : plan.schedules) {
        if (step == Step::Replace) {
            Global::DeleteSchedule(connection, schedule.id);
        }
        if (step != Step::Keep) {
            schedule.id = std::to_string(key++);
            schedule.row.reportPath = cache.Copy(schedule.row.originalPath);
            InsertScheduleRows(connection, schedule);
        }
    }
    PackageKeys keys;
    for (const auto& [package, step] : plan.packages) {
        if (step == Step::Replace) {
            Global::DeletePackage(connection, package.id);
        }
        if (step != Step::Keep) {
            InsertPackageRows(connection, package, keys);
        }
    }
}

}  // namespace

void ImportAll(const CommandLine& line) {
    const ImportedItems items = ReadImport(ReadFile(line.names.front()));
    const std::string text = PlanOf(items, line.Has("replace")).text;
    if (line.Has("dry-run")) {
        return Print(text + "Nothing is changed.\n");
    }
    InTransaction([&](ADODB::Connection& connection, CacheChange& cache) {
        Plan plan = PlanOf(items, line.Has("replace"));
        if (plan.text != text) {
            Refuse("The database was changed by another program meanwhile; give the command again");
        }
        Write(connection, cache, plan);
    });
    Print(text);
}

}  // namespace tools
