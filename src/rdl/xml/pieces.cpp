// SPDX-License-Identifier: GPL-3.0-or-later
// The text is cut between elements only, and every part of it goes through the parser. So what is cut wrongly
// is refused there, and what is well-formed in parts is well-formed as a whole.
#include "rdl/xml/pieces.h"

#include <algorithm>

#include "rdl/api/xml_encoding.h"

namespace rdl::xml {
namespace {

constexpr std::string_view CDataBegin = "<![CDATA[", CDataEnd = "]]>";
constexpr std::size_t LongestBeginning = CDataBegin.size();
constexpr std::size_t LongestTags = std::size_t{64} << 10;  // they are parsed again with each piece

[[noreturn]] void Fail(const char* what) {
    throw Flaw(1, what);
}

std::string_view NameOf(std::string_view afterBracket) {
    return afterBracket.substr(0, afterBracket.find_first_of(" \t\r\n/>"));
}

// Characters after which a text may be cut: not within a reference or an end of line.
std::size_t SizeToCut(std::string_view text) {
    const std::size_t tail = text.size() - std::min(text.size(), LongestReference);
    const std::size_t reference = text.substr(tail).rfind('&');
    if (reference != std::string_view::npos && text.find(';', tail + reference) == std::string_view::npos) {
        return tail + reference;
    }
    return text.ends_with('\r') ? text.size() - 1 : text.size();
}

}  // namespace

PieceReader::PieceReader(NextBytes next, const Limits& limits, PartHandler& handler, std::size_t pieceSize)
    : m_next(std::move(next)), m_limits(limits), m_handler(handler), m_pieceSize(pieceSize) {}

bool PieceReader::Read() {
    m_hasDelivered = false;
    while (!m_hasDelivered) {
        if (m_at == m_text.size() && !Refill()) {
            if (!m_open.empty() || m_isInCData) {
                Fail("it is cut off");
            }
            return false;
        }
        ReadToken();
    }
    return true;
}

// Doubles the unread text, so that a long token is scanned a bounded number of times.
bool PieceReader::Refill() {
    m_text.erase(0, m_at);
    m_at = 0;
    const std::size_t before = m_text.size();
    std::string bytes;
    while (!m_isAtEnd && (m_text.size() == before || m_text.size() < 2 * before)) {
        m_isAtEnd = !m_next(bytes);
        m_decoder.Append(m_isAtEnd ? std::string_view() : bytes, m_isAtEnd, m_text);
    }
    return m_text.size() > before;
}

bool PieceReader::Begins(std::string_view text) {
    return std::string_view(m_text).substr(m_at).starts_with(text);
}

void PieceReader::ReadToken() {
    while (m_text.size() - m_at < LongestBeginning && Refill()) {
    }
    if (m_isInCData) {
        ReadCData();
    } else if (m_text[m_at] != '<') {
        ReadText();
    } else if (Begins("<!--")) {
        Target() += Take(EndOf("-->", 4));
    } else if (Begins(CDataBegin)) {
        m_at += CDataBegin.size();
        m_isInCData = true;
    } else if (Begins("<?")) {
        Target() += Take(EndOf("?>", 2));
    } else if (Begins("<!")) {
        Fail("a document type");
    } else if (Begins("</")) {
        ReadEndTag();
    } else {
        ReadStartTag();
    }
}

// Returns the place after the text, which stands somewhere after `from`.
std::size_t PieceReader::EndOf(std::string_view text, std::size_t from) {
    while (true) {
        const std::size_t found = m_text.find(text, m_at + from);
        if (found != std::string::npos) {
            return found + text.size();
        }
        if (!Refill()) {
            Fail("it is cut off");
        }
    }
}

std::size_t PieceReader::EndOfTag() {
    while (true) {
        char quote = '\0';
        for (std::size_t at = m_at + 1; at < m_text.size(); ++at) {
            const char c = m_text[at];
            if (quote != '\0') {
                quote = c == quote ? '\0' : quote;
            } else if (c == '>') {
                return at + 1;
            } else if (c == '"' || c == '\'') {
                quote = c;
            }
        }
        if (!Refill()) {
            Fail("it is cut off");
        }
    }
}

// Valid until the next call of Refill.
std::string_view PieceReader::Take(std::size_t end) {
    const std::string_view token = std::string_view(m_text).substr(m_at, end - m_at);
    m_at = end;
    return token;
}

void PieceReader::ReadStartTag() {
    const std::string_view tag = Take(EndOfTag());
    const bool isEmpty = tag.ends_with("/>");
    if (++m_elements > m_limits.elements) {
        Fail("there are too many elements");
    }
    if (m_part == PartHandler::Part::Text) {
        Fail("a text has elements in it");
    }
    Target() += tag;
    if (m_part == PartHandler::Part::Children) {
        m_depth += isEmpty ? 0 : 1;
        if (m_depth == 0 && m_piece.size() >= m_pieceSize) {
            GiveChildren();
        }
        return;
    }
    const std::string_view name = NameOf(tag.substr(1));
    m_path.emplace_back(name.substr(name.find(':') + 1));
    const PartHandler::Part part = m_handler.PartOf(m_path);
    if (isEmpty) {
        m_path.pop_back();
        return;
    }
    m_open.push_back({std::string(name), std::string(tag)});
    if (static_cast<int>(m_open.size()) > m_limits.depth) {
        Fail("elements are nested too deep");
    }
    BeginPart(part);
}

void PieceReader::BeginPart(PartHandler::Part part) {
    m_part = part;
    m_piece.clear();
    m_depth = 0;
    m_lines = 0;
    m_isTaken = false;
    if (part != PartHandler::Part::Children) {
        return;
    }
    m_before.clear();
    m_after.clear();
    for (const Open& open : m_open) {
        m_before += open.tag;
        m_after = "</" + open.name + ">" + m_after;
        if (m_before.size() > LongestTags) {
            Fail("the elements around the rows are long");
        }
    }
}

void PieceReader::ReadEndTag() {
    const std::string_view tag = Take(EndOf(">", 2));
    if (m_part == PartHandler::Part::Children && m_depth > 0) {
        m_piece += tag;
        if (--m_depth == 0 && m_piece.size() >= m_pieceSize) {
            GiveChildren();
        }
        return;
    }
    if (m_open.empty() || NameOf(tag.substr(2)) != m_open.back().name) {
        Fail("an end tag is not that of the element that is open");
    }
    if (m_part != PartHandler::Part::None) {
        EndPart();
    }
    m_rest += tag;
    m_open.pop_back();
    m_path.pop_back();
}

void PieceReader::EndPart() {
    if (m_part == PartHandler::Part::Text && !m_isTaken) {
        m_rest += m_piece;
    } else {
        if (m_part == PartHandler::Part::Text) {
            GiveText();
        } else {
            GiveChildren();
        }
        m_rest += m_handler.Mark();
        m_rest.append(m_lines, '\n');
    }
    m_part = PartHandler::Part::None;
}

// A long section becomes several.
void PieceReader::ReadCData() {
    std::size_t end = m_text.find(CDataEnd, m_at);
    const bool isWhole = end != std::string::npos;
    if (!isWhole) {
        end = m_text.size() - std::min(m_text.size() - m_at, CDataEnd.size());
        end -= end > m_at && m_text[end - 1] == '\r' ? 1 : 0;
        if (end == m_at) {
            if (!Refill()) {
                Fail("it is cut off");
            }
            return;
        }
    }
    Target().append(CDataBegin).append(Take(end)).append(CDataEnd);
    if (isWhole) {
        m_at += CDataEnd.size();
        m_isInCData = false;
    }
    if (m_part == PartHandler::Part::Text && m_piece.size() >= m_pieceSize) {
        GiveText();
    }
}

void PieceReader::ReadText() {
    std::size_t end = m_text.find('<', m_at);
    if (end == std::string::npos) {
        end = m_at + SizeToCut(std::string_view(m_text).substr(m_at));
        if (end == m_at && Refill()) {
            return;
        }
        end = end == m_at ? m_text.size() : end;
    }
    Target() += Take(end);
    if (m_part == PartHandler::Part::Text && m_piece.size() >= m_pieceSize) {
        GiveText();
    }
}

// The handler has taken the piece, or needs none.
void PieceReader::NoteDelivery() {
    m_lines += static_cast<std::size_t>(std::count(m_piece.begin(), m_piece.end(), '\n'));
    m_piece.clear();
    m_hasDelivered = true;
}

void PieceReader::GiveChildren() {
    if (m_handler.SkipsChildren()) {
        NoteDelivery();
        return;
    }
    m_piece.insert(0, m_before);
    m_piece += m_after;
    Document piece = ParseUtf8(m_piece, m_limits);
    const Element* parent = &piece.root;
    for (std::size_t i = 1; i < m_open.size(); ++i) {
        parent = &parent->children.front();
    }
    m_handler.TakeChildren(piece, *parent);
    NoteDelivery();
    m_lines -= static_cast<std::size_t>(std::count(m_before.begin(), m_before.end(), '\n'));
}

void PieceReader::GiveText() {
    const Document piece = ParseUtf8("<a>" + m_piece + "</a>", m_limits);
    if (!m_handler.TakeText(piece.root.text) && !m_isTaken) {
        m_rest += m_piece;
        m_part = PartHandler::Part::None;
        return;
    }
    m_isTaken = true;
    NoteDelivery();
}

}  // namespace rdl::xml
