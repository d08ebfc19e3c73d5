// SPDX-License-Identifier: GPL-3.0-or-later
// A value: the content of a data field or the result of an expression. 16 bytes, so that a million rows fit
// into memory. Texts and lists are shared and immutable, with reference counts that are not thread-safe.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "rdl/values/decimal.h"

namespace rdl {

enum class Kind : std::uint8_t {
    Null,
    Boolean,
    Integer,   // 64 bits
    Real,      // double
    Decimal,   // 28 digits, exact
    DateTime,  // ticks of 100 ns since 0001-01-01 00:00, no zone
    TimeSpan,  // ticks of 100 ns
    Text,      // UTF-8
    Bytes,     // for example an image from a database
    List,      // several values: a multi-value parameter, LookupSet, Split
    Error,     // the text says why; shown as #Error
    Object,    // mutable, made by report-level code: a dictionary, a growing list
};

class Value;
using ValueList = std::vector<Value>;

// The only mutable kind of value: all copies of a Value share the object.
class Object {
 public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;
    virtual std::string_view TypeName() const = 0;  // the type's name in the report language

 private:
    friend class Value;
    std::uint32_t m_references = 0;
};

inline constexpr std::int64_t TicksPerSecond = 10'000'000;
inline constexpr std::int64_t TicksPerDay = 864'000'000'000;

class Value {
 public:
    Value() = default;
    static Value Boolean(bool b) { return Plain(Kind::Boolean, b ? 1 : 0); }
    static Value Integer(std::int64_t n) { return Plain(Kind::Integer, n); }
    static Value Real(double d) {
        Value v;
        v.m_tail.kind = Kind::Real;
        v.m_data.real = d;
        return v;
    }
    static Value Decimal(const rdl::Decimal& number) {
        const rdl::UInt128 digits = number.Coefficient();
        Value v;
        v.m_tail.kind = Kind::Decimal;
        v.m_data.integer = static_cast<std::int64_t>(static_cast<std::uint64_t>(digits));
        v.m_tail.high = static_cast<std::uint32_t>(digits >> 64);
        v.m_tail.scale = static_cast<std::uint8_t>(number.Scale());
        v.m_tail.isNegative = number.IsNegative();
        return v;
    }
    static Value DateTime(std::int64_t ticks) { return Plain(Kind::DateTime, ticks); }
    static Value TimeSpan(std::int64_t ticks) { return Plain(Kind::TimeSpan, ticks); }
    static Value Text(std::string_view text) { return Shared(Kind::Text, text); }
    static Value Bytes(std::string_view bytes) { return Shared(Kind::Bytes, bytes); }
    static Value Error(std::string_view why) { return Shared(Kind::Error, why); }
    static Value List(ValueList values);
    static Value Of(Object* object) {  // takes ownership of `object`
        Value v;
        v.m_tail.kind = Kind::Object;
        v.m_data.object = object;
        ++object->m_references;
        return v;
    }

    Value(const Value& other) : m_data(other.m_data), m_tail(other.m_tail) { Retain(); }
    Value(Value&& other) noexcept : m_data(other.m_data), m_tail(other.m_tail) {
        other.m_tail.kind = Kind::Null;
    }
    Value& operator=(const Value& other) {
        Value copy(other);
        swap(copy);
        return *this;
    }
    Value& operator=(Value&& other) noexcept {
        swap(other);
        return *this;
    }
    ~Value() { Release(); }
    void swap(Value& other) noexcept {
        std::swap(m_data, other.m_data);
        std::swap(m_tail, other.m_tail);
    }

    Kind kind() const { return m_tail.kind; }
    bool IsNull() const { return m_tail.kind == Kind::Null; }
    bool IsError() const { return m_tail.kind == Kind::Error; }
    bool IsNumber() const { return kind() >= Kind::Integer && kind() <= Kind::Decimal; }
    bool IsText() const { return m_tail.kind == Kind::Text; }

