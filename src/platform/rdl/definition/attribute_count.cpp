#include "platform/rdl/definition/attribute_count.h"

#include <QtCore/QByteArrayView>
#include <QtCore/QStringConverter>

namespace rdl {
namespace {

// The characters of a text that are ASCII; others are NUL.
class Characters {
 public:
    explicit Characters(std::string_view bytes) : m_bytes(bytes) {
        const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
        switch (QStringConverter::encodingForData(view, u'<').value_or(QStringConverter::Utf8)) {
            case QStringConverter::Utf16LE:
                m_width = 2;
                break;
            case QStringConverter::Utf16BE:
                m_width = 2;
                m_place = 1;
                break;
            case QStringConverter::Utf32LE:
                m_width = 4;
                break;
            case QStringConverter::Utf32BE:
                m_width = 4;
                m_place = 3;
                break;
            default:
                break;
        }
    }
    std::size_t Count() const { return m_bytes.size() / m_width; }
    char At(std::size_t index) const {
        const std::string_view unit = m_bytes.substr(index * m_width, m_width);
        for (std::size_t i = 0; i < m_width; ++i) {
            if (i != m_place && unit[i] != '\0') {
                return '\0';
            }
        }
        return unit[m_place];
    }
    bool StartsWith(std::size_t index, std::string_view word) const {
        for (std::size_t i = 0; i < word.size(); ++i) {
            if (index + i >= Count() || At(index + i) != word[i]) {
                return false;
            }
        }
        return true;
    }

 private:
    std::string_view m_bytes;
    std::size_t m_width = 1, m_place = 0;  // of a character, and of its ASCII byte within it
};

}  // namespace

std::size_t LineOfTooManyAttributes(std::string_view bytes, std::size_t most) {
    const Characters text(bytes);
    std::size_t line = 1, attributes = 0;
    std::string_view end;  // of the comment or CDATA section that this is within
    bool inTag = false;
    char quote = '\0';
    const std::size_t count = text.Count();
    for (std::size_t i = 0; i < count; ++i) {
        const char c = text.At(i);
        line += c == '\n' ? 1 : 0;
        if (!end.empty()) {
            if (text.StartsWith(i, end)) {
                end = {};
            }
        } else if (quote != '\0') {
            quote = c == quote ? '\0' : quote;
        } else if (!inTag) {
            inTag = c == '<';
            attributes = 0;
            if (inTag && text.StartsWith(i, "<!--")) {
                end = "-->";
            } else if (inTag && text.StartsWith(i, "<![CDATA[")) {
                end = "]]>";
            }
            inTag = inTag && end.empty();
        } else if (c == '>') {
            inTag = false;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '=' && ++attributes > most) {
            return line;
        }
    }
    return 0;
}

}  // namespace rdl
