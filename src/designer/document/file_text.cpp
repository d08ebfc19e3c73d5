// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/file_text.h"

#include <QtCore/QStringConverter>
#include <utility>

#include "designer/document/source_tree.h"
#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "rdl/api/xml_encoding.h"

namespace designer {
namespace {

using rdl::xml::QuotedEncoding;

struct Beginning {
    std::string_view bytes;
    const char* name;
    bool isMark;
};

// A longer beginning stands before a shorter one that it begins with.
const Beginning Beginnings[] = {
    {Utf8Mark, "UTF-8", true},
    {std::string_view("\xFF\xFE\0\0", 4), "UTF-32LE", true},
    {std::string_view("\0\0\xFE\xFF", 4), "UTF-32BE", true},
    {std::string_view("\xFF\xFE", 2), "UTF-16LE", true},
    {std::string_view("\xFE\xFF", 2), "UTF-16BE", true},
    {std::string_view("<\0\0\0", 4), "UTF-32LE", false},
    {std::string_view("\0\0\0<", 4), "UTF-32BE", false},
    {std::string_view("<\0", 2), "UTF-16LE", false},
    {std::string_view("\0<", 2), "UTF-16BE", false},
};

FileEncoding EncodingOf(std::string_view bytes) {
    FileEncoding encoding;
    for (const Beginning& beginning : Beginnings) {
        if (bytes.starts_with(beginning.bytes)) {
            encoding.name = beginning.name;
            encoding.mark = beginning.isMark ? beginning.bytes : std::string_view();
            encoding.isUtf8 = beginning.bytes == Utf8Mark;
            return encoding;
        }
    }
    const std::string declared = rdl::xml::DeclaredEncoding(bytes);
    if (!declared.empty() && !SameAscii(declared, "UTF-8")) {
        encoding.name = declared;
        encoding.isUtf8 = false;
    }
    return encoding;
}

std::string Encoded(const QString& text, const FileEncoding& encoding, bool& isComplete) {
    QStringEncoder encoder(encoding.name.c_str(), QStringConverter::Flag::Stateless);
    const QByteArray bytes = encoder(text);
    isComplete = !encoder.hasError();
    return encoding.mark + std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

}  // namespace

FileText ReadFileText(std::string_view bytes) {
    FileText file;
    file.encoding = EncodingOf(bytes);
    const std::string_view body = bytes.substr(file.encoding.mark.size());
    if (file.encoding.isUtf8) {
        file.text = body;
        return file;
    }
    QStringDecoder decoder(file.encoding.name.c_str(), QStringConverter::Flag::Stateless);
    if (!decoder.isValid()) {
        throw SourceFlaw({}, "its encoding " + QuotedEncoding(file.encoding.name) + " is not known");
    }
    const QString decoded = decoder(QByteArrayView(body.data(), static_cast<qsizetype>(body.size())));
    file.text = decoded.toStdString();
    bool isComplete = true;
    const bool isSame = Encoded(decoded, file.encoding, isComplete) == bytes;
    if (decoder.hasError() || !isSame || !isComplete) {
        // The place is where the first character stands that is no character, or the beginning.
        const std::size_t bad = file.text.find("\xEF\xBF\xBD");
        throw SourceFlaw(
            PositionIn(file.text, bad == std::string::npos ? 0 : bad),
            "this is not well-formed XML: bytes that are no text in " + QuotedEncoding(file.encoding.name));
    }
    return file;
}

std::string WriteFileText(std::string_view text, const FileEncoding& encoding) {
    if (encoding.isUtf8) {
        return encoding.mark + std::string(text);
    }
    bool isComplete = true;
    std::string bytes = Encoded(QString::fromUtf8(text), encoding, isComplete);
    if (isComplete && ReadFileText(bytes).text == text) {
        return bytes;
    }
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = CharacterAt(text, at).length;
        const std::string character(text.substr(at, length));
        bool isKnown = true;
        Encoded(QString::fromStdString(character), encoding, isKnown);
        if (!isKnown) {
            throw SourceFlaw(PositionIn(text, at), "the encoding " + QuotedEncoding(encoding.name) +
                                                       " of the file does not have the character " +
                                                       character);
        }
        at += length;
    }
    throw SourceFlaw(
        {}, "the text cannot be written in the encoding " + QuotedEncoding(encoding.name) + " of the file");
}

}  // namespace designer
