// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/library/dictionary.h"

#include <algorithm>
#include <string>

namespace rdl::expr {
namespace {

// What For Each over a dictionary gives: .Key and .Value.
class PairObject final : public ScriptObject {
 public:
    PairObject(Value key, Value value) : m_key(std::move(key)), m_value(std::move(value)) {}
    std::string_view TypeName() const override { return "System.Collections.DictionaryEntry"; }
    Value Invoke(std::string_view member, const Call&) override {
        return member == ".key" ? m_key : member == ".value" ? m_value : NoMember(member);
    }

 private:
    Value m_key, m_value;
};

}  // namespace

std::string_view DictionaryObject::TypeName() const {
    return m_strict   ? "System.Collections.Generic.Dictionary"
           : m_sorted ? "System.Collections.SortedList"
                      : "System.Collections.Hashtable";
}

Value DictionaryObject::Set(const Value& key, const Value& value, Known known) {
    if (key.IsNull()) {
        return Value::Error("Nothing cannot be a key");
    }
    for (const Value* part : {&key, &value}) {
        if (Value fault = MayHold(*part); fault.IsError()) {
            return fault;
        }
    }
    const auto [place, added] = m_places.try_emplace(key, m_pairs.size());
    if (added) {
        m_pairs.emplace_back(key, value);
        m_weight += WeightOf(key) + WeightOf(value);
        return {};
    }
    if (known == Known::Refuse) {
        return Value::Error("The key is there already");
    }
    Value& held = m_pairs[place->second].second;
    m_weight = m_weight - WeightOf(held) + WeightOf(value);
    held = value;
    return {};
}

void DictionaryObject::Remove(const Value& key) {
    const auto found = m_places.find(key);
    if (found == m_places.end()) {
        return;
    }
    const std::size_t place = found->second;
    m_weight -= WeightOf(m_pairs[place].first) + WeightOf(m_pairs[place].second);
    m_places.erase(found);
    m_pairs.erase(m_pairs.begin() + static_cast<std::ptrdiff_t>(place));
    for (auto& [other, index] : m_places) {
        index -= index > place ? 1 : 0;
    }
}

std::vector<DictionaryObject::Pair> DictionaryObject::InOrder() const {
    std::vector<Pair> pairs = m_pairs;
    if (m_sorted) {
        std::stable_sort(pairs.begin(), pairs.end(), [](const Pair& left, const Pair& right) {
            return Compare(left.first, right.first) < 0;
        });
    }
    return pairs;
}

Value DictionaryObject::Elements() const {
    ValueList pairs;
    for (Pair& pair : InOrder()) {
        pairs.push_back(Value::Of(new PairObject(std::move(pair.first), std::move(pair.second))));
    }
    return Value::List(std::move(pairs));
}

Value DictionaryObject::Element(const Value& index, const Culture&) const {
    const auto found = m_places.find(index);
    if (found != m_places.end()) {
        return m_pairs[found->second].second;
    }
    return m_strict ? Value::Error("The key is not there") : Value();
}

Value DictionaryObject::Store(std::string_view member, const Value& index, const Value& value,
                              const Culture& culture) {
    if (member != ".item") {
        return ScriptObject::Store(member, index, value, culture);
    }
    return Set(index, value, Known::Replace);
}

Value DictionaryObject::Invoke(std::string_view member, const Call& call) {
    if (member == ".count") {
        return Value::Integer(static_cast<std::int64_t>(m_pairs.size()));
    }
    if (member == ".add" && call.count() == 3) {
        return Set(call[1], call[2], Known::Refuse);
    }
    if (member == ".item") {
        return Element(call[1], call.culture());
    }
    if (member == ".containskey" || member == ".contains") {
        return Value::Boolean(m_places.count(call[1]) != 0);
    }
    if (member == ".containsvalue") {
        return Value::Boolean(std::any_of(m_pairs.begin(), m_pairs.end(),
                                          [&](const Pair& pair) { return SameKey()(pair.second, call[1]); }));
    }
    if (member == ".remove") {
        Remove(call[1]);
        return {};
    }
    if (member == ".clear") {
        m_pairs.clear();
        m_places.clear();
        m_weight = 0;
        return {};
    }
    if (member == ".keys" || member == ".values") {
        ValueList values;
        for (const Pair& pair : InOrder()) {
            values.push_back(member == ".keys" ? pair.first : pair.second);
        }
        return Value::List(std::move(values));
    }
    return NoMember(member);
}

}  // namespace rdl::expr
