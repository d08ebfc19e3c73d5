// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/xml/decode.h"

#include <QtCore/QByteArrayView>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <optional>
#include <pugixml.hpp>
#include <system_error>
#include <utility>

#include "rdl/api/xml_encoding.h"
#include "rdl/values/ascii.h"
#include "rdl/values/utf8.h"
#include "rdl/xml/parse.h"

namespace rdl::xml {
namespace {

constexpr std::size_t LongestDeclaration = 1024, LongestEncodingName = 40;
constexpr std::size_t ChunkSize = std::size_t{1} << 20;

std::size_t LineAt(std::string_view text, std::size_t at) {
    return 1 + static_cast<std::size_t>(std::count(text.begin(), text.begin() + static_cast<long>(at), '\n'));
}

bool IsOfWiderUnits(std::string_view encoding) {
    const std::string name = LowerAscii(encoding);
    return name.starts_with("utf-16") || name.starts_with("utf-32") || name.starts_with("ucs-") ||
           name.starts_with("iso-10646-ucs-") || name == "unicode";
}

struct Encoding {
    std::string name = "UTF-8";
    QStringDecoder decoder;  // not valid for UTF-8
};

Encoding EncodingOf(std::string_view bytes) {
    Encoding encoding;
    const auto marked = QStringConverter::encodingForData(
        QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())), u'<');
    if (marked && *marked != QStringConverter::Utf8) {
        encoding.name = QStringConverter::nameForEncoding(*marked);
        encoding.decoder = QStringDecoder(*marked);
    } else if (!marked) {
        const std::string declared = DeclaredEncoding(bytes);
        if (!declared.empty()) {
            encoding.name = declared;
            encoding.decoder = QStringDecoder(declared.c_str());
            if (!encoding.decoder.isValid()) {
                throw Flaw(1, "its encoding " + QuotedEncoding(declared) + " is not known");
            }
        }
    }
    if (QString::fromStdString(encoding.name).compare("UTF-8", Qt::CaseInsensitive) == 0) {
        encoding.decoder = QStringDecoder();
    }
    return encoding;
}

// Converts pieces, because the whole text as a QString would be in memory too.
void Convert(std::string_view bytes, QStringDecoder& decoder, QStringEncoder& encoder,
             const std::string& encoding, std::string& text) {
    for (; !bytes.empty(); bytes.remove_prefix(std::min(ChunkSize, bytes.size()))) {
        const std::string_view chunk = bytes.substr(0, ChunkSize);
        const QString decoded = decoder(QByteArrayView(chunk.data(), static_cast<qsizetype>(chunk.size())));
        const QByteArray utf8 = encoder(decoded);
        text.append(utf8.constData(), static_cast<std::size_t>(utf8.size()));
        if (decoder.hasError() || encoder.hasError()) {
            throw Flaw(LineAt(text, text.size()),
                       "this is not well-formed XML: bytes that are no text in " + QuotedEncoding(encoding));
        }
    }
}

// Whether all of eight bytes are from the blank to 0x7F: then they are characters of XML.
bool ArePlain(const char* bytes) {
    constexpr std::uint64_t Each = 0x0101010101010101, High = 0x80 * Each;
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    return ((word | (word - 0x20 * Each)) & High) == 0;
}

void CheckCharacters(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        if (text.size() - at >= sizeof(std::uint64_t) && ArePlain(text.data() + at)) {
            at += sizeof(std::uint64_t);
            continue;
        }
        const std::size_t begin = at;
        const char32_t character = NextCharacter(text, at);
        const bool isByte = character == ReplacementCharacter && at == begin + 1;
        if (isByte || !IsXmlCharacter(character)) {
            throw Flaw(LineAt(text, begin), std::string("this is not well-formed XML: ") +
                                                (isByte ? "bytes that are no text in UTF-8"
                                                        : "a character that XML does not have"));
        }
    }
}

// Without the bytes at the end that may begin a character.
std::size_t SizeOfWholeCharacters(std::string_view text) {
    std::size_t begin = text.size();
    while (begin > 0 && text.size() - begin < LongestUtf8 - 1 && IsContinuationByte(text[begin - 1])) {
        --begin;
    }
    return begin > 0 && static_cast<unsigned char>(text[begin - 1]) >= 0xC0 ? begin - 1 : text.size();
}

std::string_view WithoutByteOrderMark(std::string_view text) {
    constexpr std::string_view Mark = "\xEF\xBB\xBF";
    return text.starts_with(Mark) ? text.substr(Mark.size()) : text;
}

}  // namespace

std::optional<char32_t> ReferredCharacter(std::string_view reference) {
    constexpr std::pair<std::string_view, char32_t> Predefined[] = {
        {"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
    for (const auto& [name, character] : Predefined) {
        if (reference == name) {
            return character;
        }
    }
    if (!reference.starts_with('#')) {
        return std::nullopt;
    }
    const bool isHex = reference.starts_with("#x");
    const std::string_view digits = reference.substr(isHex ? 2 : 1);
    std::uint32_t code = 0;
    const auto [stop, failure] =
        std::from_chars(digits.data(), digits.data() + digits.size(), code, isHex ? 16 : 10);
    if (failure != std::errc() || stop != digits.data() + digits.size() || !IsXmlCharacter(code)) {
        return std::nullopt;
    }
    return code;
}

std::string DeclaredEncoding(std::string_view bytes) {
    const std::size_t end = bytes.substr(0, LongestDeclaration).find("?>");
    if (!bytes.starts_with("<?xml") || end == std::string_view::npos) {
        return {};
    }
    pugi::xml_document declaration;
    declaration.load_buffer(bytes.data(), end + 2, pugi::parse_declaration | pugi::parse_fragment,
                            pugi::encoding_utf8);
    const std::string name = declaration.first_child().attribute("encoding").value();
    return IsOfWiderUnits(name) ? std::string() : name;
}

// Unlike the names of elements in parse.cpp, that of an encoding is plain ASCII or wrong.
std::string QuotedEncoding(std::string_view name) {
    std::string text(name.substr(0, LongestEncodingName));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c <= ' ' || c > '~' || c == '\''; }, '?');
    return "\"" + text + "\"";
}

std::string_view Utf8Of(std::string_view bytes, std::string& storage) {
    Encoding encoding = EncodingOf(bytes);
    std::string_view text = bytes;
    if (encoding.decoder.isValid()) {
        QStringEncoder encoder(QStringEncoder::Utf8);
        storage.reserve(bytes.size());
        Convert(bytes, encoding.decoder, encoder, encoding.name, storage);
        text = storage;
    }
    text = WithoutByteOrderMark(text);
    CheckCharacters(text);
    return text;
}

void PieceDecoder::Append(std::string_view bytes, bool isLast, std::string& text) {
    const bool isFirst = !m_isBegun;
    if (isFirst) {
        Encoding encoding = EncodingOf(bytes);
        m_name = encoding.name;
        m_decoder = std::move(encoding.decoder);
        m_isBegun = true;
    }
    std::string piece = std::exchange(m_rest, {});
    if (m_decoder.isValid()) {
        Convert(bytes, m_decoder, m_encoder, m_name, piece);
    } else {
        piece += bytes;
        const std::size_t whole = isLast ? piece.size() : SizeOfWholeCharacters(piece);
        m_rest = piece.substr(whole);
        piece.resize(whole);
    }
    const std::string_view characters = isFirst ? WithoutByteOrderMark(piece) : std::string_view(piece);
    CheckCharacters(characters);
    text += characters;
}

}  // namespace rdl::xml
