#include "platform/rdl/data/message.h"

#include <algorithm>

namespace rdl::data {
namespace {

constexpr std::size_t LongestText = 400;

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool IsWordCharacter(char c) {
    return (c >= '0' && c <= '9') || c == '_' || (Lower(c) >= 'a' && Lower(c) <= 'z') ||
           static_cast<unsigned char>(c) >= 0x80;
}

// Whether a word goes on across the place. A password "p" that is struck out of "password" would spoil the
// text and tell what it is.
bool ContinuesWord(std::string_view text, std::size_t at) {
    return at > 0 && at < text.size() && IsWordCharacter(text[at - 1]) && IsWordCharacter(text[at]);
}

// A cut must not leave half a character behind.
void CutAtCharacter(std::string& text, std::size_t length) {
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
        --length;
    }
    text.resize(length);
}

}  // namespace

std::string TookTooLong(int seconds) {
    return "the query took longer than " + std::to_string(seconds) + (seconds == 1 ? " second" : " seconds") +
           " and was given up";
}

std::string LowerAscii(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), Lower);
    return lower;
}

bool EqualNoCase(std::string_view left, std::string_view right) {
    return left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin(),
                                                     [](char a, char b) { return Lower(a) == Lower(b); });
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view Blank = " \t\r\n";
    const std::size_t first = text.find_first_not_of(Blank);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(Blank) - first + 1);
}

std::string CleanText(std::string_view text) {
    std::string clean;
    clean.reserve(std::min(text.size(), LongestText + 4));
    for (const char c : Trimmed(text)) {
        if (clean.size() > LongestText) {
            break;
        }
        const bool blank = static_cast<unsigned char>(c) <= ' ' || c == 0x7F;
        if (blank && !clean.empty() && clean.back() == ' ') {
            continue;
        }
        clean.push_back(blank ? ' ' : (c == '\'' || c == '`') ? '"' : c);
    }
    if (clean.size() > LongestText) {
        CutAtCharacter(clean, LongestText);
        clean += " ...";
        return clean;
    }
    while (!clean.empty() && (clean.back() == '.' || clean.back() == ' ')) {
        clean.pop_back();
    }
    return clean;
}

std::string CleanText(std::string_view text, std::string_view secret) {
    if (secret.empty()) {
        return CleanText(text);
    }
    constexpr std::string_view Mask = "***";
    std::string open(text);
    for (std::size_t at = open.find(secret); at != std::string::npos;) {
        const bool isWhole = !ContinuesWord(open, at) && !ContinuesWord(open, at + secret.size());
        open.replace(at, isWhole ? secret.size() : 0, isWhole ? Mask : "");
        at = open.find(secret, at + (isWhole ? Mask.size() : 1));
    }
    return CleanText(open);
}

}  // namespace rdl::data
