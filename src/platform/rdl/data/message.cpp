#include "platform/rdl/data/message.h"

#include <algorithm>

namespace rdl::data {
namespace {

constexpr std::size_t LongestText = 400;

// Whether a word goes on across the place. A password "p" that is struck out of "password" would spoil the
// text and tell what it is.
bool ContinuesWord(std::string_view text, std::size_t at) {
    return at > 0 && at < text.size() && IsNameByte(text[at - 1]) && IsNameByte(text[at]);
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
