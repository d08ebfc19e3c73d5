// SPDX-License-Identifier: GPL-3.0-or-later
// The command that takes an export in: all of it or nothing.
#include <algorithm>
#include <cerrno>
#include <optional>
#include <set>
#include <utility>

#include "platform/base/convert.h"
#include "platform/base/text.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/system_error.h"
#include "platform/posix/small_file.h"
#include "store/Folders.h"
#include "store/TextConventions.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/commands.h"
#include "tools/oxc_schedule/import_text.h"
#include "tools/oxc_schedule/next_text.h"
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
    QJsonArray items;  // the same for --json
};

std::string ReadFile(const std::string& name) {
    constexpr std::size_t Largest = 32 << 20;
    // Unlike a settings file it may be a pipe.
    const UniqueFd file(name == "-" ? dup(STDIN_FILENO)
                                    : open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    const std::optional<std::string> text = ReadToEnd(file.Get(), Largest);
    if (!text) {
        Refuse(name + ": " + SystemErrorText(errno));
    }
    return *text;
}

// Returns the first date of the item's series that is still to come. A date of today whose time has passed is
// over: where the export comes from, that run was made.
std::string NextOf(const std::string& start, const std::string& runAt, const Global::RepeatingItem& item) {
    DateValue date = CDate(start);
    const DateValue first = TimePart(CDate(runAt)) <= TimeOfDay() ? AddDays(Today(), 1) : Today();
    while (date < first) {
        const DateValue after = item.next(date);
        if (after <= date) {
            break;
        }
        date = after;
    }
    return cmFunc::FormatDateText(date);
}

std::string OverText(const std::string& endDate) {
    return endDate < cmFunc::FormatDateText(Today()) ? "  its dates are over: it does not run\n" : "";
}

void PlanFolders(const std::vector<StoredFolder>& imported, Plan& plan) {
    std::vector<StoredFolder> known = ReadFolders();
    const std::vector<StoredFolder> lost = ReadLostFolders();
    known.push_back({.id = "0", .name = RootFolder, .parent = {}});
    known.insert(known.end(), lost.begin(), lost.end());
    const auto find = [&known](const std::string& name) {
        return std::find_if(known.begin(), known.end(),
                            [&name](const StoredFolder& folder) { return SameText(folder.name, name); });
    };
    for (const StoredFolder& folder : imported) {
        const auto former = find(folder.name);
        if (former != known.end()) {
            if (!former->parent.empty() && !SameText(former->parent, folder.parent)) {
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
        plan.items.append(QJsonObject{{"kind", "folder"}, {"name", Json(folder.name)}, {"step", "add"}});
    }
}

std::vector<StoredSchedule> FormersOf(const StoredSchedule& schedule) {
    return ReadSchedules("ReportTitle = " + SqlText(schedule.row.title) +
                         " and Parent = " + SqlText(schedule.row.parent));
}

std::vector<StoredPackage> FormersOf(const StoredPackage& package) {
    return ReadPackages("BatchName = " + SqlText(package.row.name));
}

std::string NameOf(const StoredSchedule& schedule) {
    return "schedule " + Named(schedule.row);
}

std::string NameOf(const StoredPackage& package) {
    return "package " + Quoted(package.row.name);
}

// Matches the items of the file with the stored ones of the same name: first those that are the same. The
// windows can make several of one name, and each stands for one.
template <typename Item>
class Matching {
 public:
    explicit Matching(const std::vector<Item>& items, bool replaces) : m_replaces(replaces) {
        for (const Item& item : items) {
            const std::vector<Item> formers = FreeFormers(item);
            const auto same = std::find_if(formers.begin(), formers.end(),
                                           [&item](const Item& former) { return IsSame(item, former); });
            m_same.push_back(same == formers.end() ? std::nullopt : std::optional(*same));
            if (m_same.back()) {
                m_taken.insert(same->id);
            }
        }
    }
    // Returns what happens to the item with this index, and the stored one that it keeps or replaces.
    std::pair<Step, std::optional<Item>> StepOf(std::size_t index, const Item& item) {
        if (m_same[index]) {
            return {Step::Keep, m_same[index]};
        }
        const std::vector<Item> formers = FreeFormers(item);
        if (formers.empty()) {
            return {Step::Add, std::nullopt};
        }
        if (formers.size() > 1) {
            Refuse("There are " + std::to_string(formers.size()) + " items " + NameOf(item) +
                   "; import cannot tell which one is meant");
        }
        if (!m_replaces) {
            Refuse("There is another " + NameOf(item) + "; --replace takes its place");
        }
        m_taken.insert(formers.front().id);
        return {Step::Replace, formers.front()};
    }

 private:
    std::vector<Item> FreeFormers(const Item& item) const {
        std::vector<Item> formers = FormersOf(item);
        std::erase_if(formers, [this](const Item& former) { return m_taken.contains(former.id); });
        return formers;
    }

    bool m_replaces;
    std::vector<std::optional<Item>> m_same;
    std::set<std::string> m_taken;
};

std::string WordOf(Step step) {
    return step == Step::Add ? "add" : step == Step::Replace ? "replace" : "keep";
}

// `remarks` are lines of their own, for an item that is written.
template <typename Item>
void Append(Plan& plan, Step step, const Item& item, QJsonObject object, const std::string& remarks) {
    plan.text += WordOf(step) + " " + NameOf(item) + "\n" + (step == Step::Keep ? "" : remarks);
    object.insert("step", Json(WordOf(step)));
    plan.items.append(object);
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
        Refuse("The schedule " + Quoted(row.title) + ": " + TextOf(error));
    }
}

// A range that is over stays over.
std::string Remarks(const Global::NewSchedule& row) {
    return std::string(row.loginReq == "T" && row.password.empty()
                           ? "  it has no password: set it with oxc-schedule set --user\n"
                           : "") +
           OverText(row.endDate);
}

void PlanSchedules(std::vector<StoredSchedule> imported, bool replaces, Plan& plan) {
    for (StoredSchedule& schedule : imported) {
        RequireFolder(plan, schedule.row);
    }
    Matching<StoredSchedule> matching(imported, replaces);
    for (std::size_t i = 0; i < imported.size(); ++i) {
        StoredSchedule& schedule = imported[i];
        Global::NewSchedule& row = schedule.row;
        const auto [step, former] = matching.StepOf(i, schedule);
        const bool sameSeries =
            former && former->row.startDate == row.startDate && former->row.frequency == row.frequency;
        row.nextRun = sameSeries ? former->row.nextRun : NextOf(row.startDate, row.runAt, ItemOf(row));
        schedule.id = former ? former->id : "";
        if (former && row.password.empty() && former->row.userName == row.userName) {
            row.password = former->row.password;  // an export without passwords
        }
        Append(plan, step, schedule,
               {{"kind", "schedule"}, {"title", Json(row.title)}, {"folder", Json(row.parent)}},
               Remarks(row));
        plan.schedules.push_back({schedule, step});
    }
}

void PlanPackages(const std::vector<StoredPackage>& imported, bool replaces, Plan& plan) {
    Matching<StoredPackage> matching(imported, replaces);
    for (std::size_t i = 0; i < imported.size(); ++i) {
        StoredPackage package = imported[i];
        Global::NewPackage& row = package.row;
        const auto [step, former] = matching.StepOf(i, package);
        const bool sameSeries =
            former && former->row.startDate == row.startDate && former->row.frequency == row.frequency;
        row.nextRunDate =
            sameSeries ? former->row.nextRunDate : NextOf(row.startDate, row.runTime, ItemOf(row));
        package.id = former ? former->id : "";
        Append(plan, step, package, {{"kind", "package"}, {"name", Json(row.name)}}, OverText(row.endDate));
        plan.packages.push_back({package, step});
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
    const std::vector<StoredFolder> lost = ReadLostFolders();
    known.push_back({.id = "0", .name = RootFolder, .parent = {}});
    known.insert(known.end(), lost.begin(), lost.end());
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
    const ImportedItems items = ReadImport(ReadFile(line.names.front()), FormerItems());
    const Plan plan = PlanOf(items, line.Has("replace"));
    if (line.Has("dry-run")) {
        return PrintChange(line, plan.text + "Nothing is changed.\n",
                           {{"changed", false}, {"items", plan.items}});
    }
    InTransaction([&](ADODB::Connection& connection, CacheChange& cache) {
        Plan now = PlanOf(items, line.Has("replace"));
        if (now.text != plan.text) {
            Refuse("The database was changed by another program meanwhile; give the command again");
        }
        Write(connection, cache, now);
    });
    PrintChange(line, plan.text, {{"changed", true}, {"items", plan.items}});
}

}  // namespace tools
