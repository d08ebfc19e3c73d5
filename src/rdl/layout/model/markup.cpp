// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/model/markup.h"

#include <QChar>
#include <algorithm>
#include <array>
#include <charconv>

#include "rdl/layout/model/colors.h"
#include "rdl/layout/model/entities.h"
#include "rdl/values/ascii.h"
#include "rdl/values/utf8.h"

namespace rdl::layout {
namespace {

constexpr std::size_t DeepestTag = 100;  // tags within each other beyond it change nothing
constexpr int DeepestList = 9;
constexpr std::size_t MostParagraphs = 10'000;  // of one text; what follows runs on in the last

// What stands between & and ;, as a character; 0 when it stands for none.
char32_t CodeOf(std::string_view name) {
    if (name.starts_with('#')) {
        name.remove_prefix(1);
        const bool isHex = !name.empty() && AsciiLower(name.front()) == 'x';
        name.remove_prefix(isHex ? 1 : 0);
        std::uint32_t code = 0;
        const auto [end, error] =
            std::from_chars(name.data(), name.data() + name.size(), code, isHex ? 16 : 10);
        const bool isWhole = error == std::errc() && end == name.data() + name.size();
        const bool isText = code >= ' ' && code <= 0x10FFFF && !QChar::isSurrogate(code);
        return isWhole && isText ? code : 0;
    }
    return CharacterOfEntity(name);
}

// Appends the character or entity at `at` and moves `at` after it.
void TakeCharacter(std::string_view html, std::size_t& at, std::string& out) {
    constexpr std::size_t LongestEntity = 12;
    if (html[at] == '&') {
        const std::size_t end = html.substr(at, LongestEntity).find(';');
        const char32_t code = end == std::string_view::npos ? 0 : CodeOf(html.substr(at + 1, end - 1));
        if (code) {
            AppendUtf8(code, out);
            at += end + 1;
            return;
        }
    }
    out += html[at++];
}

std::string Decoded(std::string_view text) {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        TakeCharacter(text, at, out);
    }
    return out;
}

struct Tag {
    std::string name;  // in lower case
    bool closes = false;
    std::string href, color, face;
};

// "a href=..." without the angle brackets.
Tag ReadTag(std::string_view inside) {
    Tag tag;
    tag.closes = inside.starts_with('/');
    std::size_t at = tag.closes ? 1 : 0;
    while (at < inside.size() && IsAsciiLetterOrDigit(inside[at])) {
        tag.name += AsciiLower(inside[at++]);
    }
    while (at < inside.size()) {
        std::string name;
        while (at < inside.size() && (IsAsciiSpace(inside[at]) || inside[at] == '/')) {
            ++at;
        }
        while (at < inside.size() && !IsAsciiSpace(inside[at]) && inside[at] != '=') {
            name += AsciiLower(inside[at++]);
        }
        if (at >= inside.size() || inside[at] != '=') {
            continue;
        }
        ++at;
        const bool isQuoted = at < inside.size() && (inside[at] == '"' || inside[at] == '\'');
        const std::string_view rest = inside.substr(isQuoted ? at + 1 : at);
        const std::size_t length =
            std::min(isQuoted ? rest.find(inside[at]) : rest.find_first_of(" \t\r\n\f"), rest.size());
        const std::string value = Decoded(rest.substr(0, length));
        at += length + (isQuoted ? 2 : 0);
        if (name == "href") {
            tag.href = value;
        } else if (name == "color") {
            tag.color = value;
        } else if (name == "face") {
            tag.face = value;
        }
    }
    return tag;
}

class MarkupReader {
 public:
    explicit MarkupReader(std::string_view html)
        : m_html(html), m_lastTagEnd(html.find('>') == std::string_view::npos ? 0 : html.rfind('>')) {
        m_open.emplace_back();
    }

    std::vector<MarkupParagraph> Run() {
        m_paragraphs.emplace_back();
        for (std::size_t at = 0; at < m_html.size();) {
            if (m_html[at] == '<' && IsTagAt(at)) {
                at = TakeTag(at);
            } else {
                TakeText(at);
            }
        }
        if (m_paragraphs.size() > 1 && m_paragraphs.back().runs.empty()) {
            m_paragraphs.pop_back();
        }
        return std::move(m_paragraphs);
    }

 private:
    struct Open {
        std::string name;
        MarkupRun style;  // its text is not used
    };

    bool IsTagAt(std::size_t at) const {
        const char next = at < m_lastTagEnd ? m_html[at + 1] : ' ';
        return IsAsciiLetter(next) || next == '/' || next == '!' || next == '?';
    }

    // Returns the position after the tag; an unterminated comment extends to the end.
    std::size_t TakeTag(std::size_t at) {
        if (m_html.substr(at, 4) == "<!--") {
            const std::size_t end = m_html.find("-->", at + 4);
            return end == std::string_view::npos ? m_html.size() : end + 3;
        }
        const std::size_t end = m_html.find('>', at);
        const Tag tag = ReadTag(m_html.substr(at + 1, end - at - 1));
        if (!tag.closes && (tag.name == "script" || tag.name == "style" || tag.name == "title")) {
            return AfterEndOf(tag.name, end + 1);
        }
        Apply(tag);
        return end + 1;
    }

