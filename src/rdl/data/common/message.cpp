#include "rdl/data/common/message.h"

#include <algorithm>

namespace rdl::data {
namespace {

constexpr std::size_t LongestText = 400;

// Whether what stands at the place is the value of a password: after Pwd= or Password=, or between : and @ of
// an address. Anywhere else the same word is a word of the message, and to strike it out would tell what it
// is.
bool IsPasswordValue(std::string_view text, std::size_t at, std::size_t size) {
    std::string before = LowerAscii(text.substr(0, at));
    while (!before.empty() && std::string_view(" {\"'").find(before.back()) != std::string_view::npos) {
        before.pop_back();
    }
    const bool isAddress = before.ends_with(':') && at + size < text.size() && text[at + size] == '@';
    return isAddress || before.ends_with("pwd=") || before.ends_with("password=");
}

// Cuts at a character boundary.
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
        const bool isValue = IsPasswordValue(open, at, secret.size());
        open.replace(at, isValue ? secret.size() : 0, isValue ? Mask : "");
        at = open.find(secret, at + (isValue ? Mask.size() : 1));
    }
    return CleanText(open);
}

}  // namespace rdl::data
