// SPDX-License-Identifier: GPL-3.0-or-later
// The environment of expressions while a report is built: row of the current scope, parameters, aggregates
// over other scopes, other items. Aggregates of a group instance are computed once.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "rdl/expr/operations/accumulator.h"
#include "rdl/layout/model/report_input.h"
#include "rdl/layout/region/lookups.h"
#include "rdl/layout/region/region.h"

namespace rdl::layout {

class Evaluator final : public expr::Environment {
 public:
    // A scope and its representative row.
    struct Place {
        Scope scope;
        const Table* table = nullptr;
        std::size_t row = 0;
        bool hasRow = false;
    };
    // Restores the place on destruction.
    class Stay {
     public:
        explicit Stay(Evaluator& evaluator) : m_evaluator(evaluator), m_place(evaluator.m_place) {}
        ~Stay() { m_evaluator.m_place = m_place; }
        Stay(const Stay&) = delete;
        Stay& operator=(const Stay&) = delete;

     private:
        Evaluator& m_evaluator;
        const Place m_place;
    };

    Evaluator(const ReportInput& input, const Programs& programs);

    void Enter(const Scope& scope);
    void EnterRow(const Region& region,
                  std::uint32_t tableRow);  // a row of a region before grouping
    // The first row of a data set, outside of its regions: each of them, and each of their groups, is taken
    // as the whole data set, and stands at its first row. An empty name is the report's only data set.
    void EnterFirstRow(const std::string& dataSet);
    const Scope& Current() const { return m_place.scope; }
    const Programs& Compiled() const { return m_programs; }
    const Table& TableOf(const std::string& dataSet) const;  // empty for a data set without rows

    bool HasRow() const { return m_place.hasRow; }
    // Whether expressions have asked, since ForgetQuestions, for anything that may differ between two places
    // of a region without rows: for more than fields, parameters and aggregates of the place itself.
    bool HasAskedBeyondRows() const { return m_hasAsked; }
    void ForgetQuestions() { m_hasAsked = false; }

    // Whether the current row's data set is case-sensitive.
    bool ComparesByCase() const { return m_place.table && m_place.table->caseSensitive; }

    void SetPage(const SectionInstance::PageFacts* facts) { m_page = facts; }
    void SetCulture(const Culture& culture) { m_culture = &culture; }
    const Culture& ReportCulture() const { return *m_reportCulture; }
    // Registers an item for ReportItems.
    void Announce(const ItemPlan& item);
    // Returns an item by name without regard to case, or null.
    const ItemPlan* FindItem(const std::string& name) const;
    // Sets `before` to the previous instance within a scope (empty: the region). Returns false for the first
    // instance and for an unknown scope.
    bool PlaceBefore(const std::string& scope, Scope& before) const;

    Value Field(int slot) override {
        return m_place.hasRow ? m_place.table->At(m_place.row, static_cast<std::size_t>(slot)) : Value();
    }
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
    const Culture& CurrentCulture() override { return *m_culture; }
    std::int64_t NowTicks() override { return m_input.nowTicks; }
    void CheckBounds() override {
        if (m_input.watch) {
            m_input.watch->CheckBounds();
        }
    }

 private:
    static constexpr std::size_t MaxCached = 100'000;  // results of aggregates
    static constexpr int MaxDepth = 24;                // of aggregates within aggregates
    // The scope of an aggregate: a position in a region, or a whole data set.
    struct Target {
        Scope scope;
        const Table* whole = nullptr;
    };
    struct CacheKey {
        std::uint32_t call, region;
        std::int32_t rowGroup, columnGroup;
        std::uint32_t row, column;
        bool operator==(const CacheKey&) const = default;
    };
    struct HashKey {
        std::size_t operator()(const CacheKey& key) const;
    };
    struct Running {
        Scope start;  // the first instance and the fixed side
        std::uint32_t region = 0;
        std::uint32_t next = 0;
        expr::Accumulator sum;
    };

    bool Resolve(const std::string& name, Target& target) const;
    static bool ResolveIn(const Scope& scope, const std::string& name, Scope& found);
    static bool ResolveBeside(const Scope& scope, const std::string& name, Scope& found);
    bool ResolveTotal(const std::string& name, Scope& found) const;
    static bool LiesWithin(const Scope& scope, TableAxis axis, int group);
    bool InstanceRange(const std::string& name, TableAxis& axis, std::uint32_t& first) const;
    bool IsInnermost(const std::string& name, TableAxis& axis) const;
    bool RunningRange(const std::string& name, TableAxis& axis, std::uint32_t& first) const;
    bool PreviousGroups(const expr::AggregateCall& call, Scope& named, Scope& own) const;
    bool PreviousPlace(const expr::AggregateCall& call, Scope& before);
    ValueList KeysOf(const Scope& scope);
    bool SameWithin(const Scope& scope, std::uint32_t parent, std::uint32_t& found);
    static bool IsQuick(const expr::AggregateCall& call, const Target& target);
    Value OverTarget(const expr::AggregateCall& call, const Target& target);
    Value OverFirstRow(const expr::AggregateCall& call, const Target& target);
    void AddRows(const expr::AggregateCall& call, const Scope& scope, expr::Accumulator& sum);
    bool AddInstances(const expr::AggregateCall& call, const Scope& scope, expr::Accumulator& sum);
    bool AddNamed(const expr::AggregateCall& call, const expr::AggregateCall& inner, const Scope& scope,
                  expr::Accumulator& sum);
    bool AddInnermost(const expr::AggregateCall& call, const Scope& scope, expr::Accumulator& sum);
    template <typename Visit>
    void EachInstance(const Scope& scope, TableAxis axis, int group, const Visit& visit);
    void AddTable(const expr::AggregateCall& call, const Table& table, expr::Accumulator& sum);
    Value OverReportItems(const expr::AggregateCall& call);
    Value RunningOver(const expr::AggregateCall& call);
    Value PreviousOf(const expr::AggregateCall& call);
    Value GroupVariable(const std::string& name, bool& found);

    const ReportInput& m_input;
    const Programs& m_programs;
    Place m_place;
    const SectionInstance::PageFacts* m_page = nullptr;
    std::size_t m_nthItem = 0;  // index among the page's items of one name
    bool m_nthItemFound = false;
    const Culture* m_culture;
    const Culture* m_reportCulture;
    std::unordered_map<std::string, const ItemPlan*> m_items;  // by name in lower case
    std::unordered_map<CacheKey, Value, HashKey> m_cache;
    std::unordered_map<std::uint64_t, Running> m_running;  // by call and instance of the other hierarchy
    std::unordered_map<std::string, Value> m_variables;
    struct GroupVariableValue {
        std::uint32_t region = 0, instance = 0;
        Value value;
    };
    std::unordered_map<const Property*, GroupVariableValue> m_groupVariables;
    Lookups m_lookups;
    int m_depth = 0;  // nesting of ReportItems and aggregates
    bool m_hasAsked = false;
    bool m_isBeside = false;  // EnterFirstRow
};

}  // namespace rdl::layout
