// SPDX-License-Identifier: GPL-3.0-or-later
// Values by key: Hashtable, Dictionary(Of K, V), SortedList, SortedDictionary.
#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "rdl/expr/library/objects.h"
#include "rdl/expr/operations/compare.h"

namespace rdl::expr {

// Keys are case-sensitive, unlike sorting and grouping.
struct SameKey {
    bool operator()(const Value& left, const Value& right) const {
        return Compare(left, right) == 0 && (!left.IsText() || left.AsText() == right.AsText());
    }
};
struct HashKey {
    std::size_t operator()(const Value& key) const { return Hash(key); }
};

class DictionaryObject final : public ScriptObject {
 public:
    // `strict`: reading a missing key is an error; otherwise it gives Nothing. `sorted`: iteration follows
    // the order of the keys; otherwise the order of insertion.
    DictionaryObject(bool strict, bool sorted) : m_strict(strict), m_sorted(sorted) {}
    std::string_view TypeName() const override;
    std::size_t Weight() const override { return m_weight; }
    Value Invoke(std::string_view member, const Call& call) override;
    Value Element(const Value& index, const Culture& culture) const override;
    Value Store(std::string_view member, const Value& index, const Value& value,
                const Culture& culture) override;
    Value Elements() const override;

 private:
    using Pair = std::pair<Value, Value>;
    std::vector<Pair> InOrder() const;
    enum class Known { Replace, Refuse };
    Value Set(const Value& key, const Value& value, Known known);
    void Remove(const Value& key);

    bool m_strict, m_sorted;
    std::vector<Pair> m_pairs;
    std::unordered_map<Value, std::size_t, HashKey, SameKey> m_places;
    std::size_t m_weight = 0;
};

template <bool Strict, bool Sorted>
Value NewDictionary(const Call&) {
    return Value::Of(new DictionaryObject(Strict, Sorted));
}

}  // namespace rdl::expr
