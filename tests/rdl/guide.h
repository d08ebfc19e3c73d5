// SPDX-License-Identifier: GPL-3.0-or-later
// The lists of names in docs/report-files.md. Each is between two comments, <!-- functions --> and
// <!-- end of functions -->. In a table the names are in the first column.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/values/ascii.h"
#include "support/source_dir.h"

namespace rdl {

// What is between backquotes.
inline std::vector<std::string> Quoted(std::string_view text) {
    std::vector<std::string> names;
    for (std::size_t at = text.find('`'); at != std::string_view::npos;) {
        const std::size_t end = text.find('`', at + 1);
        names.emplace_back(text.substr(at + 1, end - at - 1));
        at = end == std::string_view::npos ? end : text.find('`', end + 1);
    }
    return names;
}

// The lines of a list; the test fails if it is not there.
inline std::vector<std::string> GuideLines(const std::string& list) {
    std::stringstream guide;
    guide << std::ifstream(SourceDir() + "/docs/report-files.md").rdbuf();
    std::vector<std::string> lines;
    bool within = false;
    bool ended = false;
    for (std::string line; std::getline(guide, line);) {
        ended = ended || line == "<!-- end of " + list + " -->";
        if (within && !ended) {
            lines.push_back(line);
        }
        within = within || line == "<!-- " + list + " -->";
    }
    EXPECT_TRUE(ended) << list;
    return lines;
}

// A function as the guide shows it: Mid(text, start[, count]).
struct Signature {
    std::string shown;
    std::string name;             // in lower case, "new.string" for New String
    int least = 0, most = 0;      // number of arguments
    bool takesAnyNumber = false;  // has a …
};

inline Signature ReadSignature(const std::string& shown) {
    const std::size_t bracket = shown.find('(');
    Signature signature{shown, LowerAscii(shown.substr(0, bracket))};
    if (signature.name.starts_with("new ")) {
        signature.name.replace(0, 4, "new.");
    }
    if (bracket == std::string::npos) {
        return signature;
    }
    int depth = 0;
    bool named = false;
    for (const char c : shown.substr(bracket + 1, shown.rfind(')') - bracket - 1)) {
        depth += c == '[' ? 1 : c == ']' ? -1 : 0;
        if (c == ',') {
            named = false;
        } else if (IsAsciiLetter(c) && !named) {
            named = true;
            signature.least += depth == 0 ? 1 : 0;
            ++signature.most;
        }
    }
    signature.takesAnyNumber = shown.find("…") != std::string::npos;
    return signature;
}

inline std::vector<Signature> GuideSignatures(const std::string& list) {
    std::vector<Signature> signatures;
    for (const std::string& line : GuideLines(list)) {
        const bool row = line.starts_with('|');
        for (const std::string& shown : Quoted(row ? line.substr(0, line.find('|', 1)) : line)) {
            signatures.push_back(ReadSignature(shown));
        }
    }
    return signatures;
}

// The names of a list, each once; a second one fails the test.
inline std::set<std::string> GuideNames(const std::string& list) {
    std::set<std::string> names;
    for (const Signature& signature : GuideSignatures(list)) {
        EXPECT_TRUE(names.insert(signature.name).second) << signature.shown << " is there twice";
    }
    return names;
}

// Adds a name of a table; a second one fails the test.
inline void AddOnce(std::set<std::string>& names, std::string_view name) {
    EXPECT_TRUE(names.emplace(name).second) << name << " is there twice";
}

// The names of a table, each once.
template <typename Table>
std::set<std::string> NamesOf(const Table& table) {
    std::set<std::string> names;
    for (const auto& row : table) {
        AddOnce(names, row.name);
    }
    return names;
}

// The names of several tables, each once in all of them.
template <typename Tables>
std::set<std::string> NamesOfAll(const Tables& tables) {
    std::set<std::string> names;
    for (const auto& table : tables) {
        for (const auto& row : table) {
            AddOnce(names, row.name);
        }
    }
    return names;
}

}  // namespace rdl
