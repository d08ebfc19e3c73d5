// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/runtime.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <new>
#include <utility>

#include "platform/contracts/system_error.h"

namespace {

struct KnownText {
    std::int32_t number;
    const char* text;
};

constexpr std::array KnownTexts{
    KnownText{5, "Invalid procedure call or argument"},
    KnownText{err::Overflow, "Overflow"},
    KnownText{err::OutOfMemory, "Out of memory"},
    KnownText{err::SubscriptOutOfRange, "Subscript out of range"},
    KnownText{11, "Division by zero"},
    KnownText{err::TypeMismatch, "Type mismatch"},
    KnownText{err::FileNotFound, "File not found"},
    KnownText{err::FileExists, "File already exists"},
    KnownText{err::DeviceIo, "Device I/O error"},
    KnownText{err::DiskFull, "Disk full"},
    KnownText{err::TooManyFiles, "Too many files"},
    KnownText{70, "Permission denied"},
    KnownText{err::PathFileAccess, "Path/File access error"},
    KnownText{err::PathNotFound, "Path not found"},
    KnownText{err::ObjectNotSet, "Object variable or With block variable not set"},
    KnownText{err::InvalidUseOfNull, "Invalid use of Null"},
    KnownText{err::InvalidPropertyValue, "Invalid property value"},
    KnownText{err::ObjectRequired, "Object required"},
    KnownText{err::Automation, "Automation error"},
    KnownText{
        err::NoCurrentRecord,
        "Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a "
        "current record."},
    KnownText{err::ItemNotFound,
              "Item cannot be found in the collection corresponding to the requested name or ordinal."},
    KnownText{err::DataClosed, "Operation is not allowed when the object is closed."},
    KnownText{err::DataOpen, "Operation is not allowed when the object is open."},
    KnownText{err::ElementNotFound, "Element not found"},
    KnownText{err::KeyNotUnique, "Key is not unique in collection"},
};

const char* TextOf(std::int32_t number) {
    const auto* found = std::find_if(KnownTexts.begin(), KnownTexts.end(),
                                     [number](const KnownText& known) { return known.number == number; });
    return found == KnownTexts.end() ? "Application-defined or object-defined error" : found->text;
}

template <typename Number>
std::string NumberText(Number number) {
    std::array<char, 40> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    std::string text(buffer.data(), result.ptr);
    std::replace(text.begin(), text.end(), 'e', 'E');
    return text;
}

}  // namespace

RuntimeError::RuntimeError(std::int32_t number, std::string_view description)
    : m_number(number), m_description(WithoutMarks(description)) {}

RuntimeError::RuntimeError(std::int32_t number) : RuntimeError(number, TextOf(number)) {}

RuntimeError CurrentError() {
    try {
        throw;
    } catch (const RuntimeError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return RuntimeError(err::OutOfMemory);
    } catch (const std::exception& error) {
        return {err::Automation, error.what()};
    } catch (...) {
        return RuntimeError(err::Automation);
    }
}

std::string WithoutMarks(std::string_view text) {
    std::string result(text);
    std::replace(result.begin(), result.end(), '\'', '"');
    return result;
}

void Variant::SetText(std::string_view text) {
    if (auto* held = std::get_if<std::string>(&m_value)) {
        held->assign(text);
    } else {
        m_value.emplace<std::string>(text);
    }
}

std::string Variant::Text() const {
    if (const auto* number = Integer()) {
        return NumberText(*number);
    }
    if (const auto* number = Real()) {
        return NumberText(*number);
    }
    const auto* text = TextOrNull();
    return text != nullptr ? *text : std::string();
}
