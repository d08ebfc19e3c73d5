// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/codec.h"

namespace reports::worker {
namespace {

enum class Held : std::uint8_t { Null, Integer, Real, Text };

// A moment beyond these seconds is no date of the calendar.
constexpr std::int64_t MostSeconds = std::int64_t{10'000} * 366 * 86'400;

}  // namespace

void Writer::Put(const Variant& value) {
    const auto put = [this](Held kind, const auto& held) {
        Put(static_cast<std::uint8_t>(kind));
        Put(held);
    };
    if (const std::int64_t* integer = value.Integer()) {
        put(Held::Integer, *integer);
    } else if (const double* real = value.Real()) {
        put(Held::Real, *real);
    } else if (const std::string* text = value.TextOrNull()) {
        put(Held::Text, *text);
    } else {
        Put(static_cast<std::uint8_t>(Held::Null));
    }
}

std::string_view Reader::Take(std::uint64_t size) {
    if (size > m_rest.size()) {
        throw BadMessage("a message that ends too early");
    }
    const std::string_view taken = m_rest.substr(0, size);
    m_rest.remove_prefix(size);
    return taken;
}

bool Reader::GetBool() {
    const char byte = Take(1).front();
    if (byte != 0 && byte != 1) {
        throw BadMessage("neither true nor false");
    }
    return byte == 1;
}

void Reader::Get(DateValue& moment) {
    std::int64_t seconds = 0;
    Get(seconds);
    if (seconds > MostSeconds || seconds < -MostSeconds) {
        throw BadMessage("a moment that is no date");
    }
    moment = DateValue::FromSeconds(seconds);
}

void Reader::Get(Variant& value) {
    std::uint8_t kind = 0;
    Get(kind);
    const auto get = [&](auto held) {
        Get(held);
        value = Variant(std::move(held));
    };
    switch (static_cast<Held>(kind)) {
        case Held::Null:
            value = Variant();
            return;
        case Held::Integer:
            return get(std::int64_t{});
        case Held::Real:
            return get(double{});
        case Held::Text:
            return get(std::string());
    }
    throw BadMessage("an unknown kind of value");
}

void Reader::End() const {
    if (!m_rest.empty()) {
        throw BadMessage("a message with bytes after its end");
    }
}

}  // namespace reports::worker
