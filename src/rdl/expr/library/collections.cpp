// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/library/collections.h"

#include <algorithm>
#include <deque>
#include <string>

#include "rdl/expr/library/composite.h"
#include "rdl/expr/library/dictionary.h"
#include "rdl/expr/library/objects.h"
#include "rdl/expr/operations/compare.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

Value Outside() {
    return Value::Error("An index lies outside its list");
}

class StringBuilder final : public ScriptObject {
 public:
    explicit StringBuilder(std::string text) : m_text(std::move(text)) {}
    std::string_view TypeName() const override { return "System.Text.StringBuilder"; }
    std::size_t Weight() const override { return m_text.size(); }

    Value Invoke(std::string_view member, const Call& call) override {
        if (member == ".tostring") {
            return MakeText(m_text);
        }
        if (member == ".length") {
            return Value::Integer(static_cast<std::int64_t>(CharacterCount(m_text)));
        }
        if (member == ".append") {
            return Grow(call.Text(1));
        }
        if (member == ".appendline") {
            return Grow(call.Text(1) + "\r\n");
        }
        if (member == ".appendformat") {
            ValueList values;
            for (int i = 2; i < call.count(); ++i) {
                values.push_back(call[i]);
            }
            const Value text = FormatComposite(call.Text(1), values, call.culture());
            return text.IsError() ? text : Grow(text.AsText());
        }
        if (member == ".clear") {
            m_text.clear();
            return Value::Of(this);
        }
        return Edit(member, call);
    }

    Value Store(std::string_view member, const Value&, const Value& value, const Culture& culture) override {
        std::int64_t length = 0;
        if (member != ".length" || !ToInteger(value, culture, length) || length < 0 ||
            length > static_cast<std::int64_t>(CharacterCount(m_text))) {
            return Value::Error("Only the length of a StringBuilder can be set, to less than it is");
        }
        m_text.resize(ByteIndex(m_text, static_cast<std::size_t>(length)));
        return {};
    }

 private:
    Value Grow(std::string_view more) {
        if (m_text.size() + more.size() > MaxObject) {
            return Value::Error("A StringBuilder becomes too large");
        }
        m_text += more;
        return Value::Of(this);
    }

    // What a text has as a member, done to the text inside.
    Value Edit(std::string_view member, const Call& call) {
        if (member != ".insert" && member != ".remove" && member != ".replace" && member != ".chars") {
            return NoMember(member);
        }
        ValueList arguments = {Value::Text(m_text)};
        for (int i = 1; i < call.count(); ++i) {
            arguments.push_back(call[i]);
        }
        Value text = FindFunction(member)->function(
            Call(arguments.data(), static_cast<int>(arguments.size()), call.environment));
        if (text.IsError() || member == ".chars") {
            return text;
        }
        m_text.clear();
        return Grow(text.AsText());
    }

    std::string m_text;
};

// ArrayList, List(Of T), Stack and Queue: a row of values, taken from one end or the other.
class Sequence final : public ScriptObject {
 public:
    explicit Sequence(const char* type) : m_type(type) {}
    std::string_view TypeName() const override { return m_type; }
    std::size_t Weight() const override { return m_weight; }
    Value Elements() const override {
        const bool stack = m_type == std::string_view("System.Collections.Stack");
        return Value::List(stack ? ValueList(m_items.rbegin(), m_items.rend())
                                 : ValueList(m_items.begin(), m_items.end()));
    }

    Value Invoke(std::string_view member, const Call& call) override {
        if (member == ".count") {
            return Value::Integer(static_cast<std::int64_t>(m_items.size()));
        }
        if (member == ".add" || member == ".push" || member == ".enqueue") {
            return Insert(m_items.size(), call[1]);
        }
        if (member == ".pop" || member == ".dequeue" || member == ".peek") {
            return Next(member);
        }
        if (member == ".item") {
            return Element(call[1], call.culture());
        }
        if (member == ".clear") {
            m_items.clear();
            m_weight = 0;
            return {};
        }
        if (member == ".addrange") {
            return AddAll(call[1]);
        }
        return member == ".toarray" ? Elements() : Change(member, call);
    }

    Value Element(const Value& index, const Culture& culture) const override {
        std::int64_t place = 0;
        return ToInteger(index, culture, place) && place >= 0 &&
                       static_cast<std::size_t>(place) < m_items.size()
                   ? m_items[static_cast<std::size_t>(place)]
                   : Outside();
    }

    Value Store(std::string_view member, const Value& index, const Value& value,
                const Culture& culture) override {
        std::int64_t place = 0;
        if (member != ".item") {
            return ScriptObject::Store(member, index, value, culture);
        }
        if (!ToInteger(index, culture, place) || place < 0 ||
            static_cast<std::size_t>(place) >= m_items.size()) {
            return Outside();
        }
        if (Value fault = MayHold(value); fault.IsError()) {
            return fault;
        }
        Value& item = m_items[static_cast<std::size_t>(place)];
        m_weight = m_weight - WeightOf(item) + WeightOf(value);
        item = value;
        return {};
    }

