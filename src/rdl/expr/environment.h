// SPDX-License-Identifier: GPL-3.0-or-later
// What a program reads while it runs, and the questions it asks.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "rdl/expr/operations/accumulator.h"
#include "rdl/format/format.h"
#include "rdl/values/value.h"

namespace rdl::expr {

class Program;

struct AggregateCall {
    AggregateKind kind{};
    AggregateKind running{};            // for RunningValue: its function
    std::shared_ptr<Program> argument;  // null for CountRows and RowNumber
    std::string scope;                  // a group, data region or data set; empty: the current scope
    bool recursive = false;
    int id = 0;  // from 0, unique within the CompileContext
};

struct LookupCall {
    enum class Form { First, Set, Multi } form{};
    std::shared_ptr<Program> source;       // evaluated in the current scope
    std::shared_ptr<Program> destination;  // evaluated for each row of the data set
    std::shared_ptr<Program> result;       // evaluated for each row of the data set
    std::string dataSet;
    int id = 0;
};

enum class GlobalName : std::uint8_t {
    PageNumber,
    TotalPages,
    OverallPageNumber,
    OverallTotalPages,
    PageName,
    ExecutionTime,
    ReportName,
    ReportFolder,
    ReportServerUrl,
    RenderFormatName,
    RenderFormatIsInteractive,
    UserID,
    Language,
};

// Answers the questions of a program. Failures are values of kind Error.

class Environment {
 public:
    virtual ~Environment() = default;
    virtual Value Field(int slot) = 0;  // of the current row of the program's data set
    virtual bool FieldMissing(int slot) = 0;
    virtual Value Parameter(int index) = 0;  // a List for a multi-value parameter
    virtual Value ParameterLabel(int index) = 0;
    virtual Value Global(GlobalName name) = 0;
    virtual Value ReportItem(const std::string& name) = 0;
    virtual Value Variable(const std::string& name) = 0;
    virtual Value Aggregate(const AggregateCall& call) = 0;
    virtual Value Lookup(const LookupCall& call) = 0;
    virtual bool InScope(const std::string& scope) = 0;
    virtual int Level(
        const std::string& scope) = 0;  // depth in a recursive group, from 0; empty scope: the current one
    virtual std::int64_t DataSetRowCount(const std::string& dataSet) = 0;  // DataSets!X.RowCount
    virtual const Culture& CurrentCulture() = 0;
    virtual std::int64_t NowTicks() = 0;            // start of the run, local time
    virtual Value* ItemValue() { return nullptr; }  // Me.Value / Value in Code and styles
    // Called regularly during evaluation. It is the only call that may throw; it ends the run.
    virtual void CheckBounds() {}

    // Reports the cost of an evaluation, in steps of code.
    void Spend(std::int64_t steps) {
        m_untilCheck -= steps;
        if (m_untilCheck < 0) {
            m_untilCheck = BetweenChecks;
            CheckBounds();
        }
    }

 private:
    static constexpr std::int64_t BetweenChecks = 100'000;
    std::int64_t m_untilCheck = BetweenChecks;
};

}  // namespace rdl::expr
