// The expression language: Visual Basic expressions over Fields, Parameters, Globals and aggregates.
//
// Compile() turns a source into a Program once; Evaluate() runs it against an Environment any number of
// times. What goes wrong while it runs is a Value of kind Error (shown as #Error), no exception; what
// does not compile raises rdl::Error naming the position and the word.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/rdl/error.h"
#include "platform/rdl/format/format.h"
#include "platform/rdl/value.h"

namespace rdl::expr {

enum class AggregateKind : std::uint8_t {
    Sum,
    Avg,
    Count,
    CountDistinct,
    CountRows,
    Min,
    Max,
    First,
    Last,
    StDev,
    StDevP,
    Var,
    VarP,
    RunningValue,
    RowNumber,
    Previous,
    Aggregate,
};

class Program;

struct AggregateCall {
    AggregateKind kind{};
    AggregateKind running{};            // RunningValue: the function it runs
    std::shared_ptr<Program> argument;  // null for CountRows and RowNumber
    std::string scope;                  // a group, data region or data set; empty: the current scope
    bool recursive = false;
    int id = 0;  // from 0, unique within the CompileContext
};

struct LookupCall {
    enum class Form { First, Set, Multi } form{};
    std::shared_ptr<Program> source;       // evaluated in the current scope
    std::shared_ptr<Program> destination;  // evaluated for each row of the data set
    std::shared_ptr<Program> result;       // likewise
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

// What a program can reach while it runs.
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
    virtual int Level(const std::string& scope) = 0;  // of a recursive group, from 0; empty: the current
    virtual std::int64_t DataSetRowCount(const std::string& dataSet) = 0;  // DataSets!X.RowCount
    virtual const Culture& CurrentCulture() = 0;
    virtual std::int64_t NowTicks() = 0;            // the run's one moment, local time
    virtual Value* ItemValue() { return nullptr; }  // Me.Value / Value in Code and styles
    // Called every so often while expressions run; the one thing that may raise in them, to end the whole
    // run.
    virtual void Look() {}

    // What an evaluation took, in the steps of code.
    void Spend(std::int64_t steps) {
        m_untilLook -= steps;
        if (m_untilLook < 0) {
            m_untilLook = BetweenLooks;
            Look();
        }
    }

 private:
    static constexpr std::int64_t BetweenLooks = 100'000;
    std::int64_t m_untilLook = BetweenLooks;
};

class CodeLibrary;  // report-level functions; see code.h

// What names mean where an expression stands.
struct CompileContext {
    virtual ~CompileContext() = default;
    // The slot of a field of a data set, names without regard to case; nullopt when there is none.
    virtual std::optional<int> FieldSlot(const std::string& dataSet, std::string_view field) const = 0;
    virtual std::optional<int> ParameterIndex(std::string_view name) const = 0;
    // The data set that a scope's rows come from (the scope may be a data set, region or group); nullopt: no
    // such scope.
    virtual std::optional<std::string> DataSetOfScope(const std::string& scope) const = 0;
    // Names that a field worked out by an expression may have: Fields(Parameters!P.Value).Value.
    virtual std::vector<std::string> FieldNames(const std::string& /*dataSet*/) const { return {}; }
    // DataSets!X.CommandText, DataSources!X.Type and the like, both names in small letters; nullopt when it
    // is not known.
    virtual std::optional<std::string> SourceProperty(std::string_view /*collection*/,
                                                      std::string_view /*name*/,
                                                      std::string_view /*property*/) const {
        return std::nullopt;
    }
    std::string dataSet;  // of the expression itself; empty outside every data region
    const CodeLibrary* code = nullptr;
    int nextAggregateId = 0;  // counted up by Compile
    int nextLookupId = 0;
};

class Program {
 public:
    struct Node;
    explicit Program(std::unique_ptr<Node> root);
    ~Program();
    Value Evaluate(Environment& environment) const;
    // A program that is nothing but Fields!X.Value gives its slot, else -1; a constant gives itself.
    int PlainField() const { return m_plainField; }
    const Value* Constant() const { return m_constant ? &*m_constant : nullptr; }
    // Whether it uses PageNumber, TotalPages and the like, or ReportItems.
    bool UsesPageGlobals() const { return m_usesPageGlobals; }
    bool UsesReportItems() const { return m_usesReportItems; }
    // Every aggregate in it, nested arguments' own included.
    const std::vector<const AggregateCall*>& Aggregates() const { return m_aggregates; }

 private:
    friend class Compiler;
    std::unique_ptr<Node> m_root;
    int m_plainField = -1;
    std::optional<Value> m_constant;
    bool m_usesPageGlobals = false, m_usesReportItems = false;
    std::vector<const AggregateCall*> m_aggregates;
};

// `source` with its leading =. Raises rdl::Error: "<where>: <what>, at character <n>".
std::shared_ptr<Program> Compile(std::string_view source, const std::string& where, CompileContext& context);

// The language's own conversions, for others: truth for visibility, comparison for sorting and grouping
// (Null first, texts without regard to case, numbers and dates by value; different kinds by kind), equality
// keys.
bool ToBoolean(const Value& value, bool& result);
int Compare(const Value& left, const Value& right);
std::size_t Hash(const Value& value);  // equal values by Compare have equal hashes
bool ToDouble(const Value& value, const Culture& culture, double& result);

}  // namespace rdl::expr
