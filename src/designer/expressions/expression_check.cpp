// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/expressions/expression_check.h"

#include <charconv>

#include "platform/base/text.h"
#include "platform/contracts/runtime.h"
#include "platform/reports/rdl_engine.h"

namespace designer {
namespace {

// The engine's message begins with file and line, which the user of a dialog does not need. A line of the
// code is one of the text that the user sees.
std::string WithoutLine(const std::string& message) {
    constexpr std::string_view Code = "Code";
    const std::size_t line = message.find(", line ");
    if (line == std::string::npos) {
        return message;
    }
    if (std::string_view(message).substr(0, line).ends_with(Code)) {
        return message.substr(line - Code.size());
    }
    const std::size_t colon = message.find(": ", line);
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

std::string FaultOfReport(const DesignModel& model, const Document& document) {
    try {
        reports::OpenRdlText(document.Bytes(), model.RunName());
        return {};
    } catch (const RuntimeError& error) {
        return WithoutLine(error.Description());
    } catch (const SourceFlaw& error) {  // its encoding
        return error.what();
    }
}

std::string FaultOfEdit(const DesignModel& model, const std::function<void(Document&)>& work) {
    try {
        Document copy = model.Source().Copy();
        work(copy);
        const std::string fault = FaultOfReport(model, copy);
        return fault.empty() || !FaultOfReport(model, model.Source()).empty() ? std::string() : fault;
    } catch (const std::runtime_error& error) {  // EditError, SourceFlaw
        return error.what();
    }
}

ExpressionCheck::ExpressionCheck(const DesignModel& model, Write write)
    : m_model(model), m_write(std::move(write)), m_otherFault(MessageFor("=Nothing")) {}

std::string ExpressionCheck::MessageFor(const std::string& value) const {
    try {
        Document copy = m_model.Source().Copy();
        m_write(copy, value);
        return FaultOfReport(m_model, copy);
    } catch (const EditError& error) {
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
