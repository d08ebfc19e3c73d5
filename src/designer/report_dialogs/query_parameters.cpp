// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/report_dialogs/query_parameters.h"

#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/note.h"
#include "designer/model/report_parameters.h"
#include "platform/base/ascii.h"
#include "rdl/api/identifier.h"

namespace designer {
namespace {

std::string WithoutMark(const std::string& name) {
    return name.substr(name.find_first_not_of("@:$") == 1 ? 1 : 0);
}

bool IsSameName(const std::string& one, const std::string& other) {
    return SameAscii(WithoutMark(one), WithoutMark(other));
}

bool HasName(const std::vector<std::string>& names, const std::string& name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& one) { return IsSameName(one, name); });
}

bool HasRow(const std::vector<RowTable::Row>& rows, const std::string& name) {
    return std::any_of(rows.begin(), rows.end(),
                       [&](const RowTable::Row& row) { return IsSameName(row.cells[0], name); });
}

std::vector<QueryParameter> ParametersIn(const std::vector<RowTable::Row>& rows) {
    std::vector<QueryParameter> parameters;
    for (const RowTable::Row& row : rows) {
        parameters.push_back({row.place, row.cells[0], row.cells[1]});
    }
    return parameters;
}

// A parameter that a ? stands for has a name of its own in the file.
std::vector<std::string> NamesOfMarks(std::vector<std::string> names) {
    for (std::size_t index = 0; index < names.size(); ++index) {
        names[index] = names[index] == "?" ? "Parameter" + std::to_string(index + 1) : names[index];
    }
    return names;
}

}  // namespace

QueryParameters::QueryParameters(const DesignModel& model, const Write& write, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_table(new RowTable(
          model, "queryParameters", tr("Parameters of the query"),
          {{.title = tr("Name")},
           {.title = tr("Value in a run"), .takesExpressions = true},
           {.title = tr("Value for a test here")}},
          [this, write](Document& copy, const std::vector<RowTable::Row>& rows) {
              write(copy, ParametersIn(rows));
              AddToReport(copy);
          },
          this)),
      m_note(new Note(m_table->Table(), this)) {
    setFocusProxy(m_table);
    auto* label = new QLabel(tr("A parameter stands in the query as @Name; what the query has is added. The "
                                "value for a test is not kept; without one the parameter is Null when the "
                                "query is run here."),
                             this);
    label->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_note);
    connect(m_table, &RowTable::Edited, this, [this] {
        ShowNewParameters();
        emit Edited();
    });
}

void QueryParameters::Show(const std::vector<QueryParameter>& parameters) {
    std::vector<RowTable::Row> rows;
    for (const QueryParameter& parameter : parameters) {
        rows.push_back(
            {parameter.place,
             {parameter.name, parameter.value, FirstTestValue(m_model.Source(), parameter.value)}});
    }
    m_table->SetRows(std::move(rows));
    m_offered.clear();
    m_refused.clear();
    m_note->Clear();
}

std::vector<QueryParameter> QueryParameters::Parameters() {
    return ParametersIn(m_table->Rows());
}

std::vector<rdl::QueryValue> QueryParameters::TestValues() const {
    std::vector<rdl::QueryValue> values;
    for (const RowTable::Row& row : m_table->Shown()) {
        values.push_back({row.cells[0], TestValue(m_model.Source(), row.cells[1], row.cells[2])});
    }
    return values;
}

QueryParameters::Offered QueryParameters::OfferOf(const std::string& name) const {
    std::string parameter = WithoutMark(name);
    Offered offered{{NewRow, {name, "", ""}}, {}};
    if (!rdl::IsIdentifier(parameter)) {
        return offered;
    }
    const std::vector<ReportParameter> all = ReportParametersOf(m_model.Source());
    const auto found = std::find_if(
        all.begin(), all.end(), [&](const ReportParameter& one) { return SameAscii(one.name, parameter); });
    if (found == all.end()) {
        offered.newParameter = parameter;
    } else {
        parameter = found->name;
    }
    offered.row.cells[1] = "=Parameters!" + parameter + ".Value";
    offered.row.cells[2] = FirstTestValue(m_model.Source(), offered.row.cells[1]);
    return offered;
}

