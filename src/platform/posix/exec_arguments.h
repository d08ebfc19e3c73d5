// SPDX-License-Identifier: GPL-3.0-or-later
// The arguments of a program, as exec and posix_spawn take them.
#pragma once

#include <string>
#include <utility>
#include <vector>

// Not copyable: the pointers are those of its own texts.
class ExecArguments {
 public:
    // The first argument is the program.
    explicit ExecArguments(std::vector<std::string> arguments) : m_texts(std::move(arguments)) {
        m_pointers.reserve(m_texts.size() + 1);
        for (std::string& text : m_texts) {
            m_pointers.push_back(text.data());
        }
        m_pointers.push_back(nullptr);
    }
    ExecArguments(const ExecArguments&) = delete;
    ExecArguments& operator=(const ExecArguments&) = delete;

    // Returns the pointers with a null after the last one. The object owns them.
    char** Pointers() { return m_pointers.data(); }

 private:
    std::vector<std::string> m_texts;
    std::vector<char*> m_pointers;
};
