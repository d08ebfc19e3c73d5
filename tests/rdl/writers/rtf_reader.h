// SPDX-License-Identifier: GPL-3.0-or-later
// Reads an RTF document as far as tests ask: its groups, its text, the rows and cells of its tables.
#pragma once

#include <cctype>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace rdl::writers::test {

struct RtfRowRead {
    std::vector<std::string> texts;   // of its cells
    std::vector<int> edges;           // right edges, twips
    std::vector<std::string> merges;  // clvmgf, clvmrg or nothing
    int height = 0;
    bool heading = false;
};

struct RtfDocument {
    bool balanced = true;
    std::string text;  // of the body, without tables' structure; characters beyond ASCII as <number>
    std::vector<RtfRowRead> rows;                             // outermost tables, in order
    std::vector<std::pair<std::string, std::string>> hidden;  // texts of destinations by their first word
    std::vector<std::string> words;                           // all control words with their numbers
    int Count(const std::string& word) const {
        int count = 0;
        for (const std::string& each : words) {
            count += each == word ? 1 : 0;
        }
        return count;
    }
    std::string Hidden(const std::string& destination) const {
        for (const auto& [name, content] : hidden) {
            if (name == destination) {
                return content;
            }
        }
        return "";
    }
};

class RtfReader {
 public:
    static RtfDocument Read(const std::string& rtf) {
        RtfReader reader(rtf);
        reader.Run();
        return std::move(reader.m_document);
    }

 private:
    explicit RtfReader(const std::string& rtf) : m_rtf(rtf) {}

    void Run() {
        while (m_at < m_rtf.size()) {
            const char c = m_rtf[m_at++];
            if (c == '{') {
                m_groups.push_back(m_groups.empty() ? -1 : m_groups.back());
            } else if (c == '}') {
                m_document.balanced = m_document.balanced && !m_groups.empty();
                if (!m_groups.empty()) {
                    m_groups.pop_back();
                }
                m_ended = m_ended || m_groups.empty();
            } else if (c == '\\') {
                Control();
            } else if (c != '\n') {
                m_document.balanced = m_document.balanced && !m_ended;
                Text(std::string(1, c));
            }
        }
        m_document.balanced = m_document.balanced && m_groups.empty();
    }

    void Control() {
        if (!std::isalpha(static_cast<unsigned char>(m_rtf[m_at]))) {
            const char symbol = m_rtf[m_at++];
            if (symbol != '*') {
                Text(std::string(1, symbol));
            }
            return;
        }
        std::string word;
        while (std::isalpha(static_cast<unsigned char>(m_rtf[m_at]))) {
            word += m_rtf[m_at++];
        }
        std::string number;
        while (m_rtf[m_at] == '-' || std::isdigit(static_cast<unsigned char>(m_rtf[m_at]))) {
            number += m_rtf[m_at++];
        }
        m_at += m_rtf[m_at] == ' ' ? 1 : 0;
        m_document.words.push_back(word + number);
        Word(word, std::atoi(number.c_str()));
    }

    void Word(const std::string& word, int number) {
        static const std::vector<std::string> Destinations = {
            "fonttbl",      "colortbl",  "title",   "author", "doccomm", "creatim",
            "fldinst",      "pict",      "header",  "footer", "headerf", "nesttableprops",
            "nonesttables", "bkmkstart", "bkmkend", "footerf"};
        for (const std::string& destination : Destinations) {
            if (word == destination) {
                m_document.hidden.emplace_back(word, "");
                m_groups.back() = static_cast<int>(m_document.hidden.size()) - 1;
            }
        }
        if (word == "u") {
            Text("<" + std::to_string(number) + ">");
            m_at += m_rtf[m_at] == '?' ? 1 : 0;
        }
        if (m_groups.back() >= 0) {
            return;
        }
        if (word == "trowd") {
            m_row.edges.clear();
            m_row.merges.clear();
            m_merge.clear();
            m_cell.clear();  // paragraphs between tables
            m_row.heading = false;
        } else if (word == "trrh") {
            m_row.height = number;
        } else if (word == "trhdr") {
            m_row.heading = true;
        } else if (word == "clvmgf" || word == "clvmrg") {
            m_merge = word;
        } else if (word == "cellx") {
            m_row.edges.push_back(number);
            m_row.merges.push_back(std::exchange(m_merge, ""));
        } else if (word == "cell") {
            m_row.texts.push_back(std::exchange(m_cell, ""));
        } else if (word == "row") {
            m_document.rows.push_back(m_row);
            m_row.texts.clear();
        } else if (word == "line" || word == "par" || word == "nestcell") {
            Text("|");
        } else if (word == "tab") {
            Text("\t");
        }
    }

    void Text(const std::string& text) {
        if (!m_groups.empty() && m_groups.back() >= 0) {
            m_document.hidden[static_cast<std::size_t>(m_groups.back())].second += text;
        } else {
            m_document.text += text;
            m_cell += text;
        }
    }

    const std::string& m_rtf;
    std::size_t m_at = 0;
    bool m_ended = false;
    std::vector<int> m_groups;  // the destination that each is in; -1: the text
    RtfDocument m_document;
    RtfRowRead m_row;
    std::string m_cell, m_merge;
};

}  // namespace rdl::writers::test
