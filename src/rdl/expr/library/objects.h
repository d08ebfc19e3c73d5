// What report-level code makes with New, and what members of it do. Objects hold plain values only, never
// other objects or lists: so nothing can hold itself.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "rdl/expr/library/functions.h"

namespace rdl::expr {

// The most that one object may hold, in bytes as Weight() counts them.
inline constexpr std::size_t MaxObject = 1u << 20;

class ScriptObject : public Object {
 public:
    // A member by its name as FindFunction has it (".add"); call[0] is the object itself.
    virtual Value Invoke(std::string_view member, const Call& call) = 0;
    // object(index)
    virtual Value Element(const Value& index, const Culture& culture) const;
    // object(index) = value; an error, or Null when it is done. `index` Null: object.member = value.
    virtual Value Store(std::string_view member, const Value& index, const Value& value,
                        const Culture& culture);
    // What For Each goes over.
    virtual Value Elements() const;
    virtual std::size_t Weight() const { return 0; }

 protected:
    Value NoMember(std::string_view member) const;
    // An error when a value may not be held, or when it would become too much; else Null.
    Value MayHold(const Value& value) const;
    static std::size_t WeightOf(const Value& value);
};

inline ScriptObject& AsScriptObject(const Value& value) {
    return static_cast<ScriptObject&>(value.AsObject());
}

// A culture as an argument: System.Globalization.CultureInfo.
Value MakeCulture(std::string_view name);
// That of the argument when it is a culture, else the report's own.
const Culture& CultureOf(const Call& call, int index);

// Functions that objects are made with, and the members that only they have.
std::span<const FunctionInfo> ObjectFunctions();

}  // namespace rdl::expr
