// SPDX-License-Identifier: GPL-3.0-or-later
// A value: the content of a data field or the result of an expression. 16 bytes, so that a million rows fit
// into memory. Texts and lists are shared and immutable, with reference counts that are not thread-safe.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rdl {

enum class Kind : std::uint8_t {
    Null,
    Boolean,
    Integer,   // 64 bits
    Real,      // double
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
        v.m_kind = Kind::Real;
        v.m_data.real = d;
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
        v.m_kind = Kind::Object;
        v.m_data.object = object;
        ++object->m_references;
        return v;
    }

    Value(const Value& other) : m_data(other.m_data), m_kind(other.m_kind) { Retain(); }
    Value(Value&& other) noexcept : m_data(other.m_data), m_kind(other.m_kind) { other.m_kind = Kind::Null; }
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
        std::swap(m_kind, other.m_kind);
    }

    Kind kind() const { return m_kind; }
    bool IsNull() const { return m_kind == Kind::Null; }
    bool IsError() const { return m_kind == Kind::Error; }
    bool IsNumber() const { return m_kind == Kind::Integer || m_kind == Kind::Real; }
    bool IsText() const { return m_kind == Kind::Text; }

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
    // Valid only for an Integer or a Real.
    double AsDouble() const {
        return m_kind == Kind::Real ? m_data.real : static_cast<double>(m_data.integer);
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
        v.m_kind = kind;
        v.m_data.integer = n;
        return v;
    }
    static Value Shared(Kind kind, std::string_view text) {
        auto* rep = static_cast<TextRep*>(std::malloc(sizeof(TextRep) + text.size()));
        if (!rep) {
            throw std::bad_alloc();
        }
        rep->references = 1;
        rep->length = static_cast<std::uint32_t>(text.size());
        if (!text.empty()) {
            std::memcpy(rep->chars, text.data(), text.size());
        }
        Value v;
        v.m_kind = kind;
        v.m_data.text = rep;
        return v;
    }
    bool HoldsText() const { return m_kind == Kind::Text || m_kind == Kind::Bytes || m_kind == Kind::Error; }
    void Retain() const {
        if (HoldsText()) {
            ++m_data.text->references;
        } else if (m_kind == Kind::List) {
            ++m_data.list->references;
        } else if (m_kind == Kind::Object) {
            ++m_data.object->m_references;
        }
    }
    void Release() {
        if (HoldsText()) {
            if (--m_data.text->references == 0) {
                std::free(m_data.text);
            }
        } else if (m_kind == Kind::List) {
            ReleaseList();
        } else if (m_kind == Kind::Object) {
            ReleaseObject();
        }
    }
    void ReleaseList();
    void ReleaseObject() {
        if (--m_data.object->m_references == 0) {
            delete m_data.object;
        }
    }

    Data m_data;
    Kind m_kind = Kind::Null;
};

inline Value Value::List(ValueList values) {
    Value v;
    v.m_data.list = new ListRep{1, std::move(values)};
    v.m_kind = Kind::List;
    return v;
}
inline void Value::ReleaseList() {
    if (--m_data.list->references == 0) {
        delete m_data.list;
    }
}

}  // namespace rdl
