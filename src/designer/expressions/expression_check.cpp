// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/expressions/expression_check.h"

#include <charconv>

#include "platform/base/text.h"
#include "platform/contracts/runtime.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"

namespace designer {
namespace {

// The engine's message begins with file and line, which the user of a dialog does not need.
std::string WithoutLine(const std::string& message) {
    const std::size_t line = message.find(", line ");
    const std::size_t colon = line == std::string::npos ? line : message.find(": ", line);
    return colon == std::string::npos ? message : message.substr(colon + 2);
}

int PositionIn(const std::string& message) {
    constexpr std::string_view Mark = ", at character ";
    const std::size_t found = message.rfind(Mark);
    int number = 0;
    if (found != std::string::npos) {
        std::from_chars(message.data() + found + Mark.size(), message.data() + message.size(), number);
    }
    return number - 1;
}

}  // namespace

ExpressionCheck::ExpressionCheck(const DesignModel& model, ElementId id, const PropertyRow& row)
    : m_model(model), m_id(id), m_row(row), m_otherFault(MessageFor("=Nothing")) {}

// The elements of a copy have ids of its own, and the same indexes.
std::string ExpressionCheck::MessageFor(const std::string& value) const {
    try {
        Document copy(m_model.Source().Bytes());
        SetRow(copy, copy.IdAt(m_model.Source().IndexOf(m_id)), m_row, value);
        const std::filesystem::path file = m_model.File().empty() ? "report.rdl" : m_model.File();
        reports::OpenRdlText(copy.Bytes(), file);
        return {};
    } catch (const RuntimeError& error) {
        return WithoutLine(error.Description());
    } catch (const std::runtime_error& error) {  // EditError, SourceFlaw
        return error.what();
    }
}

std::optional<ExpressionFault> ExpressionCheck::FaultOf(const std::string& value) const {
    if (!m_otherFault.empty()) {
        return std::nullopt;
    }
    const std::string message = MessageFor(value);
    if (message.empty()) {
        return std::nullopt;
    }
    const int position = PositionIn(message);
    return ExpressionFault{message, position <= static_cast<int>(CountCharacters(value)) ? position : -1};
}

}  // namespace designer
