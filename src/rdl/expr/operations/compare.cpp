// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/operations/compare.h"

#include <cmath>
#include <cstring>
#include <functional>

#include "rdl/values/ascii.h"
#include "rdl/values/characters.h"

namespace rdl::expr {
namespace {

int Rank(Kind kind) {
    switch (kind) {
        case Kind::Null:
            return 0;
        case Kind::Boolean:
            return 1;
        case Kind::Integer:
        case Kind::Real:
        case Kind::Decimal:
            return 2;
        case Kind::DateTime:
            return 3;
        case Kind::TimeSpan:
            return 4;
        case Kind::Text:
            return 5;
        case Kind::Bytes:
            return 6;
        case Kind::List:
            return 7;
        case Kind::Error:
            return 8;
        case Kind::Object:
            return 9;
    }
    return 10;
}

template <typename T>
int Order(T left, T right) {
    return left < right ? -1 : left > right ? 1 : 0;
}

constexpr double TwoTo63 = 9223372036854775808.0;

// Exact: as doubles, neighbours among large integers would be equal to one Real but not to each other.
int OrderMixed(std::int64_t integer, double real) {
    if (std::isnan(real)) {
        return 1;
    }
    if (real >= TwoTo63) {
        return -1;
    }
    if (real < -TwoTo63) {
        return 1;
    }
    const double floor = std::floor(real);
    const int whole = Order(integer, static_cast<std::int64_t>(floor));
    return whole != 0 ? whole : floor < real ? -1 : 0;
}

// One of them is a Decimal.
int OrderDecimals(const Value& left, const Value& right) {
    if (left.kind() == Kind::Real) {
        return -rdl::Compare(right.AsDecimal(), left.AsReal());
    }
    return right.kind() == Kind::Real ? rdl::Compare(left.AsDecimal(), right.AsReal())
                                      : rdl::Compare(left.AsDecimal(), right.AsDecimal());
}

int OrderReals(double left, double right) {
    const bool leftNan = std::isnan(left);
    const bool rightNan = std::isnan(right);
    return leftNan || rightNan ? Order(rightNan ? 1 : 0, leftNan ? 1 : 0) : Order(left, right);
}

// At most one of them is a Real.
int OrderNumbers(const Value& left, const Value& right) {
    if (left.kind() == Kind::Decimal || right.kind() == Kind::Decimal) {
        return OrderDecimals(left, right);
    }
    if (left.kind() == Kind::Real) {
        return -OrderMixed(right.AsInteger(), left.AsReal());
    }
    return right.kind() == Kind::Real ? OrderMixed(left.AsInteger(), right.AsReal())
                                      : Order(left.AsInteger(), right.AsInteger());
}

int OrderLists(const ValueList& left, const ValueList& right) {
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i) {
        const int order = Compare(left[i], right[i]);
        if (order != 0) {
            return order;
        }
    }
    return Order(left.size(), right.size());
}

std::size_t Mix(std::size_t seed, std::size_t more) {
    return seed ^ (more + 0x9E3779B97F4A7C15ull + (seed << 6) + (seed >> 2));
}

std::size_t HashNumber(const Value& value) {
    if (value.kind() == Kind::Integer) {
        return std::hash<std::int64_t>()(value.AsInteger());
    }
    if (value.kind() == Kind::Decimal) {
        if (const auto whole = value.AsDecimal().ToInteger()) {
            return std::hash<std::int64_t>()(*whole);
        }
    }
    const double real = value.AsDouble();
    if (std::isnan(real)) {
        return 7;
    }
    if (real >= -TwoTo63 && real < TwoTo63 && std::floor(real) == real) {
        return std::hash<std::int64_t>()(static_cast<std::int64_t>(real));
    }
    return std::hash<double>()(real);
}

std::size_t HashFolded(std::string_view text) {
    std::size_t hash = 1469598103934665603ull;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(AsciiLower(c))) * 1099511628211ull;
    }
    return hash;
}

// One function for hashing and comparing: some non-ASCII characters have an ASCII lower-case form.
std::size_t HashText(std::string_view text) {
    return IsAscii(text) ? HashFolded(text) : HashFolded(Lower(text));
}

}  // namespace

int Compare(const Value& left, const Value& right) {
    if (left.kind() == Kind::Real && right.kind() == Kind::Real) {
        return OrderReals(left.AsReal(), right.AsReal());  // the most frequent case by far
    }
    const int rank = Rank(left.kind());
    const int ranks = Order(rank, Rank(right.kind()));
    if (ranks != 0) {
        return ranks;
    }
    switch (left.kind()) {
        case Kind::Null:
            return 0;
        case Kind::Boolean:
            return Order(left.AsBoolean() ? 1 : 0, right.AsBoolean() ? 1 : 0);
        case Kind::Integer:
        case Kind::Real:
        case Kind::Decimal:
            return OrderNumbers(left, right);
        case Kind::DateTime:
        case Kind::TimeSpan:
            return Order(left.AsTicks(), right.AsTicks());
        case Kind::Text:
            return CompareNoCase(left.AsText(), right.AsText());
        case Kind::Bytes:
        case Kind::Error:
            return left.AsText().compare(right.AsText());
        case Kind::List:
            return OrderLists(left.AsList(), right.AsList());
        case Kind::Object:
            return Order(reinterpret_cast<std::uintptr_t>(&left.AsObject()),
                         reinterpret_cast<std::uintptr_t>(&right.AsObject()));
    }
    return 0;
}

std::size_t Hash(const Value& value) {
    const auto seed = static_cast<std::size_t>(Rank(value.kind()));
    switch (value.kind()) {
        case Kind::Null:
            return seed;
        case Kind::Boolean:
            return Mix(seed, value.AsBoolean() ? 1 : 0);
        case Kind::Integer:
        case Kind::Real:
        case Kind::Decimal:
            return Mix(seed, HashNumber(value));
        case Kind::DateTime:
        case Kind::TimeSpan:
            return Mix(seed, std::hash<std::int64_t>()(value.AsTicks()));
        case Kind::Text:
            return Mix(seed, HashText(value.AsText()));
        case Kind::Bytes:
        case Kind::Error:
            return Mix(seed, std::hash<std::string_view>()(value.AsText()));
        case Kind::List: {
            std::size_t hash = seed;
            for (const Value& item : value.AsList()) {
                hash = Mix(hash, Hash(item));
            }
            return hash;
        }
        case Kind::Object:
            return Mix(seed, std::hash<const Object*>()(&value.AsObject()));
    }
    return seed;
}

}  // namespace rdl::expr
