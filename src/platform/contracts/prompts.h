// SPDX-License-Identifier: GPL-3.0-or-later
// Message boxes and input boxes. Without a display a box becomes a dated line on standard error
// (platform/base/journal.h) and is answered at once with its default.
#pragma once

#include <string>

// Flags of a box, to be added, and the answers of a box.
inline constexpr int vbOKOnly = 0;
inline constexpr int vbYesNo = 4;
inline constexpr int vbCritical = 16;
inline constexpr int vbQuestion = 32;
inline constexpr int vbExclamation = 48;
inline constexpr int vbInformation = 64;
inline constexpr int vbOK = 1;
inline constexpr int vbYes = 6;
inline constexpr int vbNo = 7;

class Prompts {
 public:
    virtual ~Prompts() = default;
    // Shows a box, waits for the answer and returns it (vbOK, vbYes, vbNo). An empty title means the
    // application's title.
    virtual int Box(const std::string& text, int flags, const std::string& title) = 0;
    // Returns the typed text, or an empty text after a cancel.
    virtual std::string Input(const std::string& prompt, const std::string& title,
                              const std::string& preset) = 0;
};

// Writes the text of a box as a dated line on standard error.
void JournalBox(const std::string& text, const std::string& title);

Prompts& ThePrompts();  // writes to standard error until a program or a test sets another one
// Null restores the default. The caller owns `prompts`, which must outlive its use.
void SetPrompts(Prompts* prompts);

inline constexpr const char* AppTitle = "Oxbow Courier";

// Show a box of the set prompts. Return as Prompts::Box and Prompts::Input.
inline int MsgBox(const std::string& text, int flags = vbOKOnly, const std::string& title = AppTitle) {
    return ThePrompts().Box(text, flags, title);
}
inline std::string InputBox(const std::string& prompt, const std::string& title = AppTitle,
                            const std::string& preset = {}) {
    return ThePrompts().Input(prompt, title, preset);
}
