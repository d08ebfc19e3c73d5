// SPDX-License-Identifier: GPL-3.0-or-later
// Run-time errors and the value that a database field holds.
//
// The numbers and texts are part of the system's behaviour: they appear in history rows, alerts and message
// boxes. A description never contains the mark ', because descriptions are put into statements unchanged; see
// Description().
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <variant>

// Numbers that handlers test for or that users see.
namespace err {
inline constexpr std::int32_t Overflow = 6;
inline constexpr std::int32_t SubscriptOutOfRange = 9;
inline constexpr std::int32_t TypeMismatch = 13;
inline constexpr std::int32_t OutOfMemory = 7;
inline constexpr std::int32_t FileNotFound = 53;
inline constexpr std::int32_t FileExists = 58;
inline constexpr std::int32_t DeviceIo = 57;
inline constexpr std::int32_t DiskFull = 61;
inline constexpr std::int32_t PathFileAccess = 75;
inline constexpr std::int32_t PathNotFound = 76;
inline constexpr std::int32_t ObjectNotSet = 91;
inline constexpr std::int32_t InvalidUseOfNull = 94;
inline constexpr std::int32_t InvalidPropertyValue = 380;
inline constexpr std::int32_t ObjectRequired = 424;
inline constexpr std::int32_t Automation = 440;
inline constexpr std::int32_t NoCurrentRecord = 3021;
inline constexpr std::int32_t DataClosed = 3704;
inline constexpr std::int32_t DataOpen = 3705;
inline constexpr std::int32_t ItemNotFound = 3265;
inline constexpr std::int32_t ElementNotFound = 35601;
inline constexpr std::int32_t KeyNotUnique = 35602;
// 80004005: file missing, unreadable or not a database.
inline constexpr std::int32_t DataUnavailable = -2147467259;
inline constexpr std::int32_t DataTableMissing = -2147217865;   // 80040E37
inline constexpr std::int32_t DataColumnMissing = -2147217904;  // 80040E10
inline constexpr std::int32_t DataSyntax = -2147217900;         // 80040E14
inline constexpr std::int32_t DataConstraint = -2147217873;     // 80040E2F
inline constexpr std::int32_t DataTypeMismatch = -2147217913;  // 80040E07: a text that is no date in datediff
inline constexpr std::int32_t DataReadOnly = -2147217911;      // 80040E09: file or folder is write-protected
inline constexpr std::int32_t DataTimeout = -2147217871;       // 80040E31: another program kept the data busy
inline constexpr std::int32_t MailboxOrServer = -2147467259;   // 80004005: mail server lost
inline constexpr std::int32_t MailboxFull = -2147221219;       // 8004011D: mailbox over its limit
inline constexpr std::int32_t MailUserCancel = -2147221229;    // 80040113
}  // namespace err

// A run-time error: a number and a description.
class RuntimeError : public std::exception {
 public:
    // Replaces every ' in the description with ".
    RuntimeError(std::int32_t number, std::string_view description);
    // Uses the standard text of the number, for example "Type mismatch" for 13.
    explicit RuntimeError(std::int32_t number);

    std::int32_t Number() const { return m_number; }
    const std::string& Description() const { return m_description; }
    const char* what() const noexcept override { return m_description.c_str(); }

 private:
    std::int32_t m_number;
    std::string m_description;
};

// Returns the current exception as a RuntimeError: a RuntimeError unchanged, out of memory as 7, any other
// exception as 440 with its text. Call it inside a catch block.
RuntimeError CurrentError();

// Replaces every ' with ", for texts of libraries and paths that go into a description.
std::string WithoutMarks(std::string_view text);

// The value of a field: Null, a whole number, a real number or a text (UTF-8).
class Variant {
 public:
    Variant() = default;  // Null
    Variant(std::int64_t number) : m_value(number) {}
    Variant(int number) : m_value(static_cast<std::int64_t>(number)) {}
    Variant(double number) : m_value(number) {}
    Variant(std::string text) : m_value(std::move(text)) {}
    Variant(const char* text) : m_value(std::string(text)) {}

    bool IsNull() const { return m_value.index() == 0; }
    const std::int64_t* Integer() const { return std::get_if<std::int64_t>(&m_value); }
    const double* Real() const { return std::get_if<double>(&m_value); }
    const std::string* TextOrNull() const { return std::get_if<std::string>(&m_value); }
    // Sets a text and reuses the memory of the former text: readers of many rows allocate once.
    void SetText(std::string_view text);
    // Returns the value as text for concatenation: Null gives an empty text, a number its shortest form.
    std::string Text() const;
    bool operator==(const Variant&) const = default;

 private:
    std::variant<std::monostate, std::int64_t, double, std::string> m_value;
};

inline std::string operator+(const std::string& left, const Variant& right) {
    return left + right.Text();
}
inline std::string operator+(const char* left, const Variant& right) {
    return left + right.Text();
}
inline std::string operator+(const Variant& left, const std::string& right) {
    return left.Text() + right;
}
inline std::string operator+(const Variant& left, const char* right) {
    return left.Text() + right;
}
