#include "platform/rdl/data/message.h"

#include <algorithm>

namespace rdl::data {
namespace {

constexpr std::size_t LongestText = 400;

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
    std::string open(text);
    for (std::size_t at = open.find(secret); at != std::string::npos; at = open.find(secret, at + 3)) {
        open.replace(at, secret.size(), "***");
    }
    return CleanText(open);
}

}  // namespace rdl::data
