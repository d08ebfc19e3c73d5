// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/expressions/expression_names.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>

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

// Of a function the brackets are typed, and the cursor is between them.
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
    return {std::move(fields), std::move(parameters), std::move(boxes)};
}

}  // namespace designer
