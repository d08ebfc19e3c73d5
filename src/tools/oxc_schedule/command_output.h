// SPDX-License-Identifier: GPL-3.0-or-later
// What the commands print, and how they refuse.
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <string>
#include <vector>

#include "platform/contracts/prompts.h"
#include "platform/contracts/runtime.h"
#include "tools/console.h"
#include "tools/oxc_schedule/command_line.h"

namespace tools {

// A refusal. Unlike other errors it goes into no statement, so that its text holds the mark ' as it is.
class Refusal : public RuntimeError {
 public:
    explicit Refusal(const std::string& why) : RuntimeError(err::InvalidPropertyValue, why), m_text(why) {}
    const std::string& Text() const { return m_text; }

 private:
    std::string m_text;
};

// Raises the error with which a command ends: one line on standard error, exit code 1.
[[noreturn]] void Refuse(const std::string& why);
// Returns the text of a refusal, the description of any other error.
std::string TextOf(const RuntimeError& error);

// As Print of a text (tools/console.h).
void Print(const QJsonArray& array);
void Print(const QJsonObject& object);
// Prints what a command has changed: the text, or with --json the object. If that fails, the complaint says
// that the change is made.
void PrintChange(const CommandLine& line, const std::string& text, const QJsonObject& object);
// Prints rows in columns with two blanks between them; the first row is the heading. A control character
// becomes a blank.
void PrintTable(const std::vector<std::vector<std::string>>& rows);

inline QString Json(const std::string& text) {
    return QString::fromStdString(text);
}

// The boxes of a command: information and complaints are kept. A question is answered with yes.
class CommandPrompts : public Prompts {
 public:
    CommandPrompts() { SetPrompts(this); }
    ~CommandPrompts() override { SetPrompts(nullptr); }
    CommandPrompts(const CommandPrompts&) = delete;
    CommandPrompts& operator=(const CommandPrompts&) = delete;

    int Box(const std::string& text, int flags, const std::string& title) override;
    std::string Input(const std::string& prompt, const std::string& title,
                      const std::string& preset) override;
    // The different texts of the boxes with a blank between them, or `otherwise` if there was none.
    std::string Complaint(const std::string& otherwise) const;
    // The texts of the information boxes, each on a line of its own.
    const std::string& Information() const { return m_information; }

 private:
    std::string m_complaint, m_information;
};

}  // namespace tools
