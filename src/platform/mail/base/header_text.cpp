// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/base/header_text.h"

#include <glib.h>

#include <algorithm>
#include <memory>

#include "platform/base/ascii.h"
#include "platform/base/text.h"

namespace mailer {
namespace {

constexpr std::size_t LongestLine = 78;
// A longer word is encoded, because it could not be folded.
constexpr std::size_t LongestPlainWord = 60;
constexpr std::string_view WordBegin = "=?utf-8?";
constexpr std::string_view WordEnd = "?=";
// The longest text between the delimiters of an encoded word: the word then fits after the name of its header
// (RFC 2047, section 2).
constexpr std::size_t LongestEncoding = 52;

// A header line to which words are added. It can be folded at a blank before a word.
class HeaderLine {
 public:
    explicit HeaderLine(std::string_view name) : m_text(std::string(name) + ":"), m_length(m_text.size()) {}

    // Adds `word` and the blanks before it, which stay even if the line is folded there.
    void Add(std::string_view blanks, std::string_view word) {
        if (m_length + blanks.size() + word.size() > LongestLine) {
            m_text += '\n';
            m_length = 0;
        }
        m_text.append(blanks).append(word);
        m_length += blanks.size() + word.size();
    }

    std::string Text() const { return m_text + "\n"; }

