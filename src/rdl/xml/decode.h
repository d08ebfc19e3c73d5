// The bytes of an XML file as UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace rdl::xml {

// The text of the bytes, by their byte order mark, by the form of their first character or by the encoding
// that the declaration names; UTF-8 where nothing says otherwise. A view of `bytes` when they are UTF-8
// already, else of `storage`. Raises Flaw when the bytes are no text of their encoding, when the encoding is
// not known, and for characters that XML does not have.
std::string_view Utf8Of(std::string_view bytes, std::string& storage);

// Whether XML has the character.
bool IsXmlCharacter(char32_t character);

}  // namespace rdl::xml
