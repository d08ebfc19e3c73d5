// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/import_text.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/base/marks.h"
#include "platform/base/text.h"
#include "scheduler/Frequencies.h"
#include "store/TextConventions.h"
#include "tools/oxc_schedule/checks.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/package_rows.h"
#include "tools/oxc_schedule/schedule_rows.h"

namespace tools {
namespace {

// The fields of one item. A field that nobody asked for is unknown.
class Fields {
 public:
    explicit Fields(const QJsonValue& value) : m_object(value.toObject()) {
        if (!value.isObject()) {
            Refuse("it is not an object");
        }
    }
    std::string Text(const char* name) {
        const QJsonValue value = Take(name);
        if (value.isUndefined()) {
            Refuse("the field " + Quoted(name) + " is missing");
        }
        return TextOf(name, value);
    }
    std::string TextOr(const char* name, const std::string& otherwise) {
        const QJsonValue value = Take(name);
        return value.isUndefined() ? otherwise : TextOf(name, value);
    }
    bool FlagOr(const char* name, bool otherwise) {
        const QJsonValue value = Take(name);
        if (!value.isBool() && !value.isUndefined()) {
            Refuse("the field " + Quoted(name) + " is not true or false");
        }
        return value.toBool(otherwise);
    }
    QJsonArray List(const char* name) {
        const QJsonValue value = Take(name);
        if (!value.isArray() && !value.isUndefined()) {
            Refuse("the field " + Quoted(name) + " is not a list");
        }
        return value.toArray();
    }
    void RefuseOthers() const {
        if (!m_object.isEmpty()) {
            Refuse("the field " + Quoted(m_object.keys().front().toStdString()) + " is not known");
        }
    }

 private:
    QJsonValue Take(const char* name) {
        return m_object.contains(QLatin1String(name)) ? m_object.take(QLatin1String(name))
                                                      : QJsonValue(QJsonValue::Undefined);
    }
    static std::string TextOf(const char* name, const QJsonValue& value) {
        if (!value.isString()) {
            Refuse("the field " + Quoted(name) + " is not a text");
        }
        if (value.toString().contains(QChar(0))) {
            Refuse("the field " + Quoted(name) + " contains a zero character");
        }
        return value.toString().toStdString();
    }

