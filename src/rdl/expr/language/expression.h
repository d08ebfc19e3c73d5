// The expression language: Visual Basic expressions over Fields, Parameters, Globals and aggregates.
//
// Compile() turns a source into a Program once; Evaluate() runs it against an Environment any number of
// times. What goes wrong while it runs is a Value of kind Error (shown as #Error), no exception; what
// does not compile raises rdl::Error naming the position and the word.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/expr/environment.h"
#include "rdl/values/error.h"
#include "rdl/values/value.h"

namespace rdl::expr {

class CodeFunctions;  // see code_functions.h

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
    const CodeFunctions* code = nullptr;
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

}  // namespace rdl::expr
