// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/tree/sniff.h"

#include <algorithm>

#include "rdl/values/ascii.h"

namespace rdl {
namespace {

struct Signature {
    std::string_view bytes;
    const char* what;
};

constexpr Signature Signatures[] = {
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", "is a compound binary document, not an RDL report"},
    {"PK\x03\x04", "is a zip archive, not an RDL report"},
    {"PK\x05\x06", "is a zip archive, not an RDL report"},
    {"%PDF-", "is a PDF document, not an RDL report"},
    {"{\\rtf", "is an RTF document, not an RDL report"},
    {"SQLite format 3", "is an SQLite database, not an RDL report"},
};

bool IsUtf16(std::string_view bytes) {
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") ||
           bytes.starts_with(std::string_view("<\0", 2)) || bytes.starts_with(std::string_view("\0<", 2));
}

// Pages of a web server, for example one that refuses a download.
bool IsHtml(std::string_view text) {
    constexpr std::string_view Doctype = "<!doctype html", Root = "<html";
    return EqualNoCase(text.substr(0, Doctype.size()), Doctype) ||
           EqualNoCase(text.substr(0, Root.size()), Root);
}

// The text after the comments and blanks at its beginning.
std::string_view AfterComments(std::string_view text) {
    constexpr std::string_view Begin = "<!--", End = "-->";
    while (text.starts_with(Begin)) {
        const std::size_t end = text.find(End, Begin.size());
        if (end == std::string_view::npos) {
            return {};
        }
        text = text.substr(end + End.size());
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n\f"), text.size()));
    }
    return text;
}

// A list that begins with a number or a word: "[2024]" alone begins a file of settings too.
bool IsJsonList(std::string_view text) {
    const std::size_t end = text.find_first_not_of("0123456789+-.eEtrufalsn \t\r\n", 1);
    return end != std::string_view::npos && end > 1 &&
           (text[end] == ',' || (text[end] == ']' && Trimmed(text.substr(end + 1)).empty()));
}

// An object, or a list.
bool IsJson(std::string_view text) {
    if (text[0] != '{' && text[0] != '[') {
        return false;
    }
    const std::size_t next = text.find_first_not_of(" \t\r\n", 1);
    return next != std::string_view::npos &&
           (std::string_view(text[0] == '{' ? "\"}" : "\"{[]").find(text[next]) != std::string_view::npos ||
            (text[0] == '[' && IsJsonList(text)));
}

bool IsControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 && c != '\t' && c != '\n' && c != '\r' && c != '\f';
}

}  // namespace

std::string DescribeIfNotXml(std::string_view bytes) {
    if (bytes.empty()) {
        return "is empty";
    }
    for (const Signature& signature : Signatures) {
        if (bytes.starts_with(signature.bytes)) {
            return signature.what;
        }
    }
    if (IsUtf16(bytes)) {
        return {};
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.remove_prefix(3);
    }
    const std::string_view head = bytes.substr(0, 4096);
    if (std::any_of(head.begin(), head.end(), IsControl)) {
        return "is a binary file, not an RDL report";
    }
    const std::size_t first = head.find_first_not_of(" \t\r\n\f");
    if (first == std::string_view::npos) {
        return bytes.size() <= head.size() ? "holds nothing but blanks" : "is plain text, not an RDL report";
    }
    if (head[first] == '<') {
        return IsHtml(AfterComments(head.substr(first))) ? "is an HTML page, not an RDL report" : "";
    }
    return IsJson(head.substr(first)) ? "is JSON, not an RDL report" : "is plain text, not an RDL report";
}

}  // namespace rdl
