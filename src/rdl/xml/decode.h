// SPDX-License-Identifier: GPL-3.0-or-later
// Converts the bytes of an XML file to UTF-8 (XML 1.0, section 4.3.3 and appendix F).
#pragma once

#include <QtCore/QStringConverter>
#include <string>
#include <string_view>

namespace rdl::xml {

// Returns the text as UTF-8. The encoding comes from the byte order mark, the first bytes or the declaration;
// the default is UTF-8. The result is a view of `bytes` if they are UTF-8 already, else of `storage`. Raises
// Flaw for bytes invalid in their encoding, an unknown encoding, and characters that XML does not allow.
std::string_view Utf8Of(std::string_view bytes, std::string& storage);

// The same for a text that comes in pieces.
class PieceDecoder {
 public:
    // Appends the characters of `bytes` to `text`. The first bytes must hold the whole declaration. Bytes of
    // a character that is not complete wait for the next call; `isLast` says that no call follows. Raises
    // Flaw, whose line is counted from the beginning of the piece.
    void Append(std::string_view bytes, bool isLast, std::string& text);

 private:
    bool m_isBegun = false;
    std::string m_name;
    QStringDecoder m_decoder;  // not valid: the text is UTF-8
    QStringEncoder m_encoder{QStringEncoder::Utf8};
    std::string m_rest;  // of a character in UTF-8
};

}  // namespace rdl::xml