bool QueryParameters::RemoveUnasked(std::vector<RowTable::Row>& rows, const std::vector<std::string>& names) {
    const std::size_t before = rows.size();
    std::erase_if(m_offered, [&](const Offered& offered) {
        const std::string& name = offered.row.cells[0];
        if (!HasRow(rows, name)) {
            m_refused.insert(ToLower(WithoutMark(name)));
            return true;
        }
        const bool isAsked = HasName(names, name);
        if (!isAsked) {
            std::erase(rows, offered.row);
        }
        return !isAsked;
    });
    std::erase_if(m_refused, [&](const std::string& name) { return !HasName(names, name); });
    return rows.size() != before;
}

bool QueryParameters::Offer(const std::vector<std::string>& asked) {
    const std::vector<std::string> names = NamesOfMarks(asked);
    const bool areMarks = !asked.empty() && asked.front() == "?";
    std::vector<RowTable::Row> rows = m_table->Rows();
    bool hasChanged = RemoveUnasked(rows, names);
    for (std::size_t index = areMarks ? rows.size() : 0; index < names.size(); ++index) {
        const std::string& name = names[index];
        if (!HasRow(rows, name) && !m_refused.contains(ToLower(WithoutMark(name)))) {
            m_offered.push_back(OfferOf(name));
            rows.push_back(m_offered.back().row);
            hasChanged = true;
        }
    }
    if (hasChanged) {
        m_table->SetRows(std::move(rows));
        ShowNewParameters();
    }
    return hasChanged;
}

// The report gets no parameter for an offer that the user has changed or removed.
std::vector<std::string> QueryParameters::NewParameters() const {
    std::vector<std::string> names;
    for (const Offered& offered : m_offered) {
        const std::vector<RowTable::Row>& rows = m_table->Shown();
        const bool isUsed = std::any_of(rows.begin(), rows.end(), [&](const RowTable::Row& row) {
            return row.cells[1] == offered.row.cells[1];
        });
        if (isUsed && !offered.newParameter.empty()) {
            names.push_back(offered.newParameter);
        }
    }
    return names;
}

void QueryParameters::AddToReport(Document& document) const {
    const std::vector<std::string> names = NewParameters();
    if (names.empty()) {
        return;
    }
    std::vector<ReportParameter> all = ReportParametersOf(document);
    for (const std::string& name : names) {
        all.push_back({.name = name, .prompt = name});
    }
    PutReportParameters(document, all);
}

void QueryParameters::ShowNewParameters() {
    QStringList names;
    for (const std::string& name : NewParameters()) {
        names += QString::fromStdString(name);
    }
    if (names.isEmpty()) {
        m_note->Clear();
    } else {
        m_note->ShowText(tr("New parameters of the report: %1. They are texts; Report, Parameters gives them "
                            "another type.")
                             .arg(names.join(", ")));
    }
}

bool QueryParameters::Complain(std::size_t row, const QString& text) {
    m_table->ShowCell(row, 0);
    m_note->ShowError(text);
    return false;
}

bool QueryParameters::IsComplete() {
    const std::vector<RowTable::Row>& rows = m_table->Rows();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const std::string& name = rows[row].cells[0];
        if (Trim(name).empty()) {
            return Complain(row, tr("Type the name that the query has: @Year"));
        }
        const auto isSame = [&](const RowTable::Row& other) { return SameAscii(other.cells[0], name); };
        if (std::count_if(rows.begin(), rows.end(), isSame) > 1) {
            return Complain(row, tr("The name %1 stands twice").arg(QString::fromStdString(name)));
        }
    }
    return true;
}

}  // namespace designer