    // Valid only for a value of that kind.
    bool AsBoolean() const { return m_data.integer != 0; }
    std::int64_t AsInteger() const { return m_data.integer; }
    double AsReal() const { return m_data.real; }
    std::int64_t AsTicks() const { return m_data.integer; }
    std::string_view AsText() const {
        return {m_data.text->chars, m_data.text->length};
    }  // Text, Bytes, Error
    const ValueList& AsList() const { return m_data.list->values; }
    // Returns the list for changes in place if this Value is its only holder, else null.
    ValueList* OwnList() { return m_data.list->references == 1 ? &m_data.list->values : nullptr; }
    Object& AsObject() const { return *m_data.object; }
    // Valid only for a Decimal or an Integer.
    rdl::Decimal AsDecimal() const {
        if (kind() == Kind::Integer) {
            return rdl::Decimal::OfInteger(m_data.integer);
        }
        const auto low = static_cast<std::uint64_t>(m_data.integer);
        return {(rdl::UInt128{m_tail.high} << 64) | low, m_tail.scale, m_tail.isNegative};
    }
    // Valid only for a number.
    double AsDouble() const {
        return kind() == Kind::Real      ? m_data.real
               : kind() == Kind::Decimal ? AsDecimal().ToDouble()
                                         : static_cast<double>(m_data.integer);
    }

 private:
    struct TextRep {
        std::uint32_t references;
        std::uint32_t length;
        char chars[1];
    };
    struct ListRep {
        std::uint32_t references;
        ValueList values;
    };
    union Data {
        std::int64_t integer = 0;
        double real;
        TextRep* text;
        ListRep* list;
        Object* object;
    };

    static Value Plain(Kind kind, std::int64_t n) {
        Value v;
        v.m_tail.kind = kind;
        v.m_data.integer = n;
        return v;
    }
    static Value Shared(Kind kind, std::string_view text) {
        // Not a byte more: a million rows have millions of short texts.
        auto* rep = static_cast<TextRep*>(
            std::malloc(std::max(sizeof(TextRep), offsetof(TextRep, chars) + text.size())));
        if (!rep) {
            throw std::bad_alloc();
        }
        rep->references = 1;
        rep->length = static_cast<std::uint32_t>(text.size());
        if (!text.empty()) {
            std::memcpy(rep->chars, text.data(), text.size());
        }
        Value v;
        v.m_tail.kind = kind;
        v.m_data.text = rep;
        return v;
    }
    bool HoldsText() const {
        return m_tail.kind == Kind::Text || m_tail.kind == Kind::Bytes || m_tail.kind == Kind::Error;
    }
    void Retain() const {
        if (HoldsText()) {
            ++m_data.text->references;
        } else if (m_tail.kind == Kind::List) {
            ++m_data.list->references;
        } else if (m_tail.kind == Kind::Object) {
            ++m_data.object->m_references;
        }
    }
    void Release() {
        if (HoldsText()) {
            if (--m_data.text->references == 0) {
                std::free(m_data.text);
            }
        } else if (m_tail.kind == Kind::List) {
            ReleaseList();
        } else if (m_tail.kind == Kind::Object) {
            ReleaseObject();
        }
    }
    void ReleaseList();
    void ReleaseObject() {
        if (--m_data.object->m_references == 0) {
            delete m_data.object;
        }
    }

    struct Tail {
        std::uint32_t high = 0;  // the highest bits of a Decimal
        std::uint8_t scale = 0;
        bool isNegative = false;
        Kind kind = Kind::Null;
    };

    Data m_data;
    Tail m_tail;
};

inline Value Value::List(ValueList values) {
    Value v;
    v.m_data.list = new ListRep{1, std::move(values)};
    v.m_tail.kind = Kind::List;
    return v;
}
inline void Value::ReleaseList() {
    if (--m_data.list->references == 0) {
        delete m_data.list;
    }
}

}  // namespace rdl
