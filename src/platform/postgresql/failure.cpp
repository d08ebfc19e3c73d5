// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/failure.h"

#include <array>

#include "platform/base/ascii.h"
#include "platform/contracts/runtime.h"

namespace {

struct Row {
    std::string_view state;  // a whole SQLSTATE or its class
    std::int32_t number;
    std::string_view text;  // an error of the store if it ends in "store"
};

// Whole codes stand before their class.
constexpr std::array<Row, 29> Table{{
    {"42P01", err::DataTableMissing, "The data has no table of that name"},
    {"42703", err::DataColumnMissing, "The data has no column of that name, or a value is missing"},
    {"42P02", err::DataColumnMissing, "The data has no column of that name, or a value is missing"},
    {"42501", err::DataReadOnly, "The user has no right to this"},
    {"42804", err::DataTypeMismatch, "The value does not suit its column"},
    {"42883", err::DataTypeMismatch, "The value does not suit its column"},
    {"42", err::DataSyntax, "The statement is not understood"},
    {"23", err::DataConstraint, "The row breaks a rule of its table"},
    {"22003", err::Overflow, "The number is too large"},
    {"22", err::DataTypeMismatch, "The value does not suit its column"},
    {"25006", err::DataReadOnly, "The store is write-protected"},
    {"25", err::DataSyntax, "The transaction has failed"},
    {"53100", err::DiskFull, "The disk of the server is full"},
    {"53200", err::OutOfMemory, "The server is out of memory"},
    {"53300", err::DataTimeout, "The server has no free connection"},
    {"54", err::Overflow, "The text or the statement is too long"},
    {"55P03", err::DataTimeout, "The store is still in use by another program"},
    {"57014", err::DataTimeout, "The statement was cancelled"},
    {"40", err::DataTimeout, "The store is in use by another program"},
    {"57P", err::DataUnavailable, "The store cannot be reached"},
    {"08", err::DataUnavailable, "The store cannot be reached"},
    {"28", err::DataUnavailable, "The store refuses the user"},
    {"3D", err::DataUnavailable, "The store does not exist"},
    {"3F", err::DataTableMissing, "The data has no table of that name"},
    {"XX", err::DataUnavailable, "The store is damaged"},
    {"58", err::DeviceIo, "The server cannot read or write its files"},
    {"53", err::OutOfMemory, "The server lacks something"},
    {"OX007", err::DataTypeMismatch, ""},
    {"OX014", err::DataSyntax, ""},
}};

// A message of libpq may have several lines and ends in one.
std::string OneLine(const std::string& message) {
    std::string line;
    for (const char c : Trim(message)) {
        const bool isBlank = c == '\n' || c == '\t' || c == '\r' || c == ' ';
        if (!isBlank) {
            line += c;
        } else if (line.back() != ' ') {
            line += ' ';
        }
    }
    return line;
}

}  // namespace

void RaiseServerError(std::string_view state, const std::string& message, const std::string& store) {
    for (const Row& row : Table) {
        if (state.substr(0, row.state.size()) != row.state) {
            continue;
        }
        if (row.number == err::DataUnavailable) {
            throw RuntimeError(row.number, std::string(row.text) + ": " + store + "; " + OneLine(message));
        }
        throw RuntimeError(row.number,
                           row.text.empty() ? message : std::string(row.text) + "; " + OneLine(message));
    }
    throw RuntimeError(err::DataSyntax, "The data layer fails; " + OneLine(message));
}

void RaiseUnreachable(const std::string& store, const std::string& message) {
    throw RuntimeError(err::DataUnavailable,
                       "The store cannot be reached: " + store + "; " + OneLine(message));
}
