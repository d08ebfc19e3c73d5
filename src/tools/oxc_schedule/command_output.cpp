// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/command_output.h"

#include <algorithm>

#include "platform/base/one_line.h"
#include "platform/base/text.h"

namespace tools {

void Refuse(const std::string& why) {
    throw Refusal(why);
}

std::string TextOf(const RuntimeError& error) {
    const auto* const refusal = dynamic_cast<const Refusal*>(&error);
    return refusal != nullptr ? refusal->Text() : error.Description();
}

void Print(const QJsonArray& array) {
    Print(QJsonDocument(array).toJson().toStdString());
}

void Print(const QJsonObject& object) {
    Print(QJsonDocument(object).toJson().toStdString());
}

void PrintChange(const CommandLine& line, const std::string& text, const QJsonObject& object) {
    try {
        if (line.Has("json")) {
            Print(object);
        } else {
            Print(text);
        }
    } catch (const RuntimeError&) {
        Refuse("It is done, but the output cannot be written");
    }
}

void PrintTable(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], CountCharacters(row[column]));
        }
    }
    std::string text;
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += OnOneLine(row[column]);
            line.append(widths[column] - CountCharacters(row[column]) + 2, ' ');
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
    Print(text);
}

int CommandPrompts::Box(const std::string& text, int flags, const std::string& /*title*/) {
    if ((flags & vbInformation) == vbInformation) {
        m_information += OnOneLine(text) + "\n";
    } else if (m_complaint.find(text) == std::string::npos) {
        m_complaint += (m_complaint.empty() ? "" : " ") + text;
    }
    constexpr int ButtonsMask = 15;
    return (flags & ButtonsMask) == vbYesNo ? vbYes : vbOK;
}

std::string CommandPrompts::Input(const std::string& /*prompt*/, const std::string& /*title*/,
                                  const std::string& preset) {
    return preset;
}

std::string CommandPrompts::Complaint(const std::string& otherwise) const {
    return m_complaint.empty() ? otherwise : m_complaint;
}

}  // namespace tools
