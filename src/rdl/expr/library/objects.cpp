// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/library/objects.h"

#include "rdl/expr/operations/convert.h"

namespace rdl::expr {
namespace {

class CultureObject final : public ScriptObject {
 public:
    explicit CultureObject(const Culture& which) : culture(which) {}
    std::string_view TypeName() const override { return "System.Globalization.CultureInfo"; }
    Value Invoke(std::string_view member, const Call&) override {
        if (member == ".name" || member == ".tostring") {
            return Value::Text(culture.name);
        }
        return NoMember(member);
    }
    const Culture& culture;
};

Value NewCulture(const Call& call) {
    return MakeCulture(call.Text(0));
}
Value CurrentCulture(const Call& call) {
    return Value::Of(new CultureObject(call.culture()));
}
Value InvariantCulture(const Call&) {
    return MakeCulture("");
}

// What Throw gives up with is its message.
Value NewException(const Call& call) {
    return call.Has(0) ? MakeText(call.Text(0)) : Value::Text("The code of the report gave up");
}

// A member that only objects have, asked of something else.
Value OnlyOfObjects(const Call& call) {
    return call[0].IsNull() ? Value::Error("Nothing has no members")
                            : NoConversion(call[0], "an object with such a member");
}

constexpr FunctionInfo functions[] = {
    {"new.exception", 0, 2, NewException},
    {"new.applicationexception", 0, 2, NewException},
    {"new.argumentexception", 0, 2, NewException},
    {"new.invalidoperationexception", 0, 2, NewException},
    {"new.cultureinfo", 1, 2, NewCulture},
    {"cultureinfo.getcultureinfo", 1, 1, NewCulture},
    {"cultureinfo.createspecificculture", 1, 1, NewCulture},
    {"cultureinfo.currentculture", 0, 0, CurrentCulture},
    {"cultureinfo.currentuiculture", 0, 0, CurrentCulture},
    {"cultureinfo.invariantculture", 0, 0, InvariantCulture},
    {".name", 1, 1, OnlyOfObjects},
    {".groups", 1, 2, OnlyOfObjects},
    {".success", 1, 1, OnlyOfObjects},
    {".index", 1, 1, OnlyOfObjects},
    {".key", 1, 1, OnlyOfObjects},
    {".keys", 1, 1, OnlyOfObjects, false, true},
    {".values", 1, 1, OnlyOfObjects, false, true},
    {".containskey", 2, 2, OnlyOfObjects},
    {".containsvalue", 2, 2, OnlyOfObjects, false, true},
    {".clear", 1, 1, OnlyOfObjects},
    {".addrange", 2, 2, OnlyOfObjects},
    {".removeat", 2, 2, OnlyOfObjects, false, true},
    {".sort", 1, 1, OnlyOfObjects, false, true},
    {".reverse", 1, 1, OnlyOfObjects, false, true},
    {".toarray", 1, 1, OnlyOfObjects, false, true},
    {".append", 2, 2, OnlyOfObjects},
    {".appendline", 1, 2, OnlyOfObjects},
    {".appendformat", 2, Any, OnlyOfObjects},
    {".push", 2, 2, OnlyOfObjects},
    {".pop", 1, 1, OnlyOfObjects},
    {".peek", 1, 1, OnlyOfObjects},
    {".enqueue", 2, 2, OnlyOfObjects},
    {".dequeue", 1, 1, OnlyOfObjects},
};
static_assert(NamesDiffer(functions));

}  // namespace

Value ScriptObject::NoMember(std::string_view member) const {
    return Value::Error(std::string(TypeName()) + " has no such member \"" + std::string(member.substr(1)) +
                        "\"");
}

Value ScriptObject::Element(const Value&, const Culture&) const {
    return Value::Error(std::string(TypeName()) + " has no elements");
}

Value ScriptObject::Store(std::string_view, const Value&, const Value&, const Culture&) {
    return Value::Error(std::string(TypeName()) + " cannot be changed so");
}

Value ScriptObject::Elements() const {
    return Value::Error(std::string(TypeName()) + " has no elements");
}

std::size_t ScriptObject::WeightOf(const Value& value) {
    return sizeof(Value) * 3 + (value.IsText() ? value.AsText().size() : 0);
}

Value ScriptObject::MayHold(const Value& value) const {
    if (value.kind() == Kind::Object || value.kind() == Kind::List) {
        return Value::Error(std::string(TypeName()) + " can hold neither lists nor objects");
    }
    if (Weight() + WeightOf(value) > MaxObject) {
        return Value::Error(std::string(TypeName()) + " becomes too large");
    }
    return value.IsError() ? value : Value();
}

Value MakeCulture(std::string_view name) {
    return Value::Of(new CultureObject(FindCulture(name)));
}

const Culture& CultureOf(const Call& call, int index) {
    if (call[index].kind() == Kind::Object) {
        if (const auto* culture = dynamic_cast<const CultureObject*>(&call[index].AsObject())) {
            return culture->culture;
        }
    }
    return call.culture();
}

std::span<const FunctionInfo> ObjectFunctions() {
    return functions;
}

}  // namespace rdl::expr
