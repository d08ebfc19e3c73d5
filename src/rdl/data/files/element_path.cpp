// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/files/element_path.h"

#include "rdl/data/common/message.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/values/utf8.h"

namespace rdl::data {
namespace {

constexpr std::size_t DeepestPath = 50;

class Parser {
 public:
    explicit Parser(std::string_view text) : m_text(text) {}

    std::vector<PathLevel> Run() {
        std::vector<PathLevel> levels;
        Take('/');
        do {
            if (levels.size() >= DeepestPath) {
                Fail("is too deep");
            }
            levels.push_back(Level());
        } while (Take('/'));
        if (m_at < m_text.size()) {
            Fail("has an unexpected character");
        }
        return levels;
    }

 private:
    PathLevel Level() {
        PathLevel level;
        level.element = Name();
        if (level.element.empty()) {
            Fail("lacks an element name");
        }
        if (Take('(')) {
            level.encoding = Encoding();
        }
        if (Take('{')) {
            level.hasList = true;
            while (!Take('}')) {
                level.fields.push_back(OneField());
                if (!Take(',') && Peek() != '}') {
                    Fail("lacks a comma or a closing brace");
                }
            }
        }
        return level;
    }

    PathEncoding Encoding() {
        const std::string name = Name();
        const bool isHtml = EqualNoCase(name, "HTMLEncoded");
        if (!isHtml && !EqualNoCase(name, "Base64Encoded")) {
            Fail("asks for an encoding that is not known");
        }
        if (!Take(')')) {
            Fail("lacks a closing parenthesis");
        }
        return isHtml ? PathEncoding::Html : PathEncoding::Base64;
    }

    PathField OneField() {
        PathField field;
        field.attribute = Take('@');
        field.name = Name();
        if (field.name.empty() && !field.attribute) {
            Fail("lacks a field name");
        }
        if (field.name.empty()) {
            field.attribute = false;  // @ alone is the element itself
        }
        if (Take('(')) {
            field.type = FieldTypeOfName(Name());
            if (!Take(')')) {
                Fail("lacks a closing parenthesis");
            }
        }
        return field;
    }

    char Peek() {
        m_at = std::min(m_text.find_first_not_of(" \t\r\n", m_at), m_text.size());
        return m_at < m_text.size() ? m_text[m_at] : '\0';
    }

    bool Take(char mark) {
        if (Peek() != mark || m_at >= m_text.size()) {
            return false;
        }
        ++m_at;
        return true;
    }

    // Without its prefix.
    std::string Name() {
        Peek();
        const std::size_t end = std::min(m_text.find_first_of("/{}(),@ \t\r\n", m_at), m_text.size());
        std::string_view name = m_text.substr(m_at, end - m_at);
        m_at = end;
        Peek();
        const std::size_t colon = name.rfind(':');
        return std::string(colon == std::string_view::npos ? name : name.substr(colon + 1));
    }

    [[noreturn]] void Fail(const char* what) const {
        throw Error("the element path \"" + CleanText(m_text) + "\" " + what + ", at character " +
                    std::to_string(CharacterCount(m_text.substr(0, m_at)) + 1));
    }

    std::string_view m_text;
    std::size_t m_at = 0;
};

}  // namespace

std::vector<PathLevel> ParseElementPath(std::string_view text) {
    text = Trimmed(text);
    if (text.empty() || text == "*") {
        return {};
    }
    return Parser(text).Run();
}

}  // namespace rdl::data