    std::size_t AfterEndOf(const std::string& name, std::size_t at) const {
        for (at = m_html.find("</", at); at != std::string_view::npos; at = m_html.find("</", at + 2)) {
            const std::string_view found = m_html.substr(at + 2, name.size());
            if (std::equal(found.begin(), found.end(), name.begin(), name.end(),
                           [](char a, char b) { return AsciiLower(a) == b; })) {
                const std::size_t end = m_html.find('>', at);
                return end == std::string_view::npos ? m_html.size() : end + 1;
            }
        }
        return m_html.size();
    }

    void Apply(const Tag& tag) {
        const bool isHeading =
            tag.name.size() == 2 && tag.name[0] == 'h' && tag.name[1] >= '1' && tag.name[1] <= '6';
        if (tag.name == "br") {
            NewParagraph();
        } else if (tag.name == "ul" || tag.name == "ol") {
            List(tag);
        } else if (tag.name == "p" || tag.name == "div" || tag.name == "li" || isHeading) {
            if (!m_paragraphs.back().runs.empty()) {
                NewParagraph();
            }
            if (tag.name == "li") {
                SetListItem(!tag.closes);
            }
        }
        if (tag.closes) {
            Close(tag.name);
        } else {
            OpenStyle(tag, isHeading);
        }
    }

    void NewParagraph() {
        if (m_paragraphs.size() >= MostParagraphs) {
            NoteBlank();
            return;
        }
        m_paragraphs.emplace_back();
        m_pendingBlank = false;
    }

    void List(const Tag& tag) {
        if (!m_paragraphs.back().runs.empty()) {
            NewParagraph();
        }
        if (!tag.closes && static_cast<int>(m_lists.size()) < DeepestList) {
            m_lists.push_back(tag.name == "ol" ? MarkupParagraph::List::Numbered
                                               : MarkupParagraph::List::Bulleted);
        } else if (tag.closes && !m_lists.empty()) {
            m_lists.pop_back();
        }
    }

    void SetListItem(bool begins) {
        MarkupParagraph& paragraph = m_paragraphs.back();
        paragraph.list = !begins           ? MarkupParagraph::List::None
                         : m_lists.empty() ? MarkupParagraph::List::Bulleted
                                           : m_lists.back();
        paragraph.listLevel = begins ? std::max(1, static_cast<int>(m_lists.size())) : 0;
    }

    void OpenStyle(const Tag& tag, bool isHeading) {
        if (m_open.size() >= DeepestTag) {
            return;
        }
        Open open{tag.name, m_open.back().style};
        MarkupRun& style = open.style;
        if (isHeading) {
            constexpr std::array<float, 6> Factors{2.0F, 1.5F, 1.17F, 1.0F, 0.83F, 0.67F};
            style.sizeFactor = Factors[static_cast<std::size_t>(tag.name[1] - '1')];
            style.bold = true;
        } else if (tag.name == "b" || tag.name == "strong") {
            style.bold = true;
        } else if (tag.name == "i" || tag.name == "em") {
            style.italic = true;
        } else if (tag.name == "u") {
            style.decoration = Decoration::Underline;
        } else if (tag.name == "s" || tag.name == "strike" || tag.name == "del") {
            style.decoration = Decoration::LineThrough;
        } else if (tag.name == "a") {
            style.hyperlink = tag.href;
        } else if (tag.name == "font") {
            Color color = 0;
            if (ParseColor(tag.color, color)) {
                style.color = color;
            }
            style.family = tag.face.empty() ? style.family : tag.face;
        } else {
            return;  // often left unclosed, and it has no style of its own
        }
        m_open.push_back(std::move(open));
    }

    // The innermost of that name, and with it what was left open inside.
    void Close(const std::string& name) {
        for (std::size_t i = m_open.size(); i-- > 1;) {
            if (m_open[i].name == name) {
                m_open.resize(i);
                return;
            }
        }
    }

    void TakeText(std::size_t& at) {
        std::string text;
        while (at < m_html.size() && (m_html[at] != '<' || !IsTagAt(at))) {
            if (IsAsciiSpace(m_html[at])) {
                NoteBlank();
                ++at;
                continue;
            }
            if (m_pendingBlank && (!text.empty() || !m_paragraphs.back().runs.empty())) {
                PutBlank(text);
            }
            m_pendingBlank = false;
            TakeCharacter(m_html, at, text);
        }
        if (!text.empty()) {
            AddRun(m_open.back().style, std::move(text));
        }
    }

    void NoteBlank() {
        if (!m_pendingBlank) {
            m_pendingBlank = true;
            m_blankDepth = m_open.size();
            m_blankStyle = m_open.back().style;
        }
    }

    // A blank between two tags has the style before them. With that after them it would be underlined with
    // it.
    void PutBlank(std::string& text) {
        if (text.empty() && m_blankDepth < m_open.size()) {
            AddRun(m_blankStyle, " ");
        } else {
            text += ' ';
        }
    }

    void AddRun(const MarkupRun& style, std::string text) {
        MarkupRun& run = m_paragraphs.back().runs.emplace_back(style);
        run.text = std::move(text);
    }

    std::string_view m_html;
    std::size_t m_lastTagEnd;  // a < after it starts no tag
    std::vector<MarkupParagraph> m_paragraphs;
    std::vector<Open> m_open;  // the first stands for no tag
    std::vector<MarkupParagraph::List> m_lists;
    bool m_pendingBlank = false;   // and, when it is:
    std::size_t m_blankDepth = 0;  // how many tags were open
    MarkupRun m_blankStyle;
};

}  // namespace

std::vector<MarkupParagraph> ParseMarkup(std::string_view html) {
    return MarkupReader(html).Run();
}

}  // namespace rdl::layout
