// SPDX-License-Identifier: GPL-3.0-or-later
// Objects that report-level code creates with New, and their members. They hold plain values only, neither
// objects nor lists: so there are no reference cycles.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "rdl/expr/library/functions.h"

namespace rdl::expr {

// Maximum size of an object, in bytes as Weight() counts them.
inline constexpr std::size_t MaxObject = 1u << 20;

class ScriptObject : public Object {
 public:
    // Calls a member; `member` has the form that FindFunction takes (".add"), call[0] is the object itself.
    virtual Value Invoke(std::string_view member, const Call& call) = 0;
    // object(index)
    virtual Value Element(const Value& index, const Culture& culture) const;
    // object(index) = value, or object.member = value if `index` is Null. Returns an error, or Null on
    // success.
    virtual Value Store(std::string_view member, const Value& index, const Value& value,
                        const Culture& culture);
    // Returns the values that For Each visits.
    virtual Value Elements() const;
    virtual std::size_t Weight() const { return 0; }

 protected:
    Value NoMember(std::string_view member) const;
    // Returns an error if the object must not hold `value` or would become too large, else Null.
    Value MayHold(const Value& value) const;
    static std::size_t WeightOf(const Value& value);
};

inline ScriptObject& AsScriptObject(const Value& value) {
    return static_cast<ScriptObject&>(value.AsObject());
}

// Creates a System.Globalization.CultureInfo, used as an argument.
Value MakeCulture(std::string_view name);
// Returns the culture of the argument if it is one, else the report's.
const Culture& CultureOf(const Call& call, int index);

// Constructors, and the members that only objects have.
std::span<const FunctionInfo> ObjectFunctions();

}  // namespace rdl::expr