 private:
    std::string m_text;
    std::size_t m_length;  // of the last line
};

std::string Escaped(char mark, char byte) {
    std::string escaped(1, mark);
    AppendHexByte(static_cast<unsigned char>(byte), escaped);
    return escaped;
}

// Replaces every byte that `stays` rejects with `mark` and two hexadecimal digits.
template <typename Stays>
std::string WithEscapes(std::string_view text, char mark, Stays stays) {
    std::string escaped;
    for (const char byte : text) {
        escaped += stays(byte) ? std::string(1, byte) : Escaped(mark, byte);
    }
    return escaped;
}

// Returns the Q encoding for a phrase (RFC 2047, sections 4.2 and 5).
std::string Quoted(std::string_view text) {
    std::string quoted = WithEscapes(
        text, '=', [](char byte) { return IsAsciiLetterOrDigit(byte) || byte == ' ' || byte == '-'; });
    std::replace(quoted.begin(), quoted.end(), ' ', '_');
    return quoted;
}

std::string Base64(std::string_view text) {
    const std::unique_ptr<char, decltype(&g_free)> encoded(
        g_base64_encode(reinterpret_cast<const unsigned char*>(text.data()), text.size()), &g_free);
    return encoded.get();
}

// Returns the encoded parts of the text. No part ends inside a character. A cut is made at a length in bytes
// that `isGood` accepts, if there is one.
template <typename Encode, typename IsGood>
std::vector<std::string> Pieces(std::string_view text, Encode encode, IsGood isGood) {
    std::vector<std::string> pieces;
    while (!text.empty()) {
        std::size_t fits = 0;
        std::size_t good = 0;
        for (std::size_t end = 0; end < text.size();) {
            end += CharacterAt(text, end).length;
            if (encode(text.substr(0, end)).size() > LongestEncoding) {
                break;
            }
            fits = end;
            good = isGood(end) || end == text.size() ? end : good;
        }
        const std::size_t length = good != 0 ? good : fits;
        pieces.push_back(encode(text.substr(0, length)));
        text.remove_prefix(length);
    }
    return pieces;
}

// Returns the encoded words of the text in the shorter of the two encodings. Some readers decode the base64
// of adjacent words as one text that ends at the first padding: only the last word may have padding.
std::vector<std::string> EncodedWords(std::string_view text) {
    std::vector<std::string> words = Pieces(text, Base64, [](std::size_t length) { return length % 3 == 0; });
    const bool isPadded = std::any_of(words.begin(), words.end() - 1,
                                      [](const std::string& word) { return word.ends_with('='); });
    const bool isQuoted = isPadded || Quoted(text).size() <= Base64(text).size();
    if (isQuoted) {
        words = Pieces(text, Quoted, [](std::size_t) { return true; });
    }
    for (std::string& word : words) {
        word = std::string(WordBegin).append(isQuoted ? "q?" : "b?").append(word).append(WordEnd);
    }
    return words;
}

void AddEncoded(HeaderLine& line, std::string_view blanks, std::string_view text) {
    for (const std::string& word : EncodedWords(text)) {
        line.Add(blanks, word);
        blanks = " ";
    }
}

bool IsPlainWord(std::string_view word) {
    return !word.empty() && word.size() <= LongestPlainWord && word.find("=?") == std::string_view::npos &&
           std::all_of(word.begin(), word.end(), [](char byte) { return byte > ' ' && byte <= '~'; });
}

struct Word {
    std::size_t begin, end;  // without the blanks before it
};

std::vector<Word> WordsOf(std::string_view text) {
    std::vector<Word> words;
    std::size_t at = 0;
    do {
        const std::size_t begin = std::min(text.find_first_not_of(' ', at), text.size());
        at = std::min(text.find(' ', begin), text.size());
        words.push_back({begin, at});
    } while (at < text.size());
    return words;
}

bool IsAtom(std::string_view word) {
    return IsPlainWord(word) && std::all_of(word.begin(), word.end(), IsAtomCharacter);
}

std::string InQuotes(std::string_view text) {
    std::string quoted = "\"";
    for (const char byte : text) {
        quoted.append(byte == '"' || byte == '\\' ? "\\" : "").append(1, byte);
    }
    return quoted + '"';
}

bool CanBeQuoted(std::string_view text) {
    return InQuotes(text).size() <= LongestPlainWord && text.find("=?") == std::string_view::npos &&
           std::all_of(text.begin(), text.end(), [](char byte) { return byte >= ' ' && byte <= '~'; });
}

// Adds the name before an address: as words, as one quoted text, or encoded.
void AddName(HeaderLine& line, const std::string& name) {
    const std::vector<Word> words = WordsOf(name);
    const bool areAtoms = std::all_of(words.begin(), words.end(), [&name](const Word& word) {
        return IsAtom(std::string_view(name).substr(word.begin, word.end - word.begin));
    });
    if (areAtoms && name.find("  ") == std::string::npos) {
        for (const Word& word : words) {
            line.Add(" ", std::string_view(name).substr(word.begin, word.end - word.begin));
        }
    } else if (CanBeQuoted(name)) {
        line.Add(" ", InQuotes(name));
    } else {
        AddEncoded(line, " ", name);
    }
}

bool IsParameterByte(char byte) {
    return IsAsciiLetterOrDigit(byte) || byte == '-' || byte == '.' || byte == '_';
}

// "; name*0*=utf-8''...; name*1*=..."
void AddPieces(HeaderLine& line, std::string_view parameter, std::string_view text) {
    constexpr std::size_t LongestPiece = 50;
    std::string piece = "utf-8''";
    int number = 0;
    const auto add = [&](bool isLast) {
        line.Add(" ", std::string(parameter) + "*" + std::to_string(number++) + "*=" + piece +
                          (isLast ? "" : ";"));
        piece.clear();
    };
    while (!text.empty()) {
        const std::string_view character = FirstCharacters(text, 1);
        const std::string escaped = WithEscapes(character, '%', IsParameterByte);
        if (piece.size() + escaped.size() > LongestPiece) {
            add(false);
        }
        piece += escaped;
        text.remove_prefix(character.size());
    }
    add(true);
}

}  // namespace

std::string TextHeader(std::string_view name, std::string_view text) {
    HeaderLine line(name);
    if (text.empty()) {
        return line.Text();
    }
    // Blanks at either end would be lost.
    if (text.front() == ' ' || text.back() == ' ') {
        AddEncoded(line, " ", text);
        return line.Text();
    }
    // Encodes everything from the first to the last word that cannot stay unchanged, with the blanks between
    // them.
    const std::vector<Word> words = WordsOf(text);
    const auto isPlain = [text](const Word& word) {
        return IsPlainWord(text.substr(word.begin, word.end - word.begin));
    };
    const auto first = std::find_if_not(words.begin(), words.end(), isPlain);
    const auto last = std::find_if_not(words.rbegin(), words.rend(), isPlain).base();
    std::size_t before = 0;
    for (auto word = words.begin(); word != words.end(); ++word) {
        const bool isEncoded = word == first && first < last;
        const bool isFront = word == words.begin();
        // One blank before an encoded text separates the words; the others belong to the text.
        const std::size_t begin = isFront ? 0 : isEncoded ? before + 1 : word->begin;
        const std::string_view blanks = isFront ? " " : text.substr(before, begin - before);
        if (isEncoded) {
            word = last - 1;
            AddEncoded(line, blanks, text.substr(begin, word->end - begin));
        } else {
            line.Add(blanks, text.substr(begin, word->end - begin));
        }
        before = word->end;
    }
    return line.Text();
}

std::string WordHeader(std::string_view name, std::string_view word) {
    HeaderLine line(name);
    line.Add(" ", word);
    return line.Text();
}

std::string MailboxHeader(std::string_view name, const std::vector<Mailbox>& mailboxes) {
    HeaderLine line(name);
    for (const Mailbox& mailbox : mailboxes) {
        const std::string comma = &mailbox == &mailboxes.back() ? "" : ",";
        if (mailbox.name.empty()) {
            line.Add(" ", mailbox.address + comma);
        } else {
            AddName(line, mailbox.name);
            line.Add(" ", "<" + mailbox.address + ">" + comma);
        }
    }
    return line.Text();
}

std::string ParameterHeader(std::string_view name, std::string_view value, std::string_view parameter,
                            std::string_view text) {
    HeaderLine line(name);
    line.Add(" ", std::string(value) + ";");
    if (CanBeQuoted(text)) {
        line.Add(" ", std::string(parameter) + "=" + InQuotes(text));
    } else {
        AddPieces(line, parameter, text);
    }
    return line.Text();
}

}  // namespace mailer
