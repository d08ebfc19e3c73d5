// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/expressions/expression_names.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>

#include "designer/document/report_items.h"
#include "designer/model/report_data.h"

static void MakeGuide() {
    Q_INIT_RESOURCE(guide);  // not within a namespace
}

namespace designer {
namespace {

QString Tr(const char* text) {
    return QCoreApplication::translate("designer::ExpressionNames", text);
}

ExpressionName PlainName(const QString& text, const QString& help) {
    return {.shown = text, .text = text, .cursor = static_cast<int>(text.size()), .help = help, .row = text};
}

// The name of a function is typed with its brackets, and the cursor is between them.
ExpressionName NameOf(const QString& shown, const QString& help, const QString& row) {
    const qsizetype bracket = shown.indexOf('(');
    ExpressionName name = PlainName(bracket < 0 ? shown : shown.left(bracket) + "()", help);
    name.shown = shown;
    name.row = row;
    name.cursor -= bracket < 0 || shown.endsWith("()") ? 0 : 1;
    return name;
}

// Without marks and addresses of links.
QString PlainText(QString help) {
    static const QRegularExpression Link("\\[([^\\]]*)\\]\\([^)]*\\)");
    return help.replace(Link, "\\1").remove('`').trimmed();
}

QStringList CellsOf(QStringView line) {
    QStringList cells;
    const qsizetype end = line.lastIndexOf('|');
    const QString inner = line.mid(1, end - 1).toString();
    // A | within a cell is written \|.
    static const QRegularExpression Bar("(?<!\\\\)\\|");
    for (const QString& cell : inner.split(Bar)) {
        cells += QString(cell).replace("\\|", "|").trimmed();
    }
    return cells;
}

QString Capitalized(const QString& text) {
    return text.left(1).toUpper() + text.mid(1);
}

QStringList NamesIn(const QString& cell) {
    static const QRegularExpression Quoted("`([^`]+)`");
    QStringList names;
    for (auto found = Quoted.globalMatch(cell); found.hasNext();) {
        names.push_back(found.next().captured(1));
    }
    return names;
}

}  // namespace

std::vector<ExpressionGroup> TablesOfGuide(QStringView guide, const QString& list) {
    const QString begin = "<!-- " + list + " -->", end = "<!-- end of " + list + " -->";
    std::vector<ExpressionGroup> tables;
    bool isWithin = false, isFirst = true;  // the first line of a table has its title
    for (const QStringView line : guide.split(u'\n')) {
        isWithin = (isWithin || line == begin) && line != end;
        const bool isRow = isWithin && line.startsWith(u'|');
        const QStringList cells = isRow ? CellsOf(line) : QStringList();
        if (isRow && isFirst) {
            tables.push_back({.title = Capitalized(PlainText(cells.front()))});
        } else if (cells.size() >= 2 && !cells.front().startsWith("---")) {
            const QStringList names = NamesIn(cells.front());
            for (const QString& name : names) {
                tables.back().names.push_back(NameOf(name, PlainText(cells[1]), names.join(", ")));
            }
        }
        isFirst = !isRow;
    }
    return tables;
}

std::vector<ExpressionGroup> NamesOfGuide() {
    MakeGuide();
    QFile file(":/designer/report-files.md");
    const QString guide = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    const auto only = [&](const char* list) {
        std::vector<ExpressionGroup> tables = TablesOfGuide(guide, list);
        return tables.empty() ? std::vector<ExpressionName>() : std::move(tables.front().names);
    };
    return {{.title = Tr("Globals"), .names = only("globals")},
            {.title = Tr("Totals"), .names = only("aggregates")},
            {.title = Tr("Choice and lookup"), .names = only("forms")},
            {.title = Tr("Functions"), .groups = TablesOfGuide(guide, "functions")}};
}

namespace {

// The functions that the code of a report has, with their arguments as they are written there.
ExpressionGroup OwnFunctions(const Document& document) {
    static const QRegularExpression Function(
        "^[ \\t]*(?:(?:Public|Shared)[ \\t]+)*Function[ \\t]+(\\w+)[ \\t]*\\(([^()\\n]*)\\)",
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption |
            QRegularExpression::UseUnicodePropertiesOption);
    ExpressionGroup group{.title = Tr("Functions of the report")};
    const QString code = QString::fromStdString(document.TextAt(document.Root(), "Code").value_or(""));
    for (auto found = Function.globalMatch(code); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QString shown = "Code." + match.captured(1) + "(" + match.captured(2).simplified() + ")";
        group.names.push_back(NameOf(shown, Tr("A function of the report"), shown));
    }
    return group;
}

void Flatten(const std::vector<ExpressionGroup>& groups, std::vector<ExpressionName>& names) {
    for (const ExpressionGroup& group : groups) {
        names.insert(names.end(), group.names.begin(), group.names.end());
        Flatten(group.groups, names);
    }
}

// A field has more than its value, and so has a parameter.
void AddMember(const char* collection, const QString& member, const QString& help,
               std::vector<ExpressionName>& names) {
    std::vector<ExpressionName> added;
    for (const ExpressionName& name : names) {
        if (name.text.startsWith(collection) && name.text.endsWith(".Value")) {
            added.push_back(PlainName(name.text.chopped(5) + member, help));
        }
    }
    names.insert(names.end(), added.begin(), added.end());
}

}  // namespace

std::vector<ExpressionName> NamesToType(const Document& document, const std::string& dataSet) {
    std::vector<ExpressionGroup> groups = NamesOfReport(document);
    const QString own = QString::fromStdString(dataSet);
    std::stable_partition(groups[0].groups.begin(), groups[0].groups.end(),
                          [&](const ExpressionGroup& set) { return set.title == own; });
    std::vector<ExpressionName> names;
    Flatten(groups, names);
    AddMember("Fields!", "IsMissing", Tr("Whether the query does not have the field"), names);
    AddMember("Parameters!", "Label", Tr("What the list of valid values shows"), names);
    Flatten(NamesOfGuide(), names);
    QSet<QString> known;  // data sets may have fields of one name, and forms several rows in the guide
    std::erase_if(names, [&](const ExpressionName& name) {
        const qsizetype count = known.size();
        known.insert(name.shown.toLower());
        return known.size() == count;
    });
    return names;
}

std::vector<ExpressionGroup> NamesOfReport(const Document& document) {
    ExpressionGroup fields{.title = Tr("Fields")};
    for (const ReportSet& set : SetsOf(document)) {
        const QString name = QString::fromStdString(set.name);
        ExpressionGroup own{.title = name};
        for (const ReportField& field : set.fields) {
            own.names.push_back(PlainName("Fields!" + QString::fromStdString(field.name) + ".Value",
                                          field.column.empty()
                                              ? Tr("A field of %1 that is computed").arg(name)
                                              : Tr("A field of %1").arg(name)));
        }
        fields.groups.push_back(std::move(own));
    }
    if (fields.groups.size() == 1) {
        fields.names = std::move(fields.groups.front().names);
        fields.groups.clear();
    }
    ExpressionGroup parameters{.title = Tr("Parameters")};
    const ElementId list = document.Find(document.Root(), "ReportParameters");
    for (const ElementId id : list == NoElement ? std::vector<ElementId>{} : document.Children(list)) {
        const QString name = QString::fromStdString(document.Attribute(id, "Name").value_or(""));
        const QString prompt = QString::fromStdString(document.TextAt(id, "Prompt").value_or(""));
        parameters.names.push_back(PlainName("Parameters!" + name + ".Value", prompt));
    }
    ExpressionGroup boxes{.title = Tr("Text boxes")};
    for (const ReportItem& item : ReadReportItems(document).items) {
        if (item.kind == "Textbox") {
            boxes.names.push_back(PlainName("ReportItems!" + QString::fromStdString(item.name) + ".Value",
                                            Tr("What the text box shows")));
        }
    }
    return {std::move(fields), std::move(parameters), std::move(boxes), OwnFunctions(document)};
}

}  // namespace designer
