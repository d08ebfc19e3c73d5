// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a long document whose rows are read apart from its tree, so that no tree of them all is ever in
// memory.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/xml/decode.h"
#include "rdl/xml/parse.h"

namespace rdl::xml {

// Receives the parts of a document that are not kept in its tree.
class PartHandler {
 public:
    enum class Part { None, Children, Text };

    virtual ~PartHandler() = default;
    // Returns what of an element is such a part. `path` has the names from the root down to it, without
    // prefixes. It is asked once for each element that is not within such a part, in the order of the
    // document.
    virtual Part PartOf(const std::vector<std::string>& path) = 0;
    // Takes some children of the element, in order. `piece` holds the elements around them, with their
    // attributes and nothing else; `parent` is the innermost of these. Lines are not those of the document.
    virtual void TakeChildren(Document& piece, const Element& parent) = 0;
    // Whether children are passed over without being parsed.
    virtual bool SkipsChildren() const { return false; }
    // Takes some text of the element, in order. If it returns false for the first piece the text becomes part
    // of the tree. So does a text that is shorter than a piece, without a question.
    virtual bool TakeText(std::string_view text) = 0;
    // Returns what the tree has as the text of the element that was taken last. No document can hold a text
    // that begins with U+0001.
    virtual std::string Mark() = 0;
};

// Replaces `bytes` by the next ones of a document; returns false after the last ones. The first ones hold the
// whole declaration.
using NextBytes = std::function<bool(std::string& bytes)>;

// Every function raises Flaw for the documents that Parse refuses, and for some that are unusual. The line of
// the Flaw is not that of the document. A caller that needs the line, or an unusual document, calls Parse.
class PieceReader {
 public:
    PieceReader(NextBytes next, const Limits& limits, PartHandler& handler,
                std::size_t pieceSize = UsualPiece);

    // Reads on until something was taken; returns false at the end.
    bool Read();
    // Returns the tree of what was not taken. Each element has its line in the document. Valid once Read
    // returned false.
    Document Tree() const { return ParseUtf8(m_rest, m_limits); }

    static constexpr std::size_t UsualPiece = std::size_t{256} << 10;

 private:
    struct Open {
        std::string name;  // with its prefix
        std::string tag;
    };

    bool Refill();
    bool Begins(std::string_view text);
    void ReadToken();
    void ReadStartTag();
    void BeginPart(PartHandler::Part part);
    void ReadEndTag();
    void EndPart();
    void ReadCData();
    void ReadText();
    std::size_t EndOf(std::string_view text, std::size_t from);
    std::size_t EndOfTag();
    std::string_view Take(std::size_t end);
    std::string& Target() { return m_part == PartHandler::Part::None ? m_rest : m_piece; }
    void GiveChildren();
    void GiveText();
    void NoteDelivery();

    const NextBytes m_next;
    const Limits m_limits;
    PartHandler& m_handler;
    const std::size_t m_pieceSize;
    PieceDecoder m_decoder;
    bool m_isAtEnd = false;  // of the bytes
    std::string m_text;      // read, from m_at on not looked at
    std::size_t m_at = 0;
    bool m_isInCData = false;
    std::vector<Open> m_open;  // outside of parts
    std::vector<std::string> m_path;
    int m_elements = 0;
    std::string m_rest;  // the document without what was taken
    PartHandler::Part m_part = PartHandler::Part::None;
    std::string m_piece;            // of the part
    std::string m_before, m_after;  // the tags around a piece of children
    int m_depth = 0;                // of elements open within the part
    std::size_t m_lines = 0;        // of what was taken of the part
    bool m_isTaken = false;         // something of the text was taken
    bool m_hasDelivered = false;    // since Read was called
};

}  // namespace rdl::xml
