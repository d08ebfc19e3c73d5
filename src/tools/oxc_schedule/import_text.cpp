// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/import_text.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "platform/base/convert.h"
#include "platform/base/paths.h"
#include "store/TextConventions.h"
#include "tools/oxc_schedule/checks.h"
#include "tools/oxc_schedule/output.h"
#include "tools/oxc_schedule/package_rows.h"

namespace tools {
namespace {

using Words = std::initializer_list<std::string_view>;

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
std::string CheckedFrequency(const std::string& word, Words known) {
    if (std::find(known.begin(), known.end(), word) == known.end()) {
        std::string list;
        for (const std::string_view one : known) {
            list += (list.empty() ? "" : ", ") + std::string(one);
        }
        Refuse("the frequency " + Quoted(word) + " is not one of " + list);
    }
    return word;
}

std::string CheckedDate(const std::string& text) {
    try {
        return cmFunc::FormatDateText(CDate(text));
    } catch (const RuntimeError&) {
        Refuse("the date " + Quoted(text) + " is not a date");
    }
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
        values.emplace_back(name, fields.Text("value"));
        fields.RefuseOthers();
    }
    return values;
}

std::string ReportPath(Fields& fields) {
    return paths::FromMachine(fields.Text("report"));
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

StoredSchedule ReadSchedule(const QJsonValue& value) {
    Fields fields(value);
    Global::NewSchedule row{
        .sendTo = CheckedRecipients({fields.Text("to")}),
        .subject = WithoutMark(fields.TextOr("subject", "")),
        .message = WithoutMark(fields.TextOr("message", "")),
        .startDate = CheckedDate(fields.Text("start")),
        .endDate = CheckedDate(fields.TextOr("end", LastDay)),
        .runAt = CheckedTime(fields.Text("at")),
        .frequency = CheckedFrequency(fields.Text("frequency"),
                                      {"Daily", "Weekdays", "Weekends", "Weekly", "Monthly"}),
        .nextRun = {},
        .reportPath = {},
        .title = Mandatory("title", fields.Text("title")),
        .selectionForm = WithoutMarks(fields.TextOr("formula", "")),
        .format = CheckedFormat(fields.TextOr("format", "pdf"), Global::Runner::Single),
        .parent = WithoutMark(fields.TextOr("folder", RootFolder)),
        .originalPath = ReportPath(fields),
        .userName = {},
        .password = {},
        .loginReq = {}};
    CheckRange(row.startDate, row.endDate);
    ReadLogon(fields, row);
    const NamedValues given = ReadParameters(fields.List("parameters"));
    fields.RefuseOthers();
    return {.id = {}, .row = row, .parameters = CheckedParameters(OpenReportFile(row.originalPath), given)};
}

void ReadPackageReport(const QJsonValue& value, StoredPackage& package) {
    Fields fields(value);
    const std::string path = ReportPath(fields);
    const std::string format = CheckedFormat(fields.TextOr("format", "pdf"), Global::Runner::PackageDemand);
    std::vector<std::string> values;
    for (const QJsonValue& one : fields.List("values")) {
        if (!one.isString()) {
            Refuse("a value of the report " + Quoted(path) + " is not a text");
        }
        values.push_back(one.toString().toStdString());
    }
    fields.RefuseOthers();
    AppendReport(package, path, format, {}, values);
    const std::size_t wanted = package.reports.back().values.size();
    if (values.size() > wanted) {
        Refuse("the report " + Quoted(FileNameOf(path)) + " has " + std::to_string(wanted) +
               " parameters, and there are " + std::to_string(values.size()) + " values");
    }
}

StoredPackage ReadPackage(const QJsonValue& value) {
    Fields fields(value);
    const bool isMailed = fields.FlagOr("mail", true);
    const std::string to = fields.TextOr("to", "");
    StoredPackage package{
        .id = {},
        .row = {.recipients = isMailed ? CheckedRecipients({to}) : "N/A",
                .frequency =
                    CheckedFrequency(fields.Text("frequency"), {"Daily", "Weekly", "Monthly", "Quartely"}),
                .runTime = CheckedTime(fields.Text("at")),
                .startDate = CheckedDate(fields.Text("start")),
                .endDate = CheckedDate(fields.TextOr("end", LastDay)),
                .nextRunDate = {},
                .subject = WithoutMark(fields.TextOr("subject", "")),
                .message = WithoutMark(fields.TextOr("message", "")),
                .destination = CheckedOutputFolder(paths::FromMachine(fields.Text("output"))),
                .name = Mandatory("name", fields.Text("name")),
                .mailBatch = isMailed ? "T" : "F"},
        .reports = {}};
    CheckRange(package.row.startDate, package.row.endDate);
    const QJsonArray reports = fields.List("reports");
    fields.RefuseOthers();
    for (const QJsonValue& report : reports) {
        ReadPackageReport(report, package);
    }
    if (package.reports.empty()) {
        Refuse("it has no report");
    }
    return package;
}

// Reads every item of the list. An error gets the item's number and its name.
template <typename Item>
std::vector<Item> ReadItems(const QJsonArray& list, const char* kind, const char* nameField,
                            Item (*read)(const QJsonValue& value)) {
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

ImportedItems ReadImport(const std::string& text) {
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
    return {ReadItems(folders, "folder", "name", ReadFolder),
            ReadItems(schedules, "schedule", "title", ReadSchedule),
            ReadItems(packages, "package", "name", ReadPackage)};
}

}  // namespace tools