    Value AddAll(const Value& values) {
        const Value list = values.kind() == Kind::Object ? AsScriptObject(values).Elements() : values;
        if (list.kind() != Kind::List) {
            return list.IsError() ? list : NoConversion(list, "a list");
        }
        for (const Value& item : list.AsList()) {
            if (Value fault = Insert(m_items.size(), item); fault.IsError()) {
                return fault;
            }
        }
        return {};
    }

 private:
    // The place where the value went.
    Value Insert(std::size_t place, const Value& value) {
        if (Value fault = MayHold(value); fault.IsError()) {
            return fault;
        }
        m_weight += WeightOf(value);
        m_items.insert(m_items.begin() + static_cast<std::ptrdiff_t>(place), value);
        return Value::Integer(static_cast<std::int64_t>(place));
    }

    Value RemoveAt(std::size_t place) {
        m_weight -= WeightOf(m_items[place]);
        m_items.erase(m_items.begin() + static_cast<std::ptrdiff_t>(place));
        return {};
    }

    Value Next(std::string_view member) {
        if (m_items.empty()) {
            return Value::Error(std::string(m_type) + " is empty");
        }
        const bool last = member == ".pop" || (member == ".peek" && m_type.ends_with("Stack"));
        const std::size_t place = last ? m_items.size() - 1 : 0;
        Value item = m_items[place];
        if (member != ".peek") {
            RemoveAt(place);
        }
        return item;
    }

    Value Change(std::string_view member, const Call& call) {
        const auto found = std::find_if(m_items.begin(), m_items.end(),
                                        [&](const Value& item) { return SameKey()(item, call[1]); });
        const bool known = call.count() > 1 && found != m_items.end();
        const auto place = static_cast<std::size_t>(found - m_items.begin());
        if (member == ".contains") {
            return Value::Boolean(known);
        }
        if (member == ".indexof") {
            return Value::Integer(known ? static_cast<std::int64_t>(place) : -1);
        }
        if (member == ".remove") {
            return known ? RemoveAt(place) : Value();
        }
        if (member == ".sort" || member == ".reverse") {
            if (member == ".sort") {
                std::stable_sort(m_items.begin(), m_items.end(),
                                 [](const Value& a, const Value& b) { return Compare(a, b) < 0; });
            } else {
                std::reverse(m_items.begin(), m_items.end());
            }
            return {};
        }
        if (member != ".insert" && member != ".removeat") {
            return NoMember(member);
        }
        std::int64_t at = 0;
        if (!call.Integer(1, at)) {
            return call.error;
        }
        const bool insert = member == ".insert";
        if (at < 0 || static_cast<std::size_t>(at) > m_items.size() - (insert || m_items.empty() ? 0 : 1) ||
            (!insert && m_items.empty())) {
            return Outside();
        }
        return insert ? Insert(static_cast<std::size_t>(at), call[2])
                      : RemoveAt(static_cast<std::size_t>(at));
    }

    std::string_view m_type;
    std::deque<Value> m_items;
    std::size_t m_weight = 0;
};

Value NewBuilder(const Call& call) {
    return Value::Of(new StringBuilder(call[0].IsText() ? call.Text(0) : ""));
}

const char* const ListType = "System.Collections.ArrayList";
const char* const StackType = "System.Collections.Stack";
const char* const QueueType = "System.Collections.Queue";

// A number is a capacity, a list the first values.
template <const char* const& Type>
Value NewSequence(const Call& call) {
    auto* sequence = new Sequence(Type);
    Value made = Value::Of(sequence);
    const bool filled = call[0].kind() == Kind::List || call[0].kind() == Kind::Object;
    const Value fault = filled ? sequence->AddAll(call[0]) : Value();
    return fault.IsError() ? fault : made;
}

constexpr FunctionInfo functions[] = {
    {"new.stringbuilder", 0, 2, NewBuilder},
    {"new.arraylist", 0, 1, NewSequence<ListType>},
    {"new.list", 0, 1, NewSequence<ListType>},
    {"new.stack", 0, 1, NewSequence<StackType>},
    {"new.queue", 0, 1, NewSequence<QueueType>},
    {"new.hashtable", 0, 1, NewDictionary<false, false>},
    {"new.dictionary", 0, 1, NewDictionary<true, false>},
    {"new.sortedlist", 0, 1, NewDictionary<false, true>},
    {"new.sorteddictionary", 0, 1, NewDictionary<true, true>},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> CollectionFunctions() {
    return functions;
}

}  // namespace rdl::expr
