// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/tree/xml_tree.h"

#include "rdl/definition/tree/sniff.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/values/error_text.h"
#include "rdl/xml/parse.h"

namespace rdl {
namespace {

constexpr std::string_view NamespaceBegin = "http://schemas.microsoft.com/sqlserver/reporting/";
constexpr std::string_view NamespaceEnd = "/reportdefinition";

bool IsReportNamespace(std::string_view uri) {
    return uri.empty() || (uri.size() > NamespaceBegin.size() + NamespaceEnd.size() &&
                           EqualNoCase(uri.substr(0, NamespaceBegin.size()), NamespaceBegin) &&
                           EqualNoCase(uri.substr(uri.size() - NamespaceEnd.size()), NamespaceEnd));
}

// A field's type and the report's font are written by designers under names of their own.
bool IsKeptFromOthers(std::string_view name) {
    return name == "TypeName" || name == "DefaultFontFamily";
}

bool KeepsBlanks(const XmlElement& element, bool parentKeeps) {
    for (const xml::Attribute& attribute : element.attributes) {
        if (attribute.space == xml::XmlSpace && attribute.name == "space") {
            return attribute.value == "preserve";
        }
    }
    return parentKeeps;
}

// Tools write the rows that a user typed under a namespace of their own.
bool HoldsRows(const XmlElement& parent, const XmlElement& child) {
    return child.name == "Rows" && (parent.name == "Query" || parent.name == "DataSet");
}

// `inRows`: the elements are data, whose names count in every namespace. The parser has bounded how deep this
// goes.
void KeepWhatIsOfTheReport(XmlElement& element, int space, bool parentKeepsBlanks, bool inRows) {
    const bool keepsBlanks = KeepsBlanks(element, parentKeepsBlanks);
    if (!keepsBlanks && Trimmed(element.text).empty()) {
        element.text = {};
    }
    if (!inRows) {
        std::erase_if(element.children, [&](const XmlElement& child) {
            return child.space != space && !IsKeptFromOthers(child.name) && !HoldsRows(element, child);
        });
    }
    for (XmlElement& child : element.children) {
        KeepWhatIsOfTheReport(child, space, keepsBlanks, inRows || HoldsRows(element, child));
    }
}

void CheckRoot(const xml::Document& document, const std::string& fileName) {
    const std::string other = fileName + " is XML of another kind, not an RDL report: its root element ";
    if (document.root.name != "Report") {
        throw Error(other + "is \"" + WithoutMarks(std::string(document.root.name)) + "\"");
    }
    const std::string_view uri = document.spaces[static_cast<std::size_t>(document.root.space)];
    if (!IsReportNamespace(uri)) {
        throw Error(other + "belongs to \"" + WithoutMarks(std::string(uri)) + "\"");
    }
}

}  // namespace

void CheckIsXml(std::string_view bytes, const std::string& fileName) {
    if (const std::string what = DescribeIfNotXml(bytes); !what.empty()) {
        throw Error(WithoutMarks(fileName) + " " + what);
    }
}

void KeepReport(xml::Document& document, const std::string& fileName) {
    CheckRoot(document, WithoutMarks(fileName));
    KeepWhatIsOfTheReport(document.root, document.root.space, false, false);
}

void DropBlanks(XmlElement& root) {
    KeepWhatIsOfTheReport(root, root.space, false, true);
}

// An author who writes a report by hand may omit the prefix.
bool IsNull(const XmlElement& value) {
    const std::string_view word = value.AttributeOf("nil");
    return value.IsNil() || word == "true" || word == "1";
}

xml::Document ReadXmlTree(std::string_view bytes, const std::string& fileName,
                          const DefinitionLimits& limits) {
    const std::string name = WithoutMarks(fileName);
    CheckIsXml(bytes, fileName);
    if (bytes.size() > limits.bytes) {
        throw Error(name + " is larger than a report may be (" + std::to_string(limits.bytes >> 20) + " MB)");
    }
    try {
        xml::Document document = xml::Parse(bytes, {limits.depth, limits.elements, limits.attributes});
        KeepReport(document, fileName);
        return document;
    } catch (const xml::Flaw& flaw) {
        throw Error(name + ", line " + std::to_string(flaw.Line()) + ": " + flaw.what());
    }
}

}  // namespace rdl
