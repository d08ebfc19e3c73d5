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

namespace tools {

// Raises the error with which a command ends: one line on standard error, exit code 1.
[[noreturn]] void Refuse(const std::string& why);

// Returns the text between quotation marks.
std::string Quoted(const std::string& text);

// Write to standard output. Raise 75 if that fails.
void Print(const std::string& text);
void Print(const QJsonArray& array);
void Print(const QJsonObject& object);
// Prints rows in columns with two blanks between them; the first row is the heading. A control character
// becomes a blank.
void PrintTable(const std::vector<std::vector<std::string>>& rows);

inline QString Json(const std::string& text) {
    return QString::fromStdString(text);
}

// The boxes of a command: information goes to standard output, everything else is kept as the complaint. A
// question is answered with yes.
class CommandPrompts : public Prompts {
 public:
    CommandPrompts() { SetPrompts(this); }
    ~CommandPrompts() override { SetPrompts(nullptr); }
    CommandPrompts(const CommandPrompts&) = delete;
    CommandPrompts& operator=(const CommandPrompts&) = delete;

    int Box(const std::string& text, int flags, const std::string& title) override;
    std::string Input(const std::string& prompt, const std::string& title,
                      const std::string& preset) override;
    // The texts of the boxes with a blank between them, or `otherwise` if there was none.
    std::string Complaint(const std::string& otherwise) const;

 private:
    std::string m_complaint;
};

}  // namespace tools
