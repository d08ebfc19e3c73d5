// SPDX-License-Identifier: GPL-3.0-or-later
// The names that the language itself knows, all in lower case. Those of its library are in
// rdl/expr/library/functions.h.
#pragma once

#include <cstdint>
#include <string_view>

#include "rdl/expr/environment.h"
#include "rdl/values/named.h"

namespace rdl::expr {

struct NamedAggregate {
    std::string_view name;
    AggregateKind kind;
};
inline constexpr NamedAggregate AggregateNames[] = {
    {"sum", AggregateKind::Sum},
    {"avg", AggregateKind::Avg},
    {"count", AggregateKind::Count},
    {"countdistinct", AggregateKind::CountDistinct},
    {"countrows", AggregateKind::CountRows},
    {"min", AggregateKind::Min},
    {"max", AggregateKind::Max},
    {"first", AggregateKind::First},
    {"last", AggregateKind::Last},
    {"stdev", AggregateKind::StDev},
    {"stdevp", AggregateKind::StDevP},
    {"var", AggregateKind::Var},
    {"varp", AggregateKind::VarP},
    {"runningvalue", AggregateKind::RunningValue},
    {"rownumber", AggregateKind::RowNumber},
    {"previous", AggregateKind::Previous},
    {"aggregate", AggregateKind::Aggregate},
};
static_assert(NamesDiffer(AggregateNames));

// Calls whose arguments are not all values: a scope, a type, or values of which only one is evaluated.
enum class SpecialForm : std::uint8_t {
    // These three read another data set.
    Lookup,
    LookupSet,
    MultiLookup,
    InScope,
    Level,
    Cast,
    Condition,
    Switch,
    Choose,
    TypeOf,
};
struct NamedForm {
    std::string_view name;
    SpecialForm form;
};
inline constexpr NamedForm SpecialForms[] = {
    {"lookup", SpecialForm::Lookup},
    {"lookupset", SpecialForm::LookupSet},
    {"multilookup", SpecialForm::MultiLookup},
    {"inscope", SpecialForm::InScope},
    {"level", SpecialForm::Level},
    {"ctype", SpecialForm::Cast},
    {"directcast", SpecialForm::Cast},
    {"trycast", SpecialForm::Cast},
    {"iif", SpecialForm::Condition},
    {"if", SpecialForm::Condition},
    {"switch", SpecialForm::Switch},
    {"choose", SpecialForm::Choose},
    {"typeof", SpecialForm::TypeOf},
};
static_assert(NamesDiffer(SpecialForms));
constexpr bool ReadsADataSet(SpecialForm form) {
    return form <= SpecialForm::MultiLookup;
}

// The members of Globals, and from UserID on those of User.
struct NamedGlobal {
    std::string_view name;
    GlobalName global;
};
inline constexpr NamedGlobal GlobalNames[] = {
    {"pagenumber", GlobalName::PageNumber},
    {"totalpages", GlobalName::TotalPages},
    {"overallpagenumber", GlobalName::OverallPageNumber},
    {"overalltotalpages", GlobalName::OverallTotalPages},
    {"pagename", GlobalName::PageName},
    {"executiontime", GlobalName::ExecutionTime},
    {"reportname", GlobalName::ReportName},
    {"reportfolder", GlobalName::ReportFolder},
    {"reportserverurl", GlobalName::ReportServerUrl},
    {"renderformat", GlobalName::RenderFormatName},
    {"userid", GlobalName::UserID},
    {"language", GlobalName::Language},
};
static_assert(NamesDiffer(GlobalNames));
constexpr bool IsOfUser(GlobalName global) {
    return global >= GlobalName::UserID;
}

// The types, each with the library's function that converts to it; empty for those that keep a value as it
// is.
struct NamedType {
    std::string_view name, function;
};
inline constexpr NamedType TypeNames[] = {
    {"integer", "cint"},
    {"int32", "cint"},
    {"long", "clng"},
    {"int64", "clng"},
    {"short", "cshort"},
    {"int16", "cshort"},
    {"byte", "cbyte"},
    {"double", "cdbl"},
    {"single", "csng"},
    {"decimal", "cdec"},
    {"string", "cstr"},
    {"boolean", "cbool"},
    {"date", "cdate"},
    {"datetime", "cdate"},
    {"char", "cchar"},
    {"uinteger", "cuint"},
    {"uint32", "cuint"},
    {"ulong", "culng"},
    {"uint64", "culng"},
    {"sbyte", "csbyte"},
    {"ushort", "cushort"},
    {"uint16", "cushort"},
    {"object", ""},
    {"timespan", ""},
    {"array", ""},
    {"variant", ""},
    {"stringbuilder", ""},
    {"arraylist", ""},
    {"list", ""},
    {"stack", ""},
    {"queue", ""},
    {"hashtable", ""},
    {"dictionary", ""},
    {"sortedlist", ""},
    {"sorteddictionary", ""},
    {"dictionaryentry", ""},
    {"keyvaluepair", ""},
    {"cultureinfo", ""},
    {"match", ""},
    {"ienumerable", ""},
    {"ilist", ""},
    {"idictionary", ""},
    {"exception", ""},
    {"parameter", ""},
    {"field", ""},
    {"reportitem", ""},
};
static_assert(NamesDiffer(TypeNames));

}  // namespace rdl::expr
