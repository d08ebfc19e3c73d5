// SPDX-License-Identifier: GPL-3.0-or-later
// The contents of messages between a program and its report process. Both run on one machine: numbers have
// its byte order. Nothing that a reader gets is trusted: counts and lengths are held against the bytes that
// are there, and a message that does not fit raises BadMessage.
#pragma once

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <variant>
#include <vector>

#include "platform/contracts/dates.h"
#include "platform/contracts/runtime.h"

namespace reports::worker {

class BadMessage : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// A message is a struct whose static function Parts returns a tuple of references to its members, so that
// writer and reader have one order. Members are numbers, bool, std::string, DateValue, Variant, messages, and
// vectors and variants of these.

class Writer {
 public:
    template <typename T>
    void Put(const T& value) {
        if constexpr (std::is_arithmetic_v<T>) {
            m_bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
        } else {
            std::apply([this](const auto&... parts) { (Put(parts), ...); }, T::Parts(value));
        }
    }
    void Put(const std::string& text) {
        Put(static_cast<std::uint64_t>(text.size()));
        m_bytes += text;
    }
    void Put(DateValue moment) { Put(moment.Seconds()); }
    void Put(const Variant& value);
    template <typename T>
    void Put(const std::vector<T>& list) {
        Put(static_cast<std::uint64_t>(list.size()));
        for (const T& one : list) {
            Put(one);
        }
    }
    template <typename... T>
    void Put(const std::variant<T...>& value) {
        Put(static_cast<std::uint8_t>(value.index()));
        std::visit([this](const auto& held) { Put(held); }, value);
    }

    std::string Take() { return std::move(m_bytes); }

 private:
    std::string m_bytes;
};

class Reader {
 public:
    // The bytes must outlive the reader.
    explicit Reader(std::string_view bytes) : m_rest(bytes) {}

    template <typename T>
    void Get(T& value) {
        if constexpr (std::is_same_v<T, bool>) {
            value = GetBool();
        } else if constexpr (std::is_arithmetic_v<T>) {
            std::memcpy(&value, Take(sizeof value).data(), sizeof value);
        } else {
            std::apply([this](auto&... parts) { (Get(parts), ...); }, T::Parts(value));
        }
    }
    void Get(std::string& text) {
        std::uint64_t size = 0;
        Get(size);
        text = Take(size);
    }
    void Get(DateValue& moment);
    void Get(Variant& value);
    template <typename T>
    void Get(std::vector<T>& list) {
        std::uint64_t count = 0;
        Get(count);
        // Each element has at least one byte, so that a large count ends the loop early.
        list.clear();
        for (; count > 0; --count) {
            Get(list.emplace_back());
        }
    }
    template <typename... T>
    void Get(std::variant<T...>& value) {
        std::uint8_t index = 0;
        Get(index);
        GetAlternative(value, index, std::index_sequence_for<T...>());
    }

    // Raises BadMessage if bytes are left.
    void End() const;

 private:
    std::string_view Take(std::uint64_t size);
    bool GetBool();
    template <typename... T, std::size_t... Index>
    void GetAlternative(std::variant<T...>& value, std::size_t index, std::index_sequence<Index...>) {
        const bool known = ((index == Index && (Get(value.template emplace<Index>()), true)) || ...);
        if (!known) {
            throw BadMessage("an unknown kind of value");
        }
    }

    std::string_view m_rest;
};

template <typename T>
std::string Encoded(const T& message) {
    Writer writer;
    writer.Put(message);
    return writer.Take();
}

template <typename T>
T Decoded(std::string_view bytes) {
    Reader reader(bytes);
    T message{};
    reader.Get(message);
    reader.End();
    return message;
}

}  // namespace reports::worker