    QJsonObject m_object;
};

// Words are compared exactly, as the polls do.
template <std::size_t Count>
void CheckFrequency(const std::string& word, const std::array<std::string_view, Count>& known) {
    if (std::find(known.begin(), known.end(), word) == known.end()) {
        std::string list;
        for (const std::string_view one : known) {
            list += (list.empty() ? "" : ", ") + std::string(one);
        }
        Refuse("the frequency " + Quoted(word) + " is not one of " + list);
    }
}

std::string CheckedDate(const std::string& text) {
    const std::optional<DateValue> day = DayOf(text);
    if (!day) {
        Refuse("the date " + Quoted(text) + " is not a date");
    }
    return cmFunc::FormatDateText(*day);
}

void CheckRange(const std::string& start, const std::string& end) {
    if (start >= end) {
        Refuse("the end date " + end + " is not later than the start date " + start);
    }
}

std::string Mandatory(const std::string& what, const std::string& text) {
    const std::string clean = WithoutMark(text);
    if (clean.empty()) {
        Refuse("the " + what + " is empty");
    }
    RefuseControls("the " + what, clean);
    return clean;
}

StoredFolder ReadFolder(const QJsonValue& value) {
    Fields fields(value);
    StoredFolder folder{.id = {},
                        .name = Mandatory("name", fields.Text("name")),
                        .parent = WithoutMark(fields.TextOr("in", RootFolder))};
    fields.RefuseOthers();
    return folder;
}

NamedValues ReadParameters(const QJsonArray& list) {
    NamedValues values;
    for (const QJsonValue& value : list) {
        Fields fields(value);
        const std::string name = fields.Text("name");
        values.emplace_back(name, WithoutMark(fields.Text("value")));
        fields.RefuseOthers();
    }
    return values;
}

std::string ReportPath(Fields& fields) {
    return GivenPath(fields.Text("report"));
}

// With its backslash; an empty one stays empty, for CheckedOutputFolder.
std::string OutputPath(Fields& fields) {
    const std::string path = GivenPath(fields.Text("output"));
    return path.empty() || path.ends_with('\\') ? path : path + "\\";
}

void ReadLogon(Fields& fields, Global::NewSchedule& row) {
    row.userName = fields.TextOr("user", "");
    row.password = fields.TextOr("password", "");
    row.loginReq = row.userName.empty() ? "F" : "T";
    RefuseMark("the user", row.userName);
    if (row.password.find('\'') != std::string::npos) {
        Refuse("the password contains an apostrophe, which cannot be stored");
    }
}

// The fields as they stand in the file. Report Properties stores "WeekDays", and no word at all if none of
// its frequencies is chosen.
StoredSchedule ScheduleFrom(const QJsonValue& value) {
    Fields fields(value);
    Global::NewSchedule row{.sendTo = fields.Text("to"),
                            .subject = WithoutMark(fields.TextOr("subject", "")),
                            .message = WithoutMark(fields.TextOr("message", "")),
                            .startDate = fields.Text("start"),
                            .endDate = fields.TextOr("end", LastDay),
                            .runAt = fields.Text("at"),
                            .frequency = fields.Text("frequency"),
                            .nextRun = {},
                            .reportPath = {},
                            .title = fields.Text("title"),
                            .selectionForm = WithoutMarks(fields.TextOr("formula", "")),
                            .format = fields.TextOr("format", "pdf"),
                            .parent = WithoutMark(fields.TextOr("folder", RootFolder)),
                            .originalPath = ReportPath(fields),
                            .userName = {},
                            .password = {},
                            .loginReq = {}};
    ReadLogon(fields, row);
    const NamedValues given = ReadParameters(fields.List("parameters"));
    fields.RefuseOthers();
    return {.id = {}, .row = row, .parameters = given};
}

// An export without passwords leaves the stored ones.
void TakePassword(Global::NewSchedule& row, const StoredSchedule& former) {
    if (row.password.empty() && former.row.userName == row.userName &&
        SameText(former.row.title, row.title) && SameText(former.row.parent, row.parent)) {
        row.password = former.row.password;
    }
}

StoredSchedule ReadSchedule(const QJsonValue& value, const FormerItems& stored) {
    StoredSchedule schedule = ScheduleFrom(value);
    Global::NewSchedule& row = schedule.row;
    for (const StoredSchedule& former : stored.schedules) {
        StoredSchedule known = schedule;
        TakePassword(known.row, former);
        if (IsSame(known, former)) {
            return known;
        }
    }
    row.title = Mandatory("title", row.title);
    row.sendTo = CheckedRecipients({row.sendTo});
    row.startDate = CheckedDate(row.startDate);
    row.endDate = CheckedDate(row.endDate);
    row.runAt = CheckedTime(row.runAt);
    if (!row.frequency.empty()) {
        CheckFrequency(row.frequency, Global::frequencies::OfSchedules);
    }
    if (!row.format.empty()) {
        row.format = CheckedFormat(row.format, Global::Runner::Single);
    }
    CheckRange(row.startDate, row.endDate);
    schedule.parameters = CheckedParameters(OpenReportFile(row.originalPath), schedule.parameters);
    return schedule;
}

PackageReport PackageReportFrom(const QJsonValue& value) {
    Fields fields(value);
    PackageReport report{.detailID = {},
                         .title = {},
                         .path = ReportPath(fields),
                         .format = fields.TextOr("format", "pdf"),
                         .values = {}};
    for (const QJsonValue& one : fields.List("values")) {
        if (!one.isString()) {
            Refuse("a value of the report " + Quoted(report.path) + " is not a text");
        }
        report.values.push_back(one.toString().toStdString());
    }
    fields.RefuseOthers();
    return report;
}

void AppendChecked(StoredPackage& package, const PackageReport& read) {
    const std::string format = CheckedFormat(read.format, Global::Runner::PackageDemand);
    AppendReport(package, read.path, format, {}, read.values);
    const std::size_t wanted = package.reports.back().values.size();
    if (read.values.size() > wanted) {
        Refuse("the report " + Quoted(FileNameOf(read.path)) + " has " + std::to_string(wanted) +
               " parameters, and there are " + std::to_string(read.values.size()) + " values");
    }
}

StoredPackage PackageFrom(const QJsonValue& value) {
    Fields fields(value);
    const bool isMailed = fields.FlagOr("mail", true);
    const std::string to = fields.TextOr("to", "");
    StoredPackage package{.id = {},
                          .row = {.recipients = isMailed ? to : "N/A",
                                  .frequency = fields.Text("frequency"),
                                  .runTime = fields.Text("at"),
                                  .startDate = fields.Text("start"),
                                  .endDate = fields.TextOr("end", LastDay),
                                  .nextRunDate = {},
                                  .subject = WithoutMark(fields.TextOr("subject", "")),
                                  .message = WithoutMark(fields.TextOr("message", "")),
                                  .destination = OutputPath(fields),
                                  .name = fields.Text("name"),
                                  .mailBatch = isMailed ? "T" : "F"},
                          .reports = {}};
    const QJsonArray reports = fields.List("reports");
    fields.RefuseOthers();
    for (const QJsonValue& report : reports) {
        package.reports.push_back(PackageReportFrom(report));
    }
    return package;
}

StoredPackage ReadPackage(const QJsonValue& value, const FormerItems& stored) {
    StoredPackage package = PackageFrom(value);
    if (std::any_of(stored.packages.begin(), stored.packages.end(),
                    [&package](const StoredPackage& former) { return IsSame(package, former); })) {
        return package;
    }
    Global::NewPackage& row = package.row;
    row.name = Mandatory("name", row.name);
    row.recipients = row.mailBatch == "T" ? CheckedRecipients({row.recipients}) : row.recipients;
    CheckFrequency(row.frequency, Global::frequencies::OfPackages);
    row.runTime = CheckedTime(row.runTime);
    row.startDate = CheckedDate(row.startDate);
    row.endDate = CheckedDate(row.endDate);
    row.destination = CheckedOutputFolder(row.destination);
    CheckRange(row.startDate, row.endDate);
    if (package.reports.empty()) {
        Refuse("it has no report");
    }
    const std::vector<PackageReport> reports = std::exchange(package.reports, {});
    for (const PackageReport& report : reports) {
        AppendChecked(package, report);
    }
    return package;
}

// Reads every item of the list. An error gets the item's number and its name.
template <typename Item>
std::vector<Item> ReadItems(const QJsonArray& list, const char* kind, const char* nameField,
                            const std::function<Item(const QJsonValue& value)>& read) {
    std::vector<Item> items;
    for (const QJsonValue& value : list) {
        try {
            items.push_back(read(value));
        } catch (const RuntimeError& error) {
            const std::string name =
                value.toObject().value(QLatin1String(nameField)).toString().toStdString();
            Refuse("The " + std::string(kind) + " " + Quoted(name) + ", number " +
                   std::to_string(items.size() + 1) + " of the file: " + error.Description());
        }
    }
    return items;
}

}  // namespace

ImportedItems ReadImport(const std::string& text, const FormerItems& former) {
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(text), &error);
    if (document.isNull()) {
        Refuse("The file is not JSON, at byte " + std::to_string(error.offset) + ": " +
               error.errorString().toStdString());
    }
    QJsonObject all = document.object();
    if (all.take(QLatin1String("oxbow-courier")).toInt() != 1) {
        Refuse("The file is not an export of version 1: its field \"oxbow-courier\" is not 1");
    }
    Fields fields(all);
    const QJsonArray folders = fields.List("folders"), schedules = fields.List("schedules"),
                     packages = fields.List("packages");
    fields.RefuseOthers();
    return {ReadItems<StoredFolder>(folders, "folder", "name", ReadFolder),
            ReadItems<StoredSchedule>(schedules, "schedule", "title",
                                      [&former](const QJsonValue& one) { return ReadSchedule(one, former); }),
            ReadItems<StoredPackage>(packages, "package", "name",
                                     [&former](const QJsonValue& one) { return ReadPackage(one, former); })};
}

}  // namespace tools
