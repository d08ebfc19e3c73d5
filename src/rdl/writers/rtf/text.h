// Texts, lengths and addresses as RTF takes them. Each appends to `out`; none can end the group that it is
// in.
#pragma once

#include <string>
#include <string_view>

namespace rdl::writers {

// For a text of the document: line feeds and tabs are kept, other controls left out.
void AppendRtf(std::string_view text, std::string& out);
// For a place that holds a name in one line: a font's, a title.
void AppendRtfName(std::string_view text, std::string& out);
// A control word with a number: \li240.
void AppendWord(const char* word, int number, std::string& out);
// Likewise with a length given in points and written in twips, 20 to a point.
void AppendTwips(const char* word, double points, std::string& out);
int Twips(double points);
// The address of a link as a field takes it within quotes; empty unless it is one of the web, of mail or of
// file transfer. A place relative to the document would be one on the reader's own machine.
std::string RtfAddress(const std::string& link);

}  // namespace rdl::writers
