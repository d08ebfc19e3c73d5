// SPDX-License-Identifier: GPL-3.0-or-later
// The expression language: Visual Basic expressions over Fields, Parameters, Globals and aggregates (MS-RDL,
// Expressions).
//
// Compile() turns a source into a Program once; Evaluate() runs it any number of times. Failures at run time
// are values of kind Error, shown as #Error; failures to compile raise rdl::Error with the position and the
// word.
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

class CodeFunctions;  // code_functions.h

// Resolves names in the scope of an expression.
struct CompileContext {
    virtual ~CompileContext() = default;
    // Returns the slot of a field of a data set, without regard to case; nullopt if there is none.
    virtual std::optional<int> FieldSlot(const std::string& dataSet, std::string_view field) const = 0;
    virtual std::optional<int> ParameterIndex(std::string_view name) const = 0;
    // Returns the data set of a scope's rows (the scope is a data set, region or group); nullopt if there is
    // no such scope.
    virtual std::optional<std::string> DataSetOfScope(const std::string& scope) const = 0;
    // The field names that a computed name may give: Fields(Parameters!P.Value).Value.
    virtual std::vector<std::string> FieldNames(const std::string& /*dataSet*/) const { return {}; }
    // Returns DataSets!X.CommandText, DataSources!X.Type and similar; names are in lower case. nullopt if
    // unknown.
    virtual std::optional<std::string> SourceProperty(std::string_view /*collection*/,
                                                      std::string_view /*name*/,
                                                      std::string_view /*property*/) const {
        return std::nullopt;
    }
    std::string dataSet;  // of the expression's scope; empty outside every data region
    const CodeFunctions* code = nullptr;
    // The custom assemblies that the report names, with commas between them, for errors; empty: none.
    std::string assemblies;
    int nextAggregateId = 0;  // incremented by Compile
    int nextLookupId = 0;
};

class Program {
 public:
    struct Node;
    explicit Program(std::unique_ptr<Node> root);
    ~Program();
    // Returns the result; a failure is a value of kind Error.
    Value Evaluate(Environment& environment) const;
    // Returns the slot if the program is just Fields!X.Value, else -1.
    int PlainField() const { return m_plainField; }
    // Returns the value of a constant program, else null. The program owns it.
    const Value* Constant() const { return m_constant ? &*m_constant : nullptr; }
    // Whether the program uses PageNumber, TotalPages and similar, or ReportItems.
    bool UsesPageGlobals() const { return m_usesPageGlobals; }
    bool UsesReportItems() const { return m_usesReportItems; }
    // All aggregates of the program, nested ones included. Owned by the program.
    const std::vector<const AggregateCall*>& Aggregates() const { return m_aggregates; }

 private:
    friend class Compiler;
    std::unique_ptr<Node> m_root;
    int m_plainField = -1;
    std::optional<Value> m_constant;
    bool m_usesPageGlobals = false, m_usesReportItems = false;
    std::vector<const AggregateCall*> m_aggregates;
};

// Compiles `source`, which starts with =. Raises rdl::Error: "<where>: <what>, at character <n>".
std::shared_ptr<Program> Compile(std::string_view source, const std::string& where, CompileContext& context);

}  // namespace rdl::expr
