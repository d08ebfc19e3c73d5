// The functions of the language by name: plain ones (left), those of a class (math.abs) and members of
// values, whose first argument is the value itself (.padleft).
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "rdl/expr/environment.h"

namespace rdl::expr {

// Arguments of a call. One that was left out is Null, as are those behind the last one given.
class Call {
 public:
    Call(const Value* values, int valueCount, Environment& where)
        : environment(where), m_values(values), m_count(valueCount) {}
    int count() const { return m_count; }
    const Value& operator[](int index) const { return index < m_count ? m_values[index] : m_nothing; }
    bool Has(int index) const { return index < m_count && !m_values[index].IsNull(); }
    const Culture& culture() const { return environment.CurrentCulture(); }
    std::string Text(int index) const;
    // False with the error in `error`, which the function gives back.
    bool Number(int index, double& number) const;
    bool Integer(int index, std::int64_t& number) const;
    bool Date(int index, std::int64_t& ticks) const;
    bool Truth(int index, bool& truth) const;

    Environment& environment;
    mutable Value error;

 private:
    const Value* m_values;
    int m_count;
    Value m_nothing;
};

using Function = Value (*)(const Call& call);

struct FunctionInfo {
    std::string_view name;  // small letters; of a class "math.abs", a member ".length"
    int least, most;        // arguments
    Function function;
    bool takesErrors = false;  // otherwise an argument that is an error is the result
    bool goesThrough = false;  // a member whose work grows with the size of its object
};

inline constexpr int Any = 4000;  // arguments without limit but that of the source

const FunctionInfo* FindFunction(std::string_view name);
// vbCrLf, DateFormat.LongDate ... by small letters; null when there is none.
const Value* FindConstant(std::string_view name);

// The tables that FindFunction looks into, one for each subject.
std::span<const FunctionInfo> TextFunctions();
std::span<const FunctionInfo> SearchFunctions();
std::span<const FunctionInfo> FormatFunctions();
std::span<const FunctionInfo> DateFunctions();
std::span<const FunctionInfo> DateTypeFunctions();
std::span<const FunctionInfo> MathFunctions();
std::span<const FunctionInfo> ConvertFunctions();
std::span<const FunctionInfo> FinancialFunctions();
std::span<const FunctionInfo> TextMembers();
std::span<const FunctionInfo> DateMembers();
std::span<const FunctionInfo> ListFunctions();
std::span<const FunctionInfo> InspectFunctions();
std::span<const FunctionInfo> TypeFunctions();
std::span<const FunctionInfo> PatternFunctions();
std::span<const FunctionInfo> EscapeFunctions();

}  // namespace rdl::expr
