// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/record_selection.h"

#include <algorithm>

#include "rdl/data/common/message.h"
#include "rdl/data/data_set_filter.h"
#include "rdl/values/ascii.h"

namespace rdl::data {
namespace {

bool HasField(const DataSet& dataSet, std::string_view name) {
    return std::any_of(dataSet.fields.begin(), dataSet.fields.end(),
                       [&](const Field& field) { return EqualNoCase(field.name, name); });
}

// The data sets that a field may be one of.
std::vector<const DataSet*> Holders(const Definition& definition, const formula::FieldName& field) {
    std::vector<const DataSet*> named, any;
    for (const DataSet& dataSet : definition.dataSets) {
        if (HasField(dataSet, field.field)) {
            any.push_back(&dataSet);
            if (EqualNoCase(dataSet.name, field.table)) {
                named.push_back(&dataSet);
            }
        }
    }
    if (field.table.empty() || any.empty()) {
        return any;
    }
    if (named.empty() && any.size() > 1) {
        throw Error("Record selection formula: the table \"" + CleanText(field.table) +
                    "\" is no data set, and " + std::to_string(any.size()) + " data sets have a field \"" +
                    CleanText(field.field) + "\", at character " + std::to_string(field.position));
    }
    return named.empty() ? any : named;
}

class Row : public formula::Inputs {
 public:
    Row(const LoadRequest& request, const std::vector<int>& parameters, const Table& table)
        : m_request(request),
          m_parameters(parameters),
          m_table(table),
          m_culture(FindCulture(request.definition->language)) {}

    void Bind(const std::vector<formula::FieldName>& fields) {
        for (const formula::FieldName& field : fields) {
            const auto found =
                std::find_if(m_table.fieldNames.begin(), m_table.fieldNames.end(),
                             [&](const std::string& name) { return EqualNoCase(name, field.field); });
            m_slots.push_back(static_cast<std::size_t>(found - m_table.fieldNames.begin()));
        }
    }
    void SetRow(std::size_t row) { m_row = row; }

    Value Field(int index) override { return m_table.At(m_row, m_slots[static_cast<std::size_t>(index)]); }
    Value Parameter(int index) override {
        const auto at = static_cast<std::size_t>(m_parameters[static_cast<std::size_t>(index)]);
        return at < m_request.parameters.size() ? m_request.parameters[at].value : Value();
    }
    std::int64_t NowTicks() override { return m_request.nowTicks; }
    const Culture& CurrentCulture() override { return m_culture; }

 private:
    const LoadRequest& m_request;
    const std::vector<int>& m_parameters;
    const Table& m_table;
    const Culture& m_culture;
    std::vector<std::size_t> m_slots;
    std::size_t m_row = 0;
};

}  // namespace

RecordSelection::RecordSelection(const Definition& definition, const std::string& text) {
    if (Trimmed(text).empty()) {
        return;
    }
    m_formula.emplace(text);
    for (const formula::ParameterName& parameter : m_formula->Parameters()) {
        const auto found =
            std::find_if(definition.parameters.begin(), definition.parameters.end(),
                         [&](const ReportParameter& one) { return EqualNoCase(one.name, parameter.name); });
        if (found == definition.parameters.end()) {
            throw Error("Record selection formula: the report has no parameter \"" +
                        CleanText(parameter.name) + "\", at character " + std::to_string(parameter.position));
        }
        m_parameters.push_back(static_cast<int>(found - definition.parameters.begin()));
    }
    for (const DataSet& dataSet : definition.dataSets) {
        m_dataSets.push_back(dataSet.name);
    }
    for (const formula::FieldName& field : m_formula->Fields()) {
        const std::vector<const DataSet*> holders = Holders(definition, field);
        const std::string name = (field.table.empty() ? "" : field.table + ".") + field.field;
        if (holders.empty()) {
            throw Error("Record selection formula: the report has no field \"" + CleanText(name) +
                        "\", at character " + std::to_string(field.position));
        }
        std::erase_if(m_dataSets, [&](const std::string& dataSet) {
            return std::none_of(holders.begin(), holders.end(),
                                [&](const DataSet* holder) { return holder->name == dataSet; });
        });
        if (m_dataSets.empty()) {
            throw Error("Record selection formula: no data set has all the fields, \"" + CleanText(name) +
                        "\" is of another one than those before it, at character " +
                        std::to_string(field.position));
        }
    }
}

void RecordSelection::Apply(const LoadRequest& request, const DataSet& dataSet, Table& table) const {
    if (!m_formula || std::find(m_dataSets.begin(), m_dataSets.end(), dataSet.name) == m_dataSets.end()) {
        return;
    }
    Row inputs(request, m_parameters, table);
    inputs.Bind(m_formula->Fields());
    std::vector<bool> keep(table.RowCount());
    for (std::size_t row = 0; row < keep.size(); ++row) {
        inputs.SetRow(row);
        keep[row] = m_formula->Selects(inputs);
    }
    KeepRows(table, keep);
}

}  // namespace rdl::data
