// SPDX-License-Identifier: GPL-3.0-or-later
// Expressions of data sets: fields of the row, parameters, globals. Report items, groups and pages do not
// exist yet; reading one gives an error value.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/data/load.h"
#include "rdl/expr/code/code.h"
#include "rdl/expr/language/expression.h"

namespace rdl::data {

// Resolves names in the expressions of one data set, or outside of data sets (connect strings, query
// parameters). It must outlive the programs compiled with it.
class DataContext : public expr::CompileContext {
 public:
    // `table` may be null or still without rows; only its field names are read.
    DataContext(const Definition& definition, const std::string& dataSetName, const Table* table);
    std::optional<int> FieldSlot(const std::string& set, std::string_view field) const override;
    std::optional<int> ParameterIndex(std::string_view name) const override;
    std::optional<std::string> DataSetOfScope(const std::string& scope) const override;
    std::vector<std::string> FieldNames(const std::string& set) const override;

 private:
    const Definition& m_definition;
    const Table* m_table;
    std::unique_ptr<expr::CodeLibrary> m_library;  // of the report's own code
};

class RowEnvironment : public expr::Environment {
 public:
    // `table` may be null: there are no fields then.
    RowEnvironment(const LoadRequest& request, Table* table);

    void SetRow(std::size_t row);
    // Sets the program of a calculated field. It is evaluated on first use in a row, so that fields may refer
    // to each other in any order.
    void SetCalculation(std::size_t slot, std::shared_ptr<expr::Program> program);
    // Evaluates and stores every calculated field of the current row.
    void CalculateRow();

    Value Field(int slot) override;
    bool FieldMissing(int slot) override;
    Value Parameter(int index) override;
    Value ParameterLabel(int index) override;
    Value Global(expr::GlobalName name) override;
    Value ReportItem(const std::string& name) override;
    Value Variable(const std::string& name) override;
    Value Aggregate(const expr::AggregateCall& call) override;
    Value Lookup(const expr::LookupCall& call) override;
    bool InScope(const std::string& scope) override;
    int Level(const std::string& scope) override;
    std::int64_t DataSetRowCount(const std::string& dataSet) override;
    const Culture& CurrentCulture() override { return m_culture; }
    std::int64_t NowTicks() override { return m_request.nowTicks; }
    void CheckBounds() override { m_request.CheckBounds(); }

 private:
    enum class State : unsigned char { Stored, Open, Busy };
    Value& Cell(std::size_t slot);
    Value NotYetKnown(std::size_t parameter) const;

    const LoadRequest& m_request;
    const Culture& m_culture;
    Table* m_table;
    std::size_t m_row = 0;
    int m_depth = 0;
    bool m_aggregating = false;
    std::map<std::size_t, std::shared_ptr<expr::Program>> m_calculations;
    std::vector<State> m_states;  // by slot, for the current row
    std::map<int, Value> m_aggregates;
};

// Evaluates an expression outside of every data set; a constant gives a Text.
Value EvaluateAlone(const LoadRequest& request, const Expr& source);

}  // namespace rdl::data
